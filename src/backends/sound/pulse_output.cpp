#include "backends/sound/pulse_output.h"

#include "app/failure_log.h"
#include "backends/sound/run_core.h"

#include <algorithm>
#include <pulse/pulseaudio.h>
#include <utility>

namespace kestrune {

namespace {

// How far the server may mix ahead, so that a stop is heard at once.
constexpr int mixAheadMs = 20;
// A server that does not answer for so long has gone.
constexpr pa_usec_t answerPatienceUs = 800 * PA_USEC_PER_MSEC;

void WakeWaiting(pa_threaded_mainloop* mainloop) {
    pa_threaded_mainloop_signal(mainloop, 0);
}

} // namespace

class PulseOutput::Lock {
public:
    explicit Lock(pa_threaded_mainloop* lockedLoop) : loop_(lockedLoop) { pa_threaded_mainloop_lock(loop_); }
    ~Lock() { pa_threaded_mainloop_unlock(loop_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    pa_threaded_mainloop* loop_;
};

OutputSource::Opened PulseOutput::Open(int sampleRateHz, int channels) {
    std::unique_ptr<PulseOutput> output(new PulseOutput(sampleRateHz, channels));
    if (output->mainloop_ == nullptr || pa_threaded_mainloop_start(output->mainloop_) < 0) {
        return {Outcome::DeviceFailed, nullptr};
    }
    Outcome outcome = Outcome::Ok;
    {
        const Lock lock(output->mainloop_);
        if (!output->Connect()) {
            const bool isRefused =
                output->context_ == nullptr || !PA_CONTEXT_IS_GOOD(pa_context_get_state(output->context_));
            outcome = isRefused ? Outcome::NotFound : Outcome::DeviceFailed;
        } else if (!output->OpenStream()) {
            outcome = Outcome::DeviceFailed;
        }
    }
    return {outcome, outcome == Outcome::Ok ? std::move(output) : nullptr};
}

PulseOutput::PulseOutput(int rateHz, int channelCount)
    : mainloop_(pa_threaded_mainloop_new()), sampleRateHz_(rateHz), channels_(channelCount) {}

PulseOutput::~PulseOutput() {
    if (mainloop_ == nullptr) {
        return;
    }
    pa_threaded_mainloop_stop(mainloop_);
    ForgetDrain();
    if (stream_ != nullptr) {
        pa_stream_disconnect(stream_);
        pa_stream_unref(stream_);
    }
    if (context_ != nullptr) {
        pa_context_disconnect(context_);
        pa_context_unref(context_);
    }
    pa_threaded_mainloop_free(mainloop_);
}

bool PulseOutput::Connect() {
    context_ = pa_context_new(pa_threaded_mainloop_get_api(mainloop_), "Kestrune");
    if (context_ == nullptr) {
        return false;
    }
    pa_context_set_state_callback(
        context_, [](pa_context*, void* loop) { WakeWaiting(static_cast<pa_threaded_mainloop*>(loop)); },
        mainloop_);
    if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        return Abandon("connect");
    }
    return WaitUntil([this] { return pa_context_get_state(context_) == PA_CONTEXT_READY; }) ||
           Abandon("connect");
}

bool PulseOutput::OpenStream() {
    const pa_sample_spec format{PA_SAMPLE_S16LE, static_cast<uint32_t>(sampleRateHz_),
                                static_cast<uint8_t>(channels_)};
    stream_ = pa_stream_new(context_, "Playback", &format, nullptr);
    if (stream_ == nullptr) {
        return Abandon("new stream");
    }
    pa_stream_set_state_callback(
        stream_, [](pa_stream*, void* loop) { WakeWaiting(static_cast<pa_threaded_mainloop*>(loop)); },
        mainloop_);
    pa_buffer_attr buffer{};
    buffer.maxlength = static_cast<uint32_t>(-1);
    buffer.tlength = static_cast<uint32_t>(pa_usec_to_bytes(deviceBufferMs * PA_USEC_PER_MSEC, &format));
    buffer.minreq = static_cast<uint32_t>(pa_usec_to_bytes(mixAheadMs * PA_USEC_PER_MSEC, &format));
    // One frame, and not 0: with 0 the server's clock runs on through a gap and what comes late is skipped.
    buffer.prebuf = static_cast<uint32_t>(pa_frame_size(&format));
    buffer.fragsize = static_cast<uint32_t>(-1);
    const auto flags = static_cast<pa_stream_flags_t>(
        PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_EARLY_REQUESTS);
    if (pa_stream_connect_playback(stream_, nullptr, &buffer, flags, nullptr, nullptr) < 0) {
        return Abandon("open stream");
    }
    return WaitUntil([this] { return pa_stream_get_state(stream_) == PA_STREAM_READY; }) ||
           Abandon("open stream");
}

bool PulseOutput::IsHealthy() const {
    return !hasGone_ && context_ != nullptr && PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)) &&
           (stream_ == nullptr || pa_stream_get_state(stream_) == PA_STREAM_UNCONNECTED ||
            PA_STREAM_IS_GOOD(pa_stream_get_state(stream_)));
}

