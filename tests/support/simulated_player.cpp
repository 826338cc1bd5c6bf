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
    core.Start(WaveFormat(), Channels());
    framesTimes1000 = 0;
    sinceTickMs = 0;
    ForgetDevice();
    return Outcome::Ok;
}

void SimulatedPlayer::ForgetDevice() {
    device.clear();
    deviceOffset = 0;
    unfedMs = 0;
    endIsDue = false;
}

Outcome SimulatedPlayer::WriteBlock(const QByteArray& block) {
    if (!IsRunning()) {
        return Outcome::NotOpen;
    }
    NoteBlockWritten(block);
    core.Push(block);
    return Outcome::Ok;
}

void SimulatedPlayer::ClearBlocks() {
    if (IsRunning()) {
        ContinueRun();
        core.Clear();
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
    hasGone = true;
    if (IsRunning()) {
        events.push_back({Run(), PlayerEvent::DeviceVanished});
    }
}

void SimulatedPlayer::SetTimerInterval(int ms) {
    timerIntervalMs = std::max(1, ms);
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
    const bool waitsForCall = DeviceFrames() == 0 && core.queue.IsEmpty() && !IsUnfed();
    return waitsForCall && (events.empty() || !deliversEvents);
}

qint64 SimulatedPlayer::DeviceFrames() const {
    return (static_cast<qint64>(device.size()) - deviceOffset) / core.Channels();
}

qint64 SimulatedPlayer::MsToNextChange(qint64 limitMs) const {
    if (!IsRunning()) {
        return limitMs;
    }
    qint64 nextMs = std::min<qint64>(limitMs, deviceBufferMs / 2);
    nextMs = std::min(nextMs, timerIntervalMs - sinceTickMs);
    const qint64 soundMs = (DeviceFrames() * 1000 + core.SampleRateHz() - 1) / core.SampleRateHz();
    if (soundMs > 0) {
        nextMs = std::min(nextMs, soundMs);
    }
    return std::max<qint64>(1, nextMs);
}

void SimulatedPlayer::PassTime(qint64 ms) {
    clockMs += ms;
    if (!IsRunning() || hasGone) {
        return;
    }
    framesTimes1000 += ms * core.SampleRateHz();
    const qint64 frames = std::min(framesTimes1000 / 1000, DeviceFrames());
    if (frames == 0) {
        silentMs += ms;
    }
    // Time that found nothing to play is gone; it does not make the next sound faster.
    framesTimes1000 = frames == framesTimes1000 / 1000 ? framesTimes1000 % 1000 : 0;
    if (keepsHeard && frames > 0) {
        heard.append(reinterpret_cast<const char*>(device.data() + deviceOffset), frames * core.FrameSize());
    }
    deviceOffset += frames * core.Channels();
    heardFramesTotal += frames;
    core.SetUnheard(DeviceFrames());
    unfedMs = IsUnfed() ? unfedMs + ms : 0;
    sinceTickMs += ms;
}

// --- Events ---

// Everything that happens without time passing.
void SimulatedPlayer::Settle() {
    const QPointer<SimulatedPlayer> alive(this);
    Tick();
    while (!alive.isNull()) {
        FillDevice();
        RaiseDueEvents();
        if (events.empty() || !deliversEvents) {
            return;
        }
        const DueEvent due = events.front();
        events.pop_front();
        Deliver(due.run, due.event);
    }
}

void SimulatedPlayer::Tick() {
    if (!IsRunning() || hasGone || !deliversEvents || sinceTickMs < timerIntervalMs) {
        return;
    }
    sinceTickMs = 0;
    const QPointer<SimulatedPlayer> alive(this);
    const quint64 tickRun = Run();
    const Levels levels = core.TakeLevels();
    const qint64 heardFrames = core.HeardFrames();
    emit Timer(core.HeardBytes());
    if (!alive.isNull() && Run() == tickRun) {
        emit LevelTimer(heardFrames, levels.leftDb, levels.rightDb);
    }
}

void SimulatedPlayer::FillDevice() {
    const qint64 roomFrames = static_cast<qint64>(core.SampleRateHz()) * deviceBufferMs / 1000;
    if (!IsRunning() || hasGone || DeviceFrames() > roomFrames / 2) {
        return;
    }
    device.erase(device.begin(), device.begin() + deviceOffset);
    deviceOffset = 0;
    const qint64 heldFrames = DeviceFrames();
    device.resize(static_cast<size_t>(roomFrames * core.Channels()));
    qint64 frames = heldFrames;
    while (frames < roomFrames && !core.queue.IsEmpty()) {
        frames += core.Pull(device.data() + frames * core.Channels(), roomFrames - frames);
    }
    device.resize(static_cast<size_t>(frames * core.Channels()));
}

void SimulatedPlayer::RaiseDueEvents() {
    if (!IsRunning() || hasGone) {
        return;
    }
    const bool asksUnfed = unfedMs >= unfedPatienceMs;
    if (asksUnfed || core.queue.TakeFirstRequest()) {
        unfedMs = 0;
        core.queue.NoteRequest();
        events.push_back({Run(), PlayerEvent::RequestBlock});
    }
    while (core.queue.TakeEndedBlock()) {
        core.queue.NoteRequest();
        events.push_back({Run(), PlayerEvent::BlockEnded});
    }
    if (!endIsDue && DeviceFrames() == 0 && core.queue.IsExhausted()) {
        endIsDue = true;
        events.push_back({Run(), PlayerEvent::PlayEnded});
    }
}

} // namespace kestrune
