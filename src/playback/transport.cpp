#include "playback/transport.h"

#include "app/paths.h"
#include "playback/play_order.h"
#include "playback/position.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint64 feedBlockMs = 2000;
constexpr qint32 seekFromStart = 3;

} // namespace

Transport::Transport(const TransportParts& parts, QObject* parent) : QObject(parent), parts_(parts) {
    KSTAudioPlayer2* player = &parts_.audioPlayer;
    connect(player, &KSTAudioPlayer2::RequestOnLoadArray, this, &Transport::FeedBlock);
    connect(player, &KSTAudioPlayer2::EndArrayPlay, this, &Transport::FeedBlock);
    connect(player, &KSTAudioPlayer2::EndPlay, this, &Transport::AudioPlayer_EndPlay);
    connect(player, &KSTAudioPlayer2::Timer, this, &Transport::AudioPlayer_Timer);
}

qint64 Transport::HeardBytes() {
    if (!state_.IsPlaying) {
        return 0;
    }
    // What was played before a pause is in PlayPos already.
    const bool isRunning = state_.lamp != Lamp::Paused;
    return state_.PlayPos + (isRunning ? parts_.audioPlayer.GetPlayedBytes() : 0);
}

int Transport::PlayingRow() const {
    const PlaylistRows& rows = parts_.rows;
    const int last = parts_.state.LastIndex;
    if (rows.IsBold(last)) {
        return last;
    }
    for (int row = 1; row <= rows.Count(); ++row) {
        if (rows.IsBold(row)) {
            return row;
        }
    }
    return 0;
}

bool Transport::IsButtonEnabled(int index) const {
    return index >= 0 && index < transportButtonCount && buttonEnabled_[static_cast<size_t>(index)];
}

void Transport::PlayCurrentItem() {
    if (!ChooseRow()) {
        return;
    }
    const QString file = parts_.rows.FullPath(parts_.state.CurIndex);
    if (state_.IsPlaying) {
        if (file == state_.PlayFile) {
            return;
        }
        StopPlay();
    }
    state_.PlayFile = file;
    if (!FileExists(file)) {
        AskToDeleteRow();
        return;
    }
    if (!OpenPlayFile()) {
        return;
    }
    state_.IsStopping = false;
    state_.IsPlaying = true;
    state_.PlayBlock = parts_.audioPlayer.BytesForMs(feedBlockMs);
    emit ChangeColorEnabled(false);
    FeedBlock();
    SetButton(true);
    emit ThumbVisible(true);
    emit PositionReset();
    emit RowShown(parts_.state.CurIndex);
    parts_.rows.ClearAllBold();
    parts_.rows.SetBold(parts_.state.CurIndex, true);
    emit PlayPressed();
    ShowLamp(Lamp::Playing);
    SetPlayButtonTrueFalse(ButtonPlay, false);
    emit KhzShown(true, parts_.audioFile.GetFormatText());
}

// Sets CurIndex to a row with a file. False for an empty list.
bool Transport::ChooseRow() {
    ProgramState& state = parts_.state;
    if (state.CurIndex < 1) {
        const bool several = FindSel(parts_.rows) > 1;
        state.CurIndex = several ? FindNextSel(state, parts_.rows, parts_.options, parts_.clock) : 1;
    }
    if (parts_.rows.FullPath(state.CurIndex).isEmpty()) {
        if (parts_.rows.Count() == 0) {
            return false;
        }
        state.CurIndex = 1;
    }
    return true;
}

void Transport::AskToDeleteRow() {
    const bool remove = parts_.prompts.AskYesNo(
        tr("The selected file no longer exists. Would you like to delete it from your playlist?"),
        PromptIcon::Information);
    if (!remove) {
        return;
    }
    ProgramState& state = parts_.state;
    parts_.rows.Remove(state.CurIndex);
    state.CurIndex = std::min(state.CurIndex, parts_.rows.Count());
    emit RowsChanged();
}

// Opens the file and the output. False leaves both closed.
bool Transport::OpenPlayFile() {
    ProgramState& state = parts_.state;
    KSTAudioFile2& file = parts_.audioFile;
    KSTAudioPlayer2& player = parts_.audioPlayer;
    emit RowShown(state.CurIndex);
    file.OpenRead(state_.PlayFile, 0, 1);
    state.LastIndex = state.CurIndex;
    emit NameShown(parts_.rows.Field(state.CurIndex, SubFileName));
    if (file.GetFormatId() < 0) {
        return false;
    }
    state_.PlayPos = 0;
    const qint64 length = file.GetLengthBytes();
    if (length != 0) {
        state_.PlayTotal = length;
    }
    player.SetFormat(file.GetWaveFormat(), file.GetChannels());
    player.Prepare();
    if (player.GetStatus() < 0) {
        file.CloseFile();
        return false;
    }
    return true;
}

// Changes no state: the player tells the end, also that of a run which never got a block.
void Transport::FeedBlock() {
    const QByteArray block = parts_.audioFile.ReadBlock(state_.PlayBlock);
    if (block.size() > 1) {
        parts_.audioPlayer.WriteBlock(block);
    }
}

