// A player without a device, on a clock that the test advances. Hours of playback take a second, and the same
// calls always give the same events at the same place.
#pragma once

#include "backends/sound/block_player.h"
#include "backends/sound/run_core.h"

#include <deque>
#include <vector>

namespace kestrune {

// Events and time pass only inside Advance and RunUntilIdle; none is raised from within another call.
// Handlers may make every call of the player, these two excepted.
class SimulatedPlayer : public BlockPlayer {
public:
    // --- What a test sets ---
    int deviceCount = 1;
    Outcome prepareResult = Outcome::Ok; // of the next Prepare, where the format and the device would do
    // False holds events back, as a window does that is busy; time goes on.
    bool deliversEvents = true;
    bool keepsHeard = true;

    // --- What a test reads ---
    QByteArray heard;            // every sample that was heard, of all runs behind one another
    qint64 clockMs = 0;          // time that has passed
    qint64 silentMs = 0;         // of it, inside a run but with nothing left to play
    qint64 heardFramesTotal = 0; // of all runs

    using BlockPlayer::BlockPlayer;

    // Lets time pass.
    void Advance(qint64 ms);
    // Lets time pass until no run is left or nothing can happen any more without a call from outside, at most
    // `limitMs`. Returns the time that passed.
    qint64 RunUntilIdle(qint64 limitMs = 24 * 60 * 60 * 1000);
    // The device goes away now; the event comes with the next time that passes. Prepare fails until Return.
    void Vanish();
    void Return() { hasGone = false; }

    int DeviceCount() override { return hasGone ? 0 : deviceCount; }
    QString DeviceName(int index) override;
    bool IsDeviceUsable() override;

    Outcome Prepare() override;
    Outcome WriteBlock(const QByteArray& block) override;
    void ClearBlocks() override;
    void StopOutput() override;
    qint64 GetPlayedBytes() override { return core.HeardBytes(); }
    QList<qint16> GetPlayedBlock(int count) override { return core.PlayedBlock(count); }

    void SetVolume(qint32 volume) override { core.chain.SetVolume(volume); }
    void EnableEqualizer(bool enabled) override { core.chain.EnableEqualizer(enabled); }
    void SetEqualizer(const EqualizerGains& gainsDb) override { core.chain.SetEqualizer(gainsDb); }
    void SetTimerInterval(int ms) override;

protected:
    void HandleAnswer(bool wroteBlock) override { core.queue.NoteAnswer(wroteBlock); }
    void HandleRunEnding() override {}

private:
    struct DueEvent {
        quint64 run;
        PlayerEvent event;
    };

    void Settle();
    void FillDevice();
    void RaiseDueEvents();
    void PassTime(qint64 ms);
    void Tick();
    qint64 MsToNextChange(qint64 limitMs) const;
    bool IsIdle() const;
    void ForgetDevice();
    qint64 DeviceFrames() const; // pulled, not yet heard

    RunCore core;
    std::deque<DueEvent> events;
    std::vector<qint16> device; // what was pulled; heard up to deviceOffset
    qint64 deviceOffset = 0;    // in samples
    qint64 framesTimes1000 = 0; // part of a frame that has passed
    qint64 unfedMs = 0;
    qint64 sinceTickMs = 0;
    int timerIntervalMs = 30;
    bool hasGone = false;
    bool endIsDue = false;
};

} // namespace kestrune
