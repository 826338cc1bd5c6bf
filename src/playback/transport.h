// Plays the rows of the list: the pull loop between file and player, the transport's state, and which of its
// buttons can be pressed. What a press does is said in play_buttons.h.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/audio_file.h"
#include "components/audio_player.h"
#include "components/clock.h"
#include "components/pending_events.h"
#include "components/user_prompts.h"
#include "playlist/playlist_rows.h"

#include <QObject>
#include <array>

namespace kestrune {

// Buttons of the transport, by the index of ImagePlayButton.
enum TransportButton {
    ButtonPrevious = 0,
    ButtonPause = 1,
    ButtonPlay = 2,
    ButtonStop = 3,
    ButtonRecord = 4,
    ButtonNext = 5
};
inline constexpr int transportButtonCount = 6;

// Lamps of ImageSmall: what the user sees of the state.
enum class Lamp { Stopped = 0, Playing = 1, Paused = 2 };

// How the transport stands at the moment of the question.
struct TransportState {
    Lamp lamp = Lamp::Stopped;
    bool IsPlaying = false; // a file is open and feeding; stays true while paused
    // A pause is noted. It outlives the pause when another file is started in it; the lamp tells what is.
    bool IsPaused = false;
    bool IsStopping = false; // from the start of a stop to the next start of a file
    qint64 PlayPos = 0;      // bytes played before the current run of the player
    qint64 PlayTotal = 0;    // length of the file in bytes
    qint64 PlayBlock = 0;    // bytes of 2000 ms
    QString PlayFile;        // the file last started
};

// What the transport works with. All of it must outlive the transport.
struct TransportParts {
    ProgramState& state;
    PlaylistRows& rows;
    Options& options;
    KSTAudioFile2& audioFile;
    KSTAudioPlayer2& audioPlayer;
    UserPrompts& prompts;
    Clock& clock;
};

// Window thread. No procedure reports an error; a file or output that cannot be opened leaves the transport
// stopped.
class Transport : public QObject {
    Q_OBJECT
public:
    explicit Transport(const TransportParts& parts, QObject* parent = nullptr);

    // --- State ---
    TransportState State() const { return state_; }
    // Bytes of the file that were heard; 0 while stopped.
    qint64 HeardBytes();
    // The row of the file that plays or is paused; 0 while stopped, and when it has left the list.
    int PlayingRow() const;
    // False for an index outside 0 to 5.
    bool IsButtonEnabled(int index) const;

    // --- Procedures ---
    void PlayCurrentItem();
    void StopPlay(); // leaves a noted pause noted
    // While stopped it does nothing. A resume without an output stops.
    void PauseContinue();
    // No pause is noted any more. What is paused stays so until the next start.
    void ForgetPause() { state_.IsPaused = false; }
    void FeedBlock();
    // Mouse up on the position thumb: goes on from the place that the width of the elapsed line stands for.
    // While paused only the place is kept.
    void SeekToLine(double lineWidth, int thumbWidth);
    // Goes on from a place in the file, brought into its length. While paused only the place is kept; while
    // stopped nothing happens.
    void SeekToMs(qint64 ms);
    void SetButton(bool flag);
    void SetPreNextButton();
    void SetPlayButtonTrueFalse(int index, bool enabled);
    // Sets the buttons for the rows of a list that was opened.
    void ListLoaded();
    // Sets Play for the current row, as after a click on the list.
    void ListClicked();
    // Files were added by their dialog, also when none was chosen.
    void FilesAdded() { SetPlayButtonTrueFalse(ButtonPlay, true); }

signals:
    void NameShown(const QString& fileName);
    void ButtonEnabled(int index, bool enabled);
    void LampShown(kestrune::Lamp lamp);
    void PauseCaption(const QString& caption);
    void PlayPressed(); // Play wears its pressed picture
    void PausePressed(bool pressed);
    void ButtonsReturned(); // no button wears a picture
    void ChangeColorEnabled(bool enabled);
    void ThumbVisible(bool visible); // thumb of the position bar
    void PositionReset();            // SetStepLine(0)
    void ClockCleared();
    void KhzShown(bool show, const QString& formatText);
    void DisplayCleared();
    void RowShown(int row);
    void TimeShown(qint64 ms, qint64 totalMs);
    void Sought(qint64 ms); // the position has jumped to here
    void RowsChanged();     // a row went whose file is gone: the totals are to be set

private:
    bool ChooseRow();
    bool OpenPlayFile();
    void AskToDeleteRow();
    void ShowLamp(Lamp lamp);
    void AudioPlayer_EndPlay();
    void AudioPlayer_Timer(qint64 playedBytes);

    TransportParts parts_;
    TransportState state_;
    std::array<bool, transportButtonCount> buttonEnabled_ = {false, false, false, false, true, false};
};

} // namespace kestrune
