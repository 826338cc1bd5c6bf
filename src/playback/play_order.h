// Which row plays next. The list has no end: each rule wraps around.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/clock.h"
#include "playlist/playlist_rows.h"

namespace kestrune {

// Number of selected rows.
int FindSel(const PlaylistRows& rows);

// Row after the one last started, or before it; a random one in Shuffle mode. With two or more rows selected
// only those are walked, and the selection stays; else the selection moves along. 0 for an empty list. Reads
// and sets LastIndex of the state when it is 0. Window thread.
int FindNextSel(ProgramState& state, PlaylistRows& rows, const Options& options, Clock& clock);
int FindLastSel(ProgramState& state, PlaylistRows& rows, const Options& options, Clock& clock);
// A random row, of the selected ones if there are several. The same may come twice in a row.
int FindFileRND(const ProgramState& state, PlaylistRows& rows, Clock& clock);

} // namespace kestrune
