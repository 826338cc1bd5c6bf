#include "playback/play_buttons.h"

#include "playback/play_order.h"

namespace kestrune {

void PlayButtons::ImagePlayButton_Click(int index) {
    switch (index) {
    case ButtonPrevious:
        Previous();
        break;
    case ButtonPause:
        Pause();
        break;
    case ButtonPlay:
        Play();
        break;
    case ButtonStop:
        Stop();
        break;
    case ButtonRecord:
        Record();
        break;
    case ButtonNext:
        Next();
        break;
    default:
        break;
    }
}

void PlayButtons::Previous() {
    parts_.state.CurIndex = FindLastSel(parts_.state, parts_.rows, parts_.options, parts_.clock);
    parts_.transport.PlayCurrentItem();
}

void PlayButtons::Pause() {
    parts_.transport.PauseContinue();
}

// A pause that is still noted after a stop keeps this button without effect until Stop or the menu's Start.
void PlayButtons::Play() {
    const TransportState now = parts_.transport.State();
    if (now.IsPaused) {
        parts_.transport.PauseContinue();
    } else if (!now.IsPlaying) {
        parts_.transport.PlayCurrentItem();
    }
}

void PlayButtons::Stop() {
    parts_.transport.ForgetPause();
    if (!parts_.recording.StopRecording()) {
        parts_.transport.StopPlay();
    }
}

void PlayButtons::Record() {
    parts_.recording.StartRecording();
}

void PlayButtons::Next() {
    parts_.state.CurIndex = FindNextSel(parts_.state, parts_.rows, parts_.options, parts_.clock);
    parts_.transport.PlayCurrentItem();
}

void PlayButtons::Start() {
    parts_.transport.PlayCurrentItem();
}

void PlayButtons::ListViewPlaylist_Click(int row) {
    if (row > 0) {
        parts_.state.ClickedIndex = row;
        parts_.state.CurIndex = row;
    }
    parts_.transport.ListClicked();
}

void PlayButtons::ListViewPlaylist_DblClick(int row) {
    parts_.state.ClickedIndex = row;
    parts_.state.CurIndex = row;
    parts_.transport.PlayCurrentItem();
}

} // namespace kestrune
