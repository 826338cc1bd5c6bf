// The thread that keeps the device filled. Everything about a run is done on it, by jobs that the window
// thread sends; only questions about what was heard are answered on the window thread itself, under a lock.
#pragma once

#include "backends/sound/block_player.h"
#include "backends/sound/output_device.h"
#include "backends/sound/run_core.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace kestrune {

// All public calls on the window thread. Those that return a value wait for the thread, or for its lock,
// which takes as long as a device call, since the thread never waits for sound.
class OutputThread {
public:
    // Called on the thread, with the number of the run that the event belongs to.
    using EventHandler = std::function<void(quint64 run, PlayerEvent event)>;

    struct Position {
        qint64 heardBytes = 0;
        qint64 heardFrames = 0;
        Levels levels;
    };

    OutputThread(std::unique_ptr<OutputSource> outputSource, EventHandler eventHandler);
    ~OutputThread();
    OutputThread(const OutputThread&) = delete;
    OutputThread& operator=(const OutputThread&) = delete;

    int DeviceCount();
    QString DeviceName(int index);
    bool IsDeviceUsable(int index, int sampleRateHz, int channels);

    // Drops a run that goes on, then starts run number `run`.
    Outcome Begin(int deviceIndex, int sampleRateHz, int channels, quint64 run);
    // The run goes on as number `run`.
    void Clear(quint64 run);
    // Ends the run; returns the bytes that were heard of it.
    qint64 End();
    // Of the run, or of the last one.
    Position QueryPosition();
    qint64 HeardBytes();
    QList<qint16> PlayedBlock(int count);

    void Push(const QByteArray& block, quint64 run);
    void NoteRequest(quint64 run);
    void NoteAnswer(bool wroteBlock, quint64 run);
    void SetVolume(qint32 volume);
    void EnableEqualizer(bool isEnabled);
    void SetEqualizer(const EqualizerGains& gainsDb);

private:
    using Clock = std::chrono::steady_clock;
    using Job = std::function<void()>;
    struct DeviceKey {
        int index = -1;
        int sampleRateHz = 0;
        int channels = 0;
        bool operator==(const DeviceKey&) const = default;
    };

    void Post(Job job);
    void PostAndWait(const Job& job);
    // Calls it on the caller's thread, with what was heard up to date.
    void Ask(const Job& question);
    void RunJobs();
    void Loop();
    std::optional<Clock::duration> Rest() const;

    void CloseDevice();
    Outcome OpenDevice(const DeviceKey& key);
    void DropRun();
    void UpdateHeard();
    void Step();
    bool Fill();
    void RaiseDueEvents();
    void EndRunByItself(PlayerEvent event);

    // Between the threads, under the mutex.
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Job> jobs_;
    bool isEnding_ = false;

    // Held by whoever works with the run. Taken before `mutex_`.
    std::mutex stateMutex_;

    // Of the run, under stateMutex_.
    std::unique_ptr<OutputSource> source_;
    EventHandler raise_;
    std::unique_ptr<OutputDevice> device_;
    DeviceKey deviceKey_;
    RunCore core_;
    std::vector<qint16> chunk_;
    quint64 currentRun_ = 0;
    bool isRunning_ = false;
    bool isDraining_ = false;
    Clock::time_point idleSince_;

    std::thread thread_; // last, so that it finds all of the above
};

} // namespace kestrune
