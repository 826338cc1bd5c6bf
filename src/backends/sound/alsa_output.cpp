#include "backends/sound/alsa_output.h"

#include "app/failure_log.h"
#include "backends/sound/run_core.h"

#include <algorithm>
#include <alsa/asoundlib.h>
#include <memory>

namespace kestrune {

namespace {

constexpr unsigned periodMs = 10;
// The silence behind the end is topped up to this, well above the time between two looks.
constexpr int padMs = 40;

} // namespace

OutputSource::Opened AlsaOutput::Open(const QByteArray& pcmName, int sampleRateHz, int channels) {
    snd_pcm_t* pcm = nullptr;
    int error = snd_pcm_open(&pcm, pcmName.constData(), SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK);
    if (error == -ENOENT) {
        // The library reads its configuration once, and what "default" is depends on the server that ran
        // then.
        snd_config_update_free_global();
        error = snd_pcm_open(&pcm, pcmName.constData(), SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK);
    }
    if (error < 0) {
        qCDebug(logSound) << "cannot open" << pcmName << snd_strerror(error);
        return {Outcome::DeviceFailed, nullptr};
    }
    std::unique_ptr<AlsaOutput> output(
        new AlsaOutput(pcm, channels, static_cast<qint64>(sampleRateHz) * padMs / 1000));
    if (!output->SetParameters(sampleRateHz, channels)) {
        return {Outcome::NotSupported, nullptr};
    }
    return {Outcome::Ok, std::move(output)};
}

AlsaOutput::AlsaOutput(snd_pcm_t* openPcm, int channels, qint64 padFrames)
    : pcm_(openPcm), silence_(static_cast<size_t>(padFrames * channels)), silenceFrames_(padFrames) {}

AlsaOutput::~AlsaOutput() {
    snd_pcm_drop(pcm_);
    snd_pcm_close(pcm_);
}

bool AlsaOutput::SetParameters(int sampleRateHz, int channels) {
    snd_pcm_hw_params_t* hardware = nullptr;
    snd_pcm_hw_params_alloca(&hardware);
    unsigned periodUs = periodMs * 1000;
    unsigned bufferUs = deviceBufferMs * 1000;
    int direction = 0;
    int error = snd_pcm_hw_params_any(pcm_, hardware);
    const auto then = [&error](int next) { error = error < 0 ? error : next; };
    then(snd_pcm_hw_params_set_access(pcm_, hardware, SND_PCM_ACCESS_RW_INTERLEAVED));
    then(snd_pcm_hw_params_set_format(pcm_, hardware, SND_PCM_FORMAT_S16_LE));
    then(snd_pcm_hw_params_set_channels(pcm_, hardware, static_cast<unsigned>(channels)));
    then(snd_pcm_hw_params_set_rate(pcm_, hardware, static_cast<unsigned>(sampleRateHz), 0));
    then(snd_pcm_hw_params_set_period_time_near(pcm_, hardware, &periodUs, &direction));
    then(snd_pcm_hw_params_set_buffer_time_near(pcm_, hardware, &bufferUs, &direction));
    then(snd_pcm_hw_params(pcm_, hardware));
    snd_pcm_sw_params_t* software = nullptr;
    snd_pcm_sw_params_alloca(&software);
    then(snd_pcm_sw_params_current(pcm_, software));
    then(snd_pcm_sw_params_set_start_threshold(pcm_, software, 1));
    then(snd_pcm_sw_params(pcm_, software));
    then(snd_pcm_prepare(pcm_));
    if (error < 0) {
        qCDebug(logSound) << "format refused" << sampleRateHz << channels << snd_strerror(error);
    }
    return error >= 0;
}

// After a failed call. A server that has gone fails here too, and for ever.
bool AlsaOutput::Recover(int error) {
    qCDebug(logSound) << "recovering from" << snd_strerror(error);
    hasGone_ = hasGone_ || snd_pcm_recover(pcm_, error, 1) < 0;
    return !hasGone_;
}

qint64 AlsaOutput::WritableFrames() {
    if (hasGone_) {
        return -1;
    }
    snd_pcm_sframes_t frames = snd_pcm_avail_update(pcm_);
    if (frames < 0 && Recover(static_cast<int>(frames))) {
        frames = snd_pcm_avail_update(pcm_);
    }
    hasGone_ = hasGone_ || frames < 0 || snd_pcm_state(pcm_) == SND_PCM_STATE_DISCONNECTED;
    return hasGone_ ? -1 : frames;
}

bool AlsaOutput::WriteAll(const qint16* samples, qint64 frames) {
    const qint64 channels = static_cast<qint64>(silence_.size()) / silenceFrames_;
    int failures = 0;
    while (frames > 0 && !hasGone_) {
        const snd_pcm_sframes_t taken = snd_pcm_writei(pcm_, samples, static_cast<snd_pcm_uframes_t>(frames));
        if (taken > 0) {
            samples += taken * channels;
            frames -= taken;
            failures = 0;
        } else if (taken == -EAGAIN || taken == 0) {
            // What was announced as writable is, within a period.
            snd_pcm_wait(pcm_, static_cast<int>(2 * periodMs));
            hasGone_ = ++failures > deviceBufferMs / static_cast<int>(periodMs);
        } else {
            hasGone_ = !Recover(static_cast<int>(taken)) || ++failures > 2;
        }
    }
    return !hasGone_;
}

bool AlsaOutput::Write(const qint16* samples, qint64 frames) {
    paddedFrames_ = 0;
    writtenFrames_ += frames;
    return WriteAll(samples, frames);
}

qint64 AlsaOutput::UnheardFrames() {
    snd_pcm_sframes_t delay = 0;
    if (hasGone_ || snd_pcm_state(pcm_) == SND_PCM_STATE_XRUN) {
        return hasGone_ ? -1 : 0;
    }
    if (snd_pcm_delay(pcm_, &delay) < 0) {
        return -1;
    }
    return std::clamp<qint64>(delay - paddedFrames_, 0, writtenFrames_);
}

qint64 AlsaOutput::Drop() {
    const qint64 unheardFrames = std::max<qint64>(0, UnheardFrames());
    if (writtenFrames_ > 0 && !hasGone_) {
        hasGone_ = snd_pcm_drop(pcm_) < 0 || snd_pcm_prepare(pcm_) < 0;
    }
    writtenFrames_ = 0;
    paddedFrames_ = 0;
    return hasGone_ ? -1 : unheardFrames;
}

// By silence behind the last frame, and not by draining, which would block and could not go on when a block
// comes late after all.
bool AlsaOutput::IsDrained() {
    if (writtenFrames_ == 0 || snd_pcm_state(pcm_) == SND_PCM_STATE_XRUN) {
        return true;
    }
    snd_pcm_sframes_t delay = 0;
    if (hasGone_ || snd_pcm_delay(pcm_, &delay) < 0) {
        return false;
    }
    // A server behind the library tells a delay that may be short by some of its mixing step: some of the
    // silence is to be heard, too.
    if (paddedFrames_ > 0 && delay <= paddedFrames_ - silenceFrames_ / 2) {
        return true;
    }
    const qint64 wantedFrames = paddedFrames_ == 0 ? silenceFrames_ : silenceFrames_ - delay;
    const qint64 frames = std::min({wantedFrames, silenceFrames_, WritableFrames()});
    if (frames > 0 && WriteAll(silence_.data(), frames)) {
        paddedFrames_ += frames;
    }
    return false;
}

} // namespace kestrune