void Transport::StopPlay() {
    state_.IsStopping = true;
    parts_.audioPlayer.StopOutput();
    parts_.audioFile.CloseFile();
    state_.IsPlaying = false;
    emit ChangeColorEnabled(true);
    emit PauseCaption(tr("Pause"));
    emit DisplayCleared();
    SetButton(false);
    SetPlayButtonTrueFalse(ButtonPlay, true);
    emit PositionReset();
    emit ThumbVisible(false);
    parts_.rows.ClearAllBold();
    emit ButtonsReturned();
    ShowLamp(Lamp::Stopped);
    emit ClockCleared();
    emit KhzShown(false, QString());
}

void Transport::PauseContinue() {
    if (state_.IsStopping) {
        return;
    }
    KSTAudioPlayer2& player = parts_.audioPlayer;
    if (!state_.IsPaused) {
        emit PauseCaption(tr("Continue"));
        state_.IsPaused = true;
        // The figure stands still only once the output has stopped; the sound goes on until then.
        player.StopOutput();
        state_.PlayPos += player.GetPlayedBytes();
        emit ChangeColorEnabled(true);
        emit PausePressed(true);
        ShowLamp(Lamp::Paused);
        SetPlayButtonTrueFalse(ButtonPlay, true);
        return;
    }
    emit PauseCaption(tr("Pause"));
    state_.IsPaused = false;
    player.Prepare();
    if (player.GetStatus() < 0) {
        StopPlay();
        return;
    }
    parts_.audioFile.SeekTo(state_.PlayPos, seekFromStart);
    emit ChangeColorEnabled(false);
    FeedBlock();
    emit PausePressed(false);
    ShowLamp(Lamp::Playing);
    SetPlayButtonTrueFalse(ButtonPlay, false);
}

void Transport::SeekToLine(double lineWidth, int thumbWidth) {
    parts_.state.SeekDragging = false;
    if (state_.IsPlaying) {
        SeekToMs(SeekTargetMs(lineWidth, parts_.audioFile.GetLengthMs(), thumbWidth));
    }
}

void Transport::SeekToMs(qint64 ms) {
    if (!state_.IsPlaying) {
        return;
    }
    KSTAudioPlayer2& player = parts_.audioPlayer;
    player.ClearBlocks();
    const qint64 targetMs = std::clamp<qint64>(ms, 0, std::max<qint64>(parts_.audioFile.GetLengthMs(), 0));
    state_.PlayPos = parts_.audioFile.SeekTo(player.BytesForMs(targetMs), seekFromStart);
    FeedBlock();
    FeedBlock();
    // The next tick may be far: none comes during a pause.
    AudioPlayer_Timer(0);
    emit Sought(player.MsForBytes(state_.PlayPos));
}

void Transport::AudioPlayer_EndPlay() {
    StopPlay();
    if (!parts_.options.IsModeChecked(PlayMode::Repeat)) {
        parts_.state.CurIndex = FindNextSel(parts_.state, parts_.rows, parts_.options, parts_.clock);
    }
    PlayCurrentItem();
}

void Transport::AudioPlayer_Timer(qint64 playedBytes) {
    if (!parts_.state.SeekDragging) {
        emit TimeShown(parts_.audioPlayer.MsForBytes(state_.PlayPos + playedBytes),
                       parts_.audioFile.GetLengthMs());
    }
}

void Transport::ShowLamp(Lamp lamp) {
    state_.lamp = lamp;
    emit LampShown(lamp);
}

void Transport::SetButton(bool flag) {
    for (const int index : {ButtonPrevious, ButtonPause, ButtonPlay, ButtonStop, ButtonNext}) {
        SetPlayButtonTrueFalse(index, flag);
    }
    SetPlayButtonTrueFalse(ButtonRecord, !flag);
    SetPreNextButton();
}

void Transport::SetPreNextButton() {
    const bool enabled = state_.IsPlaying && parts_.rows.Count() >= 2;
    SetPlayButtonTrueFalse(ButtonPrevious, enabled);
    SetPlayButtonTrueFalse(ButtonNext, enabled);
}

void Transport::SetPlayButtonTrueFalse(int index, bool enabled) {
    if (index < 0 || index >= transportButtonCount) {
        return;
    }
    buttonEnabled_[static_cast<size_t>(index)] = enabled;
    emit ButtonEnabled(index, enabled);
}

void Transport::ListLoaded() {
    const bool isResumable = state_.IsPlaying && state_.lamp == Lamp::Paused;
    const bool canStart = !state_.IsPlaying && parts_.rows.Count() > 0;
    SetPlayButtonTrueFalse(ButtonPlay, isResumable || canStart);
    SetPreNextButton();
}

void Transport::ListClicked() {
    const ProgramState& state = parts_.state;
    if (parts_.rows.Count() > 0) {
        if (state.CurIndex <= 0) {
            SetPlayButtonTrueFalse(ButtonPlay, false);
        } else if (!parts_.rows.Field(state.CurIndex, RowText).isEmpty()) {
            SetPlayButtonTrueFalse(ButtonPlay, true);
        }
    }
    SetPreNextButton();
}

} // namespace kestrune
