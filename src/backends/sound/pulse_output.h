// An output by libpulse, to PulseAudio or to PipeWire's server of the same protocol.
//
// libasound reaches these servers too, but cannot tell how many samples the server has already taken when
// sound is stopped: its delay is a time, off by as much as the server mixes ahead. The protocol itself counts
// bytes, which makes pause and resume exact to the sample.
#pragma once

#include "backends/sound/output_device.h"

#include <memory>

// The library's own handles, so that its headers stay out of this one.
struct pa_threaded_mainloop;
struct pa_context;
struct pa_stream;
struct pa_operation;

namespace kestrune {

class PulseOutput : public OutputDevice {
public:
    // The default sink of the user's server; none is started. NotFound, at once, where no server takes the
    // connection; DeviceFailed when there is one that does not answer or has nothing to play on.
    static OutputSource::Opened Open(int sampleRateHz, int channels);
    ~PulseOutput() override;

    bool IsAlive() override;
    qint64 WritableFrames() override;
    bool Write(const qint16* samples, qint64 frames) override;
    qint64 UnheardFrames() override;
    qint64 Drop() override;
    bool IsDrained() override;

private:
    class Lock;
    PulseOutput(int sampleRateHz, int channels);
    // All of these under the lock.
    bool Connect();
    bool OpenStream();
    bool IsHealthy() const;
    // Waits until `isDone` answers true, the server fails or has no answer for too long.
    template <class Condition>
    bool WaitUntil(Condition isDone);
    bool Finish(pa_operation* operation);
    bool Abandon(const char* what);
    void ForgetDrain();

    pa_threaded_mainloop* mainloop_ = nullptr;
    pa_context* context_ = nullptr;
    pa_stream* stream_ = nullptr;
    pa_operation* drain_ = nullptr;
    int sampleRateHz_;
    int channels_;
    bool hasGone_ = false;
    bool isDirty_ = false;   // holds frames that may not have been heard, or was drained
    bool isDrained_ = false; // all that it held was heard
};

} // namespace kestrune
