#include "backends/sound/output_thread.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kestrune {

using namespace std::chrono_literals;

namespace {

// A third of what the device holds: seldom enough to cost little, often enough to survive a slow turn.
constexpr auto fillPeriod = 66ms;
constexpr auto drainPeriod = 2ms;
// Long enough for the next file to find the device open, short enough to let a sound card sleep.
constexpr auto closeAfter = 3s;

} // namespace

OutputThread::OutputThread(std::unique_ptr<OutputSource> outputSource, EventHandler eventHandler)
    : source(std::move(outputSource)), raise(std::move(eventHandler)), thread([this] { Loop(); }) {}

OutputThread::~OutputThread() {
    {
        const std::lock_guard lock(mutex);
        isEnding = true;
    }
    wake.notify_one();
    thread.join();
}

// --- Jobs ---

void OutputThread::Post(Job job) {
    {
        const std::lock_guard lock(mutex);
        jobs.push_back(std::move(job));
    }
    wake.notify_one();
}

void OutputThread::PostAndWait(const Job& job) {
    std::mutex doneMutex;
    std::condition_variable doneSignal;
    bool isDone = false;
    Post([&] {
        job();
        // Signalled under the lock: the waiting procedure must not return while the signal is still used.
        const std::lock_guard lock(doneMutex);
        isDone = true;
        doneSignal.notify_one();
    });
    std::unique_lock lock(doneMutex);
    doneSignal.wait(lock, [&] { return isDone; });
}

std::optional<OutputThread::Clock::duration> OutputThread::Rest() const {
    if (isRunning) {
        return isDraining ? drainPeriod : fillPeriod;
    }
    if (device) {
        return std::max<Clock::duration>(0ms, idleSince + closeAfter - Clock::now());
    }
    return std::nullopt;
}

void OutputThread::RunJobs() {
    std::deque<Job> due;
    {
        const std::lock_guard lock(mutex);
        due.swap(jobs);
    }
    for (const Job& job : due) {
        job();
    }
}

// Cheaper than waking the thread and waiting for it. Jobs that were posted before are done first.
void OutputThread::Ask(const Job& question) {
    const std::lock_guard state(stateMutex);
    RunJobs();
    UpdateHeard();
    question();
}

void OutputThread::Loop() {
    for (;;) {
        std::optional<Clock::duration> rest;
        {
            const std::lock_guard state(stateMutex);
            RunJobs();
            if (isRunning) {
                Step();
            } else if (device && Clock::now() - idleSince >= closeAfter) {
                CloseDevice();
            }
            rest = Rest();
        }
        std::unique_lock lock(mutex);
        const auto isDue = [this] { return isEnding || !jobs.empty(); };
        if (rest) {
            wake.wait_for(lock, *rest, isDue);
        } else {
            wake.wait(lock, isDue);
        }
        if (isEnding) {
            break;
        }
    }
    const std::lock_guard state(stateMutex);
    DropRun();
    CloseDevice();
}

// --- Devices ---

int OutputThread::DeviceCount() {
    int count = 0;
    PostAndWait([&] { count = source->Count(device && device->IsAlive() ? deviceKey.index : -1); });
    return count;
}

QString OutputThread::DeviceName(int index) {
    QString name;
    PostAndWait([&] { name = source->Name(index); });
    return name;
}

bool OutputThread::IsDeviceUsable(int index, int sampleRateHz, int channels) {
    bool isUsable = false;
    PostAndWait([&] {
        isUsable = (device && deviceKey.index == index && device->IsAlive()) ||
                   source->Open(index, sampleRateHz, channels).outcome == Outcome::Ok;
    });
    return isUsable;
}

void OutputThread::CloseDevice() {
    device.reset();
    deviceKey = {};
}

Outcome OutputThread::OpenDevice(const DeviceKey& key) {
    if (device && device->IsAlive() && deviceKey == key && device->Drop() >= 0) {
        return Outcome::Ok;
    }
    CloseDevice();
    OutputSource::Opened opened = source->Open(key.index, key.sampleRateHz, key.channels);
    if (opened.outcome == Outcome::Ok) {
        device = std::move(opened.device);
        deviceKey = key;
    }
    return opened.outcome;
}

// --- The run, from the window thread ---

