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
    : source_(std::move(outputSource)), raise_(std::move(eventHandler)), thread_([this] { Loop(); }) {}

OutputThread::~OutputThread() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

// --- Jobs ---

void OutputThread::Post(Job job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    wake_.notify_one();
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
    if (isRunning_) {
        return isDraining_ ? drainPeriod : fillPeriod;
    }
    if (device_) {
        return std::max<Clock::duration>(0ms, idleSince_ + closeAfter - Clock::now());
    }
    return std::nullopt;
}

void OutputThread::RunJobs() {
    std::deque<Job> due;
    {
        const std::lock_guard lock(mutex_);
        due.swap(jobs_);
    }
    for (const Job& job : due) {
        job();
    }
}

// Cheaper than waking the thread and waiting for it. Jobs that were posted before are done first.
void OutputThread::Ask(const Job& question) {
    const std::lock_guard state(stateMutex_);
    RunJobs();
    UpdateHeard();
    question();
}

void OutputThread::Loop() {
    for (;;) {
        std::optional<Clock::duration> rest;
        {
            const std::lock_guard state(stateMutex_);
            RunJobs();
            if (isRunning_) {
                Step();
            } else if (device_ && Clock::now() - idleSince_ >= closeAfter) {
                CloseDevice();
            }
            rest = Rest();
        }
        std::unique_lock lock(mutex_);
        const auto isDue = [this] { return isEnding_ || !jobs_.empty(); };
        if (rest) {
            wake_.wait_for(lock, *rest, isDue);
        } else {
            wake_.wait(lock, isDue);
        }
        if (isEnding_) {
            break;
        }
    }
    const std::lock_guard state(stateMutex_);
    DropRun();
    CloseDevice();
}

// --- Devices ---

int OutputThread::DeviceCount() {
    int count = 0;
    PostAndWait([&] { count = source_->Count(device_ && device_->IsAlive() ? deviceKey_.index : -1); });
    return count;
}

QString OutputThread::DeviceName(int index) {
    QString name;
    PostAndWait([&] { name = source_->Name(index); });
    return name;
}

bool OutputThread::IsDeviceUsable(int index, int sampleRateHz, int channels) {
    bool isUsable = false;
    PostAndWait([&] {
        isUsable = (device_ && deviceKey_.index == index && device_->IsAlive()) ||
                   source_->Open(index, sampleRateHz, channels).outcome == Outcome::Ok;
    });
    return isUsable;
}

void OutputThread::CloseDevice() {
    device_.reset();
    deviceKey_ = {};
}

Outcome OutputThread::OpenDevice(const DeviceKey& key) {
    if (device_ && device_->IsAlive() && deviceKey_ == key && device_->Drop() >= 0) {
        return Outcome::Ok;
    }
    CloseDevice();
    OutputSource::Opened opened = source_->Open(key.index, key.sampleRateHz, key.channels);
    if (opened.outcome == Outcome::Ok) {
        device_ = std::move(opened.device);
        deviceKey_ = key;
    }
    return opened.outcome;
}

// --- The run, from the window thread ---

Outcome OutputThread::Begin(int deviceIndex, int sampleRateHz, int channels, quint64 run) {
    Outcome outcome = Outcome::DeviceFailed;
    PostAndWait([&] {
        DropRun();
        core_.Start(sampleRateHz, channels);
        outcome = OpenDevice({deviceIndex, sampleRateHz, channels});
        isRunning_ = outcome == Outcome::Ok;
        isDraining_ = false;
        currentRun_ = run;
        idleSince_ = Clock::now();
    });
    return outcome;
}

void OutputThread::Clear(quint64 run) {
    PostAndWait([&] {
        currentRun_ = run;
        isDraining_ = false;
        if (isRunning_ && device_->Drop() < 0) {
            EndRunByItself(PlayerEvent::DeviceVanished);
        }
        core_.Clear();
    });
}

