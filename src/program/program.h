// The rules of the program, put together.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "desktop/media_control.h"
#include "display/audio_display.h"
#include "main_window/menu_routing.h"
#include "main_window/recording_tool.h"
#include "main_window/start_up.h"
#include "playback/display_feed.h"
#include "playback/play_buttons.h"
#include "playback/transport.h"
#include "playback/volume_knob.h"
#include "playlist/admission.h"
#include "playlist/list_tip.h"
#include "playlist/playlist_editing.h"
#include "playlist/playlist_files.h"
#include "playlist/playlist_rows.h"
#include "program/components.h"
#include "tool_window/tool_windows.h"

#include <memory>

namespace kestrune {

// One object of each rule, in the order in which one needs the other, with the components that live as long
// as the process. Tests and benchmarks use the same over other components. What is passed in must outlive it.
// Window thread.
class Program {
public:
    Program(Components& components, ProgramState& state, ToolWindows& tools);

    // The start of the main window (see LoadMainWindow). False when the user does not want to go on.
    bool Load(MainWindowSteps& window);

    ProgramState& state;
    UserPrompts& prompts;
    Clock& clock;

    const std::unique_ptr<KSTAudioPlayer2> audioPlayer;
    const std::unique_ptr<KSTAudioTransform2> audioTransform;
    const std::unique_ptr<KSTAudioFile2> audioFile;
    const std::unique_ptr<KSTAudioInformation2> audioInfo;
    const std::unique_ptr<KSTAudioInformation2> playingInfo; // of what plays, for the desktop alone
    const std::unique_ptr<Spectrum> spectrum;

    PlaylistRows rows;
    Options options;
    Admission admission;
    PlaylistFiles files;
    Transport transport;
    PlaylistEditing editing;
    AudioDisplay display;
    DisplayFeed feed;
    RecordingTool recording;
    PlayButtons buttons;
    MenuRouting routing;
    VolumeKnob knob;
    ListTip listTip;
    MediaControl media;
};

} // namespace kestrune
