// All rules of the converter window behind one door: what the window shows is here, and what the user does
// goes to here.
#pragma once

#include "app/program_state.h"
#include "components/audio_file.h"
#include "components/clock.h"
#include "components/pending_events.h"
#include "components/user_prompts.h"
#include "convert/conversion_rows.h"
#include "convert/conversion_run.h"
#include "convert/converter_panels.h"
#include "convert/converter_state.h"
#include "convert/job_list.h"
#include "convert/output_settings.h"
#include "playlist/playlist_rows.h"
#include "tool_window/event_log.h"

namespace kestrune {

// One object for each opening of the window. All that is passed in must outlive it, and the window goes
// before it. Window thread.
//
// Order: construct, connect the window, Load, show. The window
//  - shows Rows in ListViewInput and Events in viewEvent,
//  - takes what it shows first from the getters of Jobs, Settings, Run and Panels, and follows their signals,
//  - forwards each click, text and drop to the procedure of the same name.
class ConverterRules {
public:
    ConverterRules(ProgramState& program, const PlaylistRows& playlist, KSTAudioFile2& inputFile,
                   KSTAudioFile2& outputFile, UserPrompts& prompts, PendingEvents& pending, Clock& clock);
    ConverterRules(const ConverterRules&) = delete;
    ConverterRules& operator=(const ConverterRules&) = delete;

    // The load of the window: defaults of the formats with their calls, the remembered paths, the rows of the
    // folder or of the playlist. Messages about files that are gone come from within.
    void Load();

    ConverterState State;
    ConversionRows Rows;
    EventLog Events;
    JobList Jobs;
    OutputSettings Settings;
    ConversionRun Run;
    ConverterPanels Panels;
};

} // namespace kestrune
