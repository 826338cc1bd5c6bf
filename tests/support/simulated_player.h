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
    void Return() { hasGone_ = false; }

    int DeviceCount() override { return hasGone_ ? 0 : deviceCount; }
    QString DeviceName(int index) override;
    bool IsDeviceUsable() override;

    Outcome Prepare() override;
    Outcome WriteBlock(const QByteArray& block) override;
    void ClearBlocks() override;
    void StopOutput() override;
    qint64 GetPlayedBytes() override { return core_.HeardBytes(); }
    QList<qint16> GetPlayedBlock(int count) override { return core_.PlayedBlock(count); }

    void SetVolume(qint32 volume) override { core_.chain.SetVolume(volume); }
    void EnableEqualizer(bool enabled) override { core_.chain.EnableEqualizer(enabled); }
    void SetEqualizer(const EqualizerGains& gainsDb) override { core_.chain.SetEqualizer(gainsDb); }
    void SetTimerInterval(int ms) override;

protected:
    void HandleAnswer(bool wroteBlock) override { core_.queue.NoteAnswer(wroteBlock); }
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

    RunCore core_;
    std::deque<DueEvent> events_;
    std::vector<qint16> device_; // what was pulled; heard up to deviceOffset
    qint64 deviceOffset_ = 0;    // in samples
    qint64 framesTimes1000_ = 0; // part of a frame that has passed
    qint64 unfedMs_ = 0;
    qint64 sinceTickMs_ = 0;
    int timerIntervalMs_ = 30;
    bool hasGone_ = false;
    bool endIsDue_ = false;
};

} // namespace kestrune
