// What every player of this folder shares on the window thread: format, status, and events that are numbered
// by run, so that none is delivered after its run was stopped or cleared.
#pragma once

#include "components/audio_player.h"

namespace kestrune {

enum class PlayerEvent {
    RequestBlock,
    BlockEnded,
    PlayEnded,
    DeviceVanished,
};

class BlockPlayer : public KSTAudioPlayer2 {
public:
    using KSTAudioPlayer2::KSTAudioPlayer2;

    void SetDeviceIndex(int index) override { deviceIndex_ = index; }
    int DeviceIndex() const override { return deviceIndex_; }
    void SetFormat(qint32 waveFormat, qint32 channels) override;
    qint32 GetStatus() const override { return status_; }
    qint64 BytesForMs(qint64 ms) const override;
    qint64 MsForBytes(qint64 bytes) const override;
    qint64 SamplesToMilliseconds(qint64 samples) const override;

protected:
    // True for formats that a run can have.
    bool IsFormatPlayable() const;
    qint32 WaveFormat() const { return waveFormat_; }
    qint32 Channels() const { return channels_; }

    // Starts or goes on with a run under a new number; events of the old number are dropped from now on.
    quint64 BeginRun();
    quint64 ContinueRun();
    // The run is over; `newStatus` is what GetStatus answers.
    void EndRun(qint32 newStatus);
    bool IsRunning() const { return isRunning_; }
    quint64 Run() const { return runNumber_; }
    // To be called by WriteBlock with what it was given.
    void NoteBlockWritten(const QByteArray& block);
    // True when nothing was written since the run began or was cleared.
    bool IsUnfed() const { return isRunning_ && !wroteSinceBegin_; }

    // Raises the signal of an event, unless the run that it belongs to is over or was cleared.
    void Deliver(quint64 eventRun, PlayerEvent event);
    // The handler of a request has returned and has, or has not, written a block. Still the same run.
    virtual void HandleAnswer(bool wroteBlock) = 0;
    // The run is about to end by itself; EndPlay follows.
    virtual void HandleRunEnding() = 0;

private:
    void AskForBlock(PlayerEvent event);

    int deviceIndex_ = 0;
    qint32 waveFormat_ = 44100;
    qint32 channels_ = 2;
    qint32 runChannels_ = 2; // of the run; SetFormat may have gone on to the next one
    qint32 status_ = 0;
    quint64 runNumber_ = 0;
    bool isRunning_ = false;
    bool hasAnswered_ = false;     // since the current request was raised
    bool wroteSinceBegin_ = false; // since Prepare or ClearBlocks
};

} // namespace kestrune
