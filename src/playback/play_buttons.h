// What the user does to player and recorder. Buttons, menu entries, keys, media keys and player controls all
// end in one of these procedures.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/clock.h"
#include "playback/recording.h"
#include "playback/transport.h"
#include "playlist/playlist_rows.h"

namespace kestrune {

// All of it must outlive the buttons.
struct PlayButtonsParts {
    ProgramState& state;
    PlaylistRows& rows;
    const Options& options;
    Clock& clock;
    Transport& transport;
    Recording& recording;
};

// Nothing here asks whether a button is enabled. Window thread.
class PlayButtons {
public:
    explicit PlayButtons(const PlayButtonsParts& parts) : parts_(parts) {}

    // By the index of ImagePlayButton; any other number does nothing.
    void ImagePlayButton_Click(int index);

    // --- One button each ---
    void Previous();
    void Pause(); // or goes on
    void Play();
    void Stop(); // of the recording, while there is one
    void Record();
    void Next();

    // --- The list, 1-based rows ---
    // The Play menu's Start, which plays the current row also during a pause in another one.
    void Start();
    // A single click; with 0, for a place without a row, no row becomes current.
    void ListViewPlaylist_Click(int row);
    void ListViewPlaylist_DblClick(int row);

private:
    PlayButtonsParts parts_;
};

} // namespace kestrune
