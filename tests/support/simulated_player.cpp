#include "support/simulated_player.h"

#include <QPointer>
#include <algorithm>

namespace kestrune {

namespace {

// As in the player of real devices.
constexpr qint64 unfedPatienceMs = 50;

} // namespace

QString SimulatedPlayer::DeviceName(int index) {
    return index >= 0 && index < DeviceCount() ? QStringLiteral("Simulated %1").arg(index + 1) : QString();
}

bool SimulatedPlayer::IsDeviceUsable() {
    return IsFormatPlayable() && DeviceIndex() >= 0 && DeviceIndex() < DeviceCount() &&
           prepareResult == Outcome::Ok;
}

// --- The run ---

Outcome SimulatedPlayer::Prepare() {
    StopOutput();
    Outcome outcome = prepareResult;
    if (!IsFormatPlayable()) {
        outcome = Outcome::NotSupported;
    } else if (DeviceIndex() < 0 || DeviceIndex() >= DeviceCount()) {
        outcome = Outcome::DeviceFailed;
    }
    if (outcome != Outcome::Ok) {
        EndRun(-1);
        return outcome;
    }
    BeginRun();
    core_.Start(WaveFormat(), Channels());
    framesTimes1000_ = 0;
    sinceTickMs_ = 0;
    ForgetDevice();
    return Outcome::Ok;
}

void SimulatedPlayer::ForgetDevice() {
    device_.clear();
    deviceOffset_ = 0;
    unfedMs_ = 0;
    endIsDue_ = false;
}

Outcome SimulatedPlayer::WriteBlock(const QByteArray& block) {
    if (!IsRunning()) {
        return Outcome::NotOpen;
    }
    NoteBlockWritten(block);
    core_.Push(block);
    return Outcome::Ok;
}

void SimulatedPlayer::ClearBlocks() {
    if (IsRunning()) {
        ContinueRun();
        core_.Clear();
        ForgetDevice();
    }
}

void SimulatedPlayer::StopOutput() {
    if (IsRunning()) {
        EndRun(0);
        ForgetDevice();
    }
}

void SimulatedPlayer::Vanish() {
    hasGone_ = true;
    if (IsRunning()) {
        events_.push_back({Run(), PlayerEvent::DeviceVanished});
    }
}

void SimulatedPlayer::SetTimerInterval(int ms) {
    timerIntervalMs_ = std::max(1, ms);
}

// --- Time ---

void SimulatedPlayer::Advance(qint64 ms) {
    Settle();
    while (ms > 0) {
        const qint64 stepMs = MsToNextChange(ms);
        PassTime(stepMs);
        ms -= stepMs;
        Settle();
    }
}

qint64 SimulatedPlayer::RunUntilIdle(qint64 limitMs) {
    const qint64 beginMs = clockMs;
    Settle();
    while (!IsIdle() && clockMs - beginMs < limitMs) {
        PassTime(MsToNextChange(limitMs - (clockMs - beginMs)));
        Settle();
    }
    return clockMs - beginMs;
}

bool SimulatedPlayer::IsIdle() const {
    if (!IsRunning()) {
        return true;
    }
    const bool waitsForCall = DeviceFrames() == 0 && core_.queue.IsEmpty() && !IsUnfed();
    return waitsForCall && (events_.empty() || !deliversEvents);
}

qint64 SimulatedPlayer::DeviceFrames() const {
    return (static_cast<qint64>(device_.size()) - deviceOffset_) / core_.Channels();
}

qint64 SimulatedPlayer::MsToNextChange(qint64 limitMs) const {
    if (!IsRunning()) {
        return limitMs;
    }
    qint64 nextMs = std::min<qint64>(limitMs, deviceBufferMs / 2);
    nextMs = std::min(nextMs, timerIntervalMs_ - sinceTickMs_);
    const qint64 soundMs = (DeviceFrames() * 1000 + core_.SampleRateHz() - 1) / core_.SampleRateHz();
    if (soundMs > 0) {
        nextMs = std::min(nextMs, soundMs);
    }
    return std::max<qint64>(1, nextMs);
}

void SimulatedPlayer::PassTime(qint64 ms) {
    clockMs += ms;
    if (!IsRunning() || hasGone_) {
        return;
    }
    framesTimes1000_ += ms * core_.SampleRateHz();
    const qint64 frames = std::min(framesTimes1000_ / 1000, DeviceFrames());
    if (frames == 0) {
        silentMs += ms;
    }
    // Time that found nothing to play is gone; it does not make the next sound faster.
    framesTimes1000_ = frames == framesTimes1000_ / 1000 ? framesTimes1000_ % 1000 : 0;
    if (keepsHeard && frames > 0) {
        heard.append(reinterpret_cast<const char*>(device_.data() + deviceOffset_),
                     frames * core_.FrameSize());
    }
    deviceOffset_ += frames * core_.Channels();
    heardFramesTotal += frames;
    core_.SetUnheard(DeviceFrames());
    unfedMs_ = IsUnfed() ? unfedMs_ + ms : 0;
    sinceTickMs_ += ms;
}

// --- Events ---

// Everything that happens without time passing.
void SimulatedPlayer::Settle() {
    const QPointer<SimulatedPlayer> alive(this);
    Tick();
    while (!alive.isNull()) {
        FillDevice();
        RaiseDueEvents();
        if (events_.empty() || !deliversEvents) {
            return;
        }
        const DueEvent due = events_.front();
        events_.pop_front();
        Deliver(due.run, due.event);
    }
}

void SimulatedPlayer::Tick() {
    if (!IsRunning() || hasGone_ || !deliversEvents || sinceTickMs_ < timerIntervalMs_) {
        return;
    }
    sinceTickMs_ = 0;
    const QPointer<SimulatedPlayer> alive(this);
    const quint64 tickRun = Run();
    const Levels levels = core_.TakeLevels();
    const qint64 heardFrames = core_.HeardFrames();
    emit Timer(core_.HeardBytes());
    if (!alive.isNull() && Run() == tickRun) {
        emit LevelTimer(heardFrames, levels.leftDb, levels.rightDb);
    }
}

void SimulatedPlayer::FillDevice() {
    const qint64 roomFrames = static_cast<qint64>(core_.SampleRateHz()) * deviceBufferMs / 1000;
    if (!IsRunning() || hasGone_ || DeviceFrames() > roomFrames / 2) {
        return;
    }
    device_.erase(device_.begin(), device_.begin() + deviceOffset_);
    deviceOffset_ = 0;
    const qint64 heldFrames = DeviceFrames();
    device_.resize(static_cast<size_t>(roomFrames * core_.Channels()));
    qint64 frames = heldFrames;
    while (frames < roomFrames && !core_.queue.IsEmpty()) {
        frames += core_.Pull(device_.data() + frames * core_.Channels(), roomFrames - frames);
    }
    device_.resize(static_cast<size_t>(frames * core_.Channels()));
}

void SimulatedPlayer::RaiseDueEvents() {
    if (!IsRunning() || hasGone_) {
        return;
    }
    const bool asksUnfed = unfedMs_ >= unfedPatienceMs;
    if (asksUnfed || core_.queue.TakeFirstRequest()) {
        unfedMs_ = 0;
        core_.queue.NoteRequest();
        events_.push_back({Run(), PlayerEvent::RequestBlock});
    }
    while (core_.queue.TakeEndedBlock()) {
        core_.queue.NoteRequest();
        events_.push_back({Run(), PlayerEvent::BlockEnded});
    }
    if (!endIsDue_ && DeviceFrames() == 0 && core_.queue.IsExhausted()) {
        endIsDue_ = true;
        events_.push_back({Run(), PlayerEvent::PlayEnded});
    }
}

} // namespace kestrune
