// Widths of the playlist's eight columns, in pixels.
#pragma once

#include "app/options_record.h"

#include <array>

namespace kestrune {

using ColumnWidths = std::array<int, 8>;
using PlaylistItems = std::array<bool, playlistItemCount>;

inline constexpr ColumnWidths startColumnWidths = {165, 38, 40, 47, 70, 0, 0, 0};
inline constexpr PlaylistItems defaultPlaylistItems = {true, true, true, true, true, false, false};

// The widths that a choice of items gives. The first five columns go back to their start widths, items that
// are off lose theirs, and what that frees goes to the title, to the path, or to both.
ColumnWidths WidthsFor(const PlaylistItems& items, const ColumnWidths& current);

} // namespace kestrune
