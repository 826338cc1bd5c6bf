// What happens between the start of the process and the window on screen, and at the end.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/audio_file.h"
#include "components/audio_player.h"
#include "components/user_prompts.h"
#include "playback/transport.h"
#include "playback/volume_knob.h"
#include "playlist/playlist_files.h"
#include "playlist/playlist_rows.h"

#include <QString>

namespace kestrune {

// What the main window does during the start, in the order of the calls.
class MainWindowSteps {
public:
    virtual ~MainWindowSteps() = default;
    virtual void Hide() = 0;
    virtual void FillColourList() = 0; // six rows of ListView1, and the click on the selected one
    virtual void PrepareDisplay() = 0; // levels colour, border style, FFT size, equalizer range
    virtual void PrepareSkin() = 0;    // menu labels, mouse icons, position line
    virtual void PaintSkin() = 0;      // PutPicClip and blank digits
    virtual void SizeAndCentre() = 0;
    virtual void ShowKnob() = 0; // dot and marks of the volume knob
    virtual void Show() = 0;
};

// True for the one instance that may run in a folder.
class InstanceLock {
public:
    virtual ~InstanceLock() = default;
    virtual bool TryLock() = 0;
};

struct StartUpParts {
    ProgramState& state;
    Options& options;
    PlaylistRows& rows;
    PlaylistFiles& files;
    Transport& transport;
    VolumeKnob& knob;
    KSTAudioFile2& audioFile;
    KSTAudioPlayer2& audioPlayer;
    UserPrompts& prompts;
    MainWindowSteps& window;
};

// Fills the version and the folders of the state. `executableFolder` without a separator at its end.
void SetProgramState(ProgramState& state, const QString& executableFolder);

// False, after a message, when the program runs already.
bool IsOnlyInstance(InstanceLock& lock, UserPrompts& prompts);

// The start of the main window. False when the user does not want to go on without a sound device; the
// process then ends at once.
bool LoadMainWindow(const StartUpParts& parts);

// The end of the main window: the list is stored in index order. Playback is not stopped.
void UnloadMainWindow(PlaylistRows& rows, PlaylistFiles& files);

} // namespace kestrune
