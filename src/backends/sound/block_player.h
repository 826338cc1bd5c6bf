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

    void SetDeviceIndex(int index) override { deviceIndex = index; }
    int DeviceIndex() const override { return deviceIndex; }
    void SetFormat(qint32 waveFormat, qint32 channels) override;
    qint32 GetStatus() const override { return status; }
    qint64 BytesForMs(qint64 ms) const override;
    qint64 MsForBytes(qint64 bytes) const override;
    qint64 SamplesToMilliseconds(qint64 samples) const override;

protected:
    // True for formats that a run can have.
    bool IsFormatPlayable() const;
    qint32 WaveFormat() const { return waveFormat; }
    qint32 Channels() const { return channels; }

    // Starts or goes on with a run under a new number; events of the old number are dropped from now on.
    quint64 BeginRun();
    quint64 ContinueRun();
    // The run is over; `newStatus` is what GetStatus answers.
    void EndRun(qint32 newStatus);
    bool IsRunning() const { return isRunning; }
    quint64 Run() const { return runNumber; }
    // To be called by WriteBlock with what it was given.
    void NoteBlockWritten(const QByteArray& block);
    // True when nothing was written since the run began or was cleared.
    bool IsUnfed() const { return isRunning && !wroteSinceBegin; }

    // Raises the signal of an event, unless the run that it belongs to is over or was cleared.
    void Deliver(quint64 eventRun, PlayerEvent event);
    // The handler of a request has returned and has, or has not, written a block. Still the same run.
    virtual void HandleAnswer(bool wroteBlock) = 0;
    // The run is about to end by itself; EndPlay follows.
    virtual void HandleRunEnding() = 0;

private:
    void AskForBlock(PlayerEvent event);

    int deviceIndex = 0;
    qint32 waveFormat = 44100;
    qint32 channels = 2;
    qint32 runChannels = 2; // of the run; SetFormat may have gone on to the next one
    qint32 status = 0;
    quint64 runNumber = 0;
    bool isRunning = false;
    bool hasAnswered = false;     // since the current request was raised
    bool wroteSinceBegin = false; // since Prepare or ClearBlocks
};

} // namespace kestrune