qint64 OutputThread::End() {
    qint64 heardBytes = 0;
    PostAndWait([&] {
        DropRun();
        heardBytes = core_.HeardBytes();
    });
    return heardBytes;
}

OutputThread::Position OutputThread::QueryPosition() {
    Position position;
    Ask([&] { position = {core_.HeardBytes(), core_.HeardFrames(), core_.TakeLevels()}; });
    return position;
}

qint64 OutputThread::HeardBytes() {
    qint64 heardBytes = 0;
    Ask([&] { heardBytes = core_.HeardBytes(); });
    return heardBytes;
}

QList<qint16> OutputThread::PlayedBlock(int count) {
    QList<qint16> block;
    Ask([&] { block = core_.PlayedBlock(count); });
    return block;
}

void OutputThread::Push(const QByteArray& block, quint64 run) {
    Post([this, block, run] {
        if (isRunning_ && run == currentRun_) {
            core_.Push(block);
            isDraining_ = false;
        }
    });
}

void OutputThread::NoteRequest(quint64 run) {
    Post([this, run] {
        if (run == currentRun_) {
            core_.queue.NoteRequest();
        }
    });
}

void OutputThread::NoteAnswer(bool wroteBlock, quint64 run) {
    Post([this, wroteBlock, run] {
        if (run == currentRun_) {
            core_.queue.NoteAnswer(wroteBlock);
        }
    });
}

void OutputThread::SetVolume(qint32 volume) {
    Post([this, volume] { core_.chain.SetVolume(volume); });
}

void OutputThread::EnableEqualizer(bool isEnabled) {
    Post([this, isEnabled] { core_.chain.EnableEqualizer(isEnabled); });
}

void OutputThread::SetEqualizer(const EqualizerGains& gainsDb) {
    Post([this, gainsDb] { core_.chain.SetEqualizer(gainsDb); });
}

// --- The run, on the thread ---

void OutputThread::DropRun() {
    if (!isRunning_) {
        return;
    }
    isRunning_ = false;
    isDraining_ = false;
    idleSince_ = Clock::now();
    const qint64 neverHeardFrames = device_->Drop();
    if (neverHeardFrames >= 0) {
        core_.SetNeverHeard(neverHeardFrames);
    }
}

void OutputThread::UpdateHeard() {
    if (!isRunning_) {
        return;
    }
    const qint64 unheardFrames = device_->UnheardFrames();
    if (unheardFrames >= 0) {
        core_.SetUnheard(unheardFrames);
    }
}

void OutputThread::EndRunByItself(PlayerEvent event) {
    isRunning_ = false;
    isDraining_ = false;
    idleSince_ = Clock::now();
    raise_(currentRun_, event);
}

// False when the device has gone.
bool OutputThread::Fill() {
    qint64 room = device_->WritableFrames();
    while (room > 0 && !core_.queue.IsEmpty()) {
        chunk_.resize(static_cast<size_t>(room * core_.Channels()));
        const qint64 frames = core_.Pull(chunk_.data(), room);
        if (!device_->Write(chunk_.data(), frames)) {
            return false;
        }
        room -= frames;
    }
    return room >= 0 && device_->IsAlive();
}

void OutputThread::RaiseDueEvents() {
    if (core_.queue.TakeFirstRequest()) {
        core_.queue.NoteRequest();
        raise_(currentRun_, PlayerEvent::RequestBlock);
    }
    while (core_.queue.TakeEndedBlock()) {
        core_.queue.NoteRequest();
        raise_(currentRun_, PlayerEvent::BlockEnded);
    }
}

void OutputThread::Step() {
    if (!Fill()) {
        EndRunByItself(PlayerEvent::DeviceVanished);
        return;
    }
    UpdateHeard();
    RaiseDueEvents();
    if (core_.queue.IsExhausted()) {
        isDraining_ = true;
        if (device_->IsDrained()) {
            core_.SetUnheard(0);
            EndRunByItself(PlayerEvent::PlayEnded);
        }
    }
}

} // namespace kestrune
