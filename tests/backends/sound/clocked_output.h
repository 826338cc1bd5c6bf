// A device without sound that takes frames at the pace of the clock, some times faster than a real one.
#pragma once

#include "backends/sound/output_device.h"
#include "backends/sound/run_core.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

namespace kestrune {

// What the test and the device share; the test may use it on its own thread.
struct ClockedOutputState {
    std::atomic<bool> hasGone = false;
    std::atomic<qint64> clockIsAheadFrames = 0; // of what was heard, while it plays
    std::atomic<int> opened = 0;                // ever
    std::atomic<int> open = 0;                  // now
    std::mutex mutex;
    std::vector<qint16> heard; // under the mutex; everything, of all devices behind one another
};

class ClockedOutput : public OutputDevice {
public:
    ClockedOutput(std::shared_ptr<ClockedOutputState> shared, int sampleRateHz, int channelCount)
        : state(std::move(shared)),
          framesPerSecond(speed * sampleRateHz),
          channels(channelCount),
          roomFrames(static_cast<qint64>(sampleRateHz) * deviceBufferMs / 1000) {
        ++state->opened;
        ++state->open;
    }
    ~ClockedOutput() override { --state->open; }

    bool IsAlive() override { return !state->hasGone; }
    qint64 WritableFrames() override {
        Play();
        return IsAlive() ? roomFrames - QueuedFrames() : -1;
    }
    bool Write(const qint16* samples, qint64 frames) override {
        Play();
        queued.insert(queued.end(), samples, samples + frames * channels);
        return IsAlive();
    }
    qint64 UnheardFrames() override {
        Play();
        return std::max<qint64>(0, QueuedFrames() - state->clockIsAheadFrames);
    }
    qint64 Drop() override {
        Play();
        const qint64 frames = QueuedFrames();
        queued.clear();
        return IsAlive() ? frames : -1;
    }
    bool IsDrained() override {
        Play();
        return queued.empty();
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr double speed = 4;

    qint64 QueuedFrames() const { return static_cast<qint64>(queued.size()) / channels; }
    void Play() {
        const Clock::time_point now = Clock::now();
        const auto due =
            static_cast<qint64>(std::chrono::duration<double>(now - since).count() * framesPerSecond);
        if (due == 0 && !queued.empty()) {
            return;
        }
        since = now;
        const auto end = queued.begin() + std::min(due, QueuedFrames()) * channels;
        const std::lock_guard lock(state->mutex);
        state->heard.insert(state->heard.end(), queued.begin(), end);
        queued.erase(queued.begin(), end);
    }

    std::shared_ptr<ClockedOutputState> state;
    double framesPerSecond;
    int channels;
    qint64 roomFrames;
    std::vector<qint16> queued;
    Clock::time_point since = Clock::now();
};

// One device.
class ClockedOutputs : public OutputSource {
public:
    explicit ClockedOutputs(std::shared_ptr<ClockedOutputState> shared) : state(std::move(shared)) {}

    int Count(int) override { return state->hasGone ? 0 : 1; }
    QString Name(int index) override { return index == 0 ? QStringLiteral("Clocked") : QString(); }
    Opened Open(int index, int sampleRateHz, int channels) override {
        if (index != 0 || state->hasGone) {
            return {Outcome::DeviceFailed, nullptr};
        }
        return {Outcome::Ok, std::make_unique<ClockedOutput>(state, sampleRateHz, channels)};
    }

private:
    std::shared_ptr<ClockedOutputState> state;
};

} // namespace kestrune
