// Playback by blocks, pulled by events.
#pragma once

#include "components/outcome.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <array>

namespace kestrune {

inline constexpr int equalizerBands = 12;
using EqualizerGains = std::array<float, equalizerBands>; // dB per band, 0 is flat
inline constexpr int fullVolume = 65535;

// A run goes from Prepare to StopOutput, or to EndPlay when the data ends. Call order of a run:
//
//   SetFormat, Prepare, (GetStatus not negative), WriteBlock ... StopOutput
//
// The queue is kept two blocks deep: the first WriteBlock of a run raises RequestOnLoadArray once, and each
// block that has been handed on whole to the device raises EndArrayPlay. Both ask for one block. A handler
// that has no more data writes nothing; when the queue then runs empty and the last sample has been heard,
// EndPlay is raised. A run that is given nothing at all after Prepare or ClearBlocks is asked once more by
// RequestOnLoadArray after a short while; with no block then, too, it ends by EndPlay. A device that vanishes
// ends the run as StopOutput does, followed by EndPlay.
//
// Thread: every call and every signal on the window thread. No call blocks for longer than it takes to open
// the device (Prepare) or to drop what it holds (StopOutput, ClearBlocks: a few milliseconds). Signals of a
// run that was stopped or cleared are not delivered after the stop or clear.
class KSTAudioPlayer2 : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // --- Devices ---

    // Number of output devices; 0 when the machine cannot play.
    virtual int DeviceCount() = 0;
    virtual QString DeviceName(int index) = 0; // empty outside 0 to DeviceCount - 1
    // Selects the device that the next Prepare opens. Any index may be set; an unusable one fails in Prepare.
    virtual void SetDeviceIndex(int index) = 0;
    virtual int DeviceIndex() const = 0;
    // True when the selected device can be opened now.
    virtual bool IsDeviceUsable() = 0;

    // --- A run ---

    // The format of the blocks to come: sample rate in Hz, 1 or 2 channels. Takes effect with the next
    // Prepare.
    virtual void SetFormat(qint32 waveFormat, qint32 channels) = 0;
    // Opens the output for a run: queue empty, position 0. An earlier run is dropped first.
    // NotSupported for a format that cannot be played, DeviceFailed when the device refuses.
    virtual Outcome Prepare() = 0;
    // 0, or negative when the last Prepare failed or the device has vanished since.
    virtual qint32 GetStatus() const = 0;
    // In the format of SetFormat; whole frames.
    virtual qint64 BytesForMs(qint64 ms) const = 0;
    virtual qint64 MsForBytes(qint64 bytes) const = 0;
    virtual qint64 SamplesToMilliseconds(qint64 samples) const = 0; // sample frames to milliseconds
    // Queues a block. NotOpen outside a run. Bytes beyond the last whole frame are dropped.
    virtual Outcome WriteBlock(const QByteArray& block) = 0;
    // Drops what is queued and not yet heard, and starts counting GetPlayedBytes from 0. The run goes on; no
    // event asks for the next blocks, the caller writes two.
    virtual void ClearBlocks() = 0;
    // Ends the run at once; what was queued is dropped. Does nothing outside a run.
    virtual void StopOutput() = 0;
    // Bytes that have been heard since Prepare or ClearBlocks, not those that were queued. After StopOutput
    // the figure of the moment of the stop stays.
    virtual qint64 GetPlayedBytes() = 0;
    // The latest Count frames that were heard, as interleaved samples, fewer at the start of a run.
    virtual QList<qint16> GetPlayedBlock(int count) = 0;

    // --- Sound ---

    // 0 to 65535, linear in amplitude. At 65535, with the equalizer off or flat, samples pass bit by bit.
    virtual void SetVolume(qint32 volume) = 0;
    virtual void EnableEqualizer(bool enabled) = 0;
    // Gains are cut to 15 dB up or down. What is raised is made room for: all is lowered by the highest point
    // of the response, so that nothing clips that did not clip before. Takes effect over some 40 ms.
    virtual void SetEqualizer(const EqualizerGains& gainsDb) = 0;

    // Period of AudioPlayer_Timer in milliseconds, at least 1; 30 at the start.
    virtual void SetTimerInterval(int ms) = 0;

signals:
    // While a run plays: bytes heard since Prepare or ClearBlocks.
    void Timer(qint64 playedBytes);
    // The same tick in sample frames, with the peak of each channel since the last tick in dB above the
    // smallest step: 0 for silence, 96 for full scale.
    void LevelTimer(qint64 samples, int leftLevel, int rightLevel);
    void RequestOnLoadArray();
    void EndArrayPlay();
    void EndPlay();
};

} // namespace kestrune