bool PulseOutput::Abandon(const char* what) {
    qCDebug(logSound) << "sound server:" << what << pa_strerror(pa_context_errno(context_));
    hasGone_ = true;
    return false;
}

template <class Condition>
bool PulseOutput::WaitUntil(Condition isDone) {
    const pa_usec_t deadline = pa_rtclock_now() + answerPatienceUs;
    pa_time_event* const alarm = pa_context_rttime_new(
        context_, deadline,
        [](pa_mainloop_api*, pa_time_event*, const timeval*, void* loop) {
            WakeWaiting(static_cast<pa_threaded_mainloop*>(loop));
        },
        mainloop_);
    while (!isDone() && IsHealthy() && pa_rtclock_now() < deadline) {
        pa_threaded_mainloop_wait(mainloop_);
    }
    if (alarm != nullptr) {
        pa_threaded_mainloop_get_api(mainloop_)->time_free(alarm);
    }
    return isDone();
}

bool PulseOutput::Finish(pa_operation* operation) {
    if (operation == nullptr) { // the server has gone
        return Abandon("command");
    }
    pa_operation_set_state_callback(
        operation, [](pa_operation*, void* loop) { WakeWaiting(static_cast<pa_threaded_mainloop*>(loop)); },
        mainloop_);
    const bool isDone =
        WaitUntil([operation] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; }) &&
        pa_operation_get_state(operation) == PA_OPERATION_DONE;
    pa_operation_unref(operation);
    return isDone || Abandon("command");
}

void PulseOutput::ForgetDrain() {
    if (drain_ != nullptr) {
        pa_operation_cancel(drain_);
        pa_operation_unref(drain_);
        drain_ = nullptr;
    }
}

bool PulseOutput::IsAlive() {
    const Lock lock(mainloop_);
    return IsHealthy();
}

qint64 PulseOutput::WritableFrames() {
    const Lock lock(mainloop_);
    const size_t bytes = IsHealthy() ? pa_stream_writable_size(stream_) : static_cast<size_t>(-1);
    if (bytes == static_cast<size_t>(-1)) {
        return -1;
    }
    return static_cast<qint64>(bytes / sizeof(qint16)) / channels_;
}

bool PulseOutput::Write(const qint16* samples, qint64 frames) {
    const Lock lock(mainloop_);
    ForgetDrain();
    isDirty_ = true;
    isDrained_ = false;
    const size_t bytes = static_cast<size_t>(frames * channels_) * sizeof(qint16);
    return IsHealthy() && pa_stream_write(stream_, samples, bytes, nullptr, 0, PA_SEEK_RELATIVE) >= 0;
}

qint64 PulseOutput::UnheardFrames() {
    const Lock lock(mainloop_);
    pa_usec_t latencyUs = 0;
    int isNegative = 0;
    if (!IsHealthy() || pa_stream_get_latency(stream_, &latencyUs, &isNegative) < 0) {
        return -1;
    }
    return isNegative != 0 ? 0 : static_cast<qint64>(latencyUs) * sampleRateHz_ / 1000000;
}

// Corking makes the server stop taking bytes, and give back those that are mixed but can be unmixed; the
// queue's two ends then tell what is left. What it cannot give back is heard within mixAheadMs. PulseAudio is
// exact in this to the sample; PipeWire's server may lose up to one of its mixing steps. That one also loses
// the beginning of what follows a drain, hence the flush then, too.
qint64 PulseOutput::Drop() {
    const Lock lock(mainloop_);
    ForgetDrain();
    if (!isDirty_ || !IsHealthy()) {
        return IsHealthy() ? 0 : -1;
    }
    if (!Finish(pa_stream_cork(stream_, 1, nullptr, nullptr)) ||
        !Finish(pa_stream_update_timing_info(stream_, nullptr, nullptr))) {
        return -1;
    }
    const pa_timing_info* const timing = pa_stream_get_timing_info(stream_);
    const qint64 leftBytes = timing != nullptr ? timing->write_index - timing->read_index : 0;
    if (!Finish(pa_stream_flush(stream_, nullptr, nullptr)) ||
        !Finish(pa_stream_cork(stream_, 0, nullptr, nullptr))) {
        return -1;
    }
    const bool wasDrained = std::exchange(isDrained_, false);
    isDirty_ = false;
    return wasDrained ? 0 : std::max<qint64>(0, leftBytes) / static_cast<qint64>(sizeof(qint16)) / channels_;
}

bool PulseOutput::IsDrained() {
    const Lock lock(mainloop_);
    if (!isDirty_ || isDrained_) {
        return true;
    }
    if (!IsHealthy()) {
        return false;
    }
    if (drain_ == nullptr) {
        drain_ = pa_stream_drain(stream_, nullptr, nullptr);
    }
    if (drain_ == nullptr || pa_operation_get_state(drain_) == PA_OPERATION_RUNNING) {
        return false;
    }
    ForgetDrain();
    isDrained_ = true;
    return true;
}

} // namespace kestrune