Outcome OutputThread::Begin(int deviceIndex, int sampleRateHz, int channels, quint64 run) {
    Outcome outcome = Outcome::DeviceFailed;
    PostAndWait([&] {
        DropRun();
        core.Start(sampleRateHz, channels);
        outcome = OpenDevice({deviceIndex, sampleRateHz, channels});
        isRunning = outcome == Outcome::Ok;
        isDraining = false;
        currentRun = run;
        idleSince = Clock::now();
    });
    return outcome;
}

void OutputThread::Clear(quint64 run) {
    PostAndWait([&] {
        currentRun = run;
        isDraining = false;
        if (isRunning && device->Drop() < 0) {
            EndRunByItself(PlayerEvent::DeviceVanished);
        }
        core.Clear();
    });
}

qint64 OutputThread::End() {
    qint64 heardBytes = 0;
    PostAndWait([&] {
        DropRun();
        heardBytes = core.HeardBytes();
    });
    return heardBytes;
}

OutputThread::Position OutputThread::QueryPosition() {
    Position position;
    Ask([&] { position = {core.HeardBytes(), core.HeardFrames(), core.TakeLevels()}; });
    return position;
}

qint64 OutputThread::HeardBytes() {
    qint64 heardBytes = 0;
    Ask([&] { heardBytes = core.HeardBytes(); });
    return heardBytes;
}

QList<qint16> OutputThread::PlayedBlock(int count) {
    QList<qint16> block;
    Ask([&] { block = core.PlayedBlock(count); });
    return block;
}

void OutputThread::Push(const QByteArray& block, quint64 run) {
    Post([this, block, run] {
        if (isRunning && run == currentRun) {
            core.Push(block);
            isDraining = false;
        }
    });
}

void OutputThread::NoteRequest(quint64 run) {
    Post([this, run] {
        if (run == currentRun) {
            core.queue.NoteRequest();
        }
    });
}

void OutputThread::NoteAnswer(bool wroteBlock, quint64 run) {
    Post([this, wroteBlock, run] {
        if (run == currentRun) {
            core.queue.NoteAnswer(wroteBlock);
        }
    });
}

void OutputThread::SetVolume(qint32 volume) {
    Post([this, volume] { core.chain.SetVolume(volume); });
}

void OutputThread::EnableEqualizer(bool isEnabled) {
    Post([this, isEnabled] { core.chain.EnableEqualizer(isEnabled); });
}

void OutputThread::SetEqualizer(const EqualizerGains& gainsDb) {
    Post([this, gainsDb] { core.chain.SetEqualizer(gainsDb); });
}

// --- The run, on the thread ---

void OutputThread::DropRun() {
    if (!isRunning) {
        return;
    }
    isRunning = false;
    isDraining = false;
    idleSince = Clock::now();
    const qint64 neverHeardFrames = device->Drop();
    if (neverHeardFrames >= 0) {
        core.SetNeverHeard(neverHeardFrames);
    }
}

void OutputThread::UpdateHeard() {
    if (!isRunning) {
        return;
    }
    const qint64 unheardFrames = device->UnheardFrames();
    if (unheardFrames >= 0) {
        core.SetUnheard(unheardFrames);
    }
}

void OutputThread::EndRunByItself(PlayerEvent event) {
    isRunning = false;
    isDraining = false;
    idleSince = Clock::now();
    raise(currentRun, event);
}

// False when the device has gone.
bool OutputThread::Fill() {
    qint64 room = device->WritableFrames();
    while (room > 0 && !core.queue.IsEmpty()) {
        chunk.resize(static_cast<size_t>(room * core.Channels()));
        const qint64 frames = core.Pull(chunk.data(), room);
        if (!device->Write(chunk.data(), frames)) {
            return false;
        }
        room -= frames;
    }
    return room >= 0 && device->IsAlive();
}

void OutputThread::RaiseDueEvents() {
    if (core.queue.TakeFirstRequest()) {
        core.queue.NoteRequest();
        raise(currentRun, PlayerEvent::RequestBlock);
    }
    while (core.queue.TakeEndedBlock()) {
        core.queue.NoteRequest();
        raise(currentRun, PlayerEvent::BlockEnded);
    }
}

void OutputThread::Step() {
    if (!Fill()) {
        EndRunByItself(PlayerEvent::DeviceVanished);
        return;
    }
    UpdateHeard();
    RaiseDueEvents();
    if (core.queue.IsExhausted()) {
        isDraining = true;
        if (device->IsDrained()) {
            core.SetUnheard(0);
            EndRunByItself(PlayerEvent::PlayEnded);
        }
    }
}

} // namespace kestrune
