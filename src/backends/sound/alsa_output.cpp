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
    : pcm(openPcm), silence(static_cast<size_t>(padFrames * channels)), silenceFrames(padFrames) {}

AlsaOutput::~AlsaOutput() {
    snd_pcm_drop(pcm);
    snd_pcm_close(pcm);
}

bool AlsaOutput::SetParameters(int sampleRateHz, int channels) {
    snd_pcm_hw_params_t* hardware = nullptr;
    snd_pcm_hw_params_alloca(&hardware);
    unsigned periodUs = periodMs * 1000;
    unsigned bufferUs = deviceBufferMs * 1000;
    int direction = 0;
    int error = snd_pcm_hw_params_any(pcm, hardware);
    const auto then = [&error](int next) { error = error < 0 ? error : next; };
    then(snd_pcm_hw_params_set_access(pcm, hardware, SND_PCM_ACCESS_RW_INTERLEAVED));
    then(snd_pcm_hw_params_set_format(pcm, hardware, SND_PCM_FORMAT_S16_LE));
    then(snd_pcm_hw_params_set_channels(pcm, hardware, static_cast<unsigned>(channels)));
    then(snd_pcm_hw_params_set_rate(pcm, hardware, static_cast<unsigned>(sampleRateHz), 0));
    then(snd_pcm_hw_params_set_period_time_near(pcm, hardware, &periodUs, &direction));
    then(snd_pcm_hw_params_set_buffer_time_near(pcm, hardware, &bufferUs, &direction));
    then(snd_pcm_hw_params(pcm, hardware));
    snd_pcm_sw_params_t* software = nullptr;
    snd_pcm_sw_params_alloca(&software);
    then(snd_pcm_sw_params_current(pcm, software));
    then(snd_pcm_sw_params_set_start_threshold(pcm, software, 1));
    then(snd_pcm_sw_params(pcm, software));
    then(snd_pcm_prepare(pcm));
    if (error < 0) {
        qCDebug(logSound) << "format refused" << sampleRateHz << channels << snd_strerror(error);
    }
    return error >= 0;
}

// After a failed call. A server that has gone fails here too, and for ever.
bool AlsaOutput::Recover(int error) {
    qCDebug(logSound) << "recovering from" << snd_strerror(error);
    hasGone = hasGone || snd_pcm_recover(pcm, error, 1) < 0;
    return !hasGone;
}

qint64 AlsaOutput::WritableFrames() {
    if (hasGone) {
        return -1;
    }
    snd_pcm_sframes_t frames = snd_pcm_avail_update(pcm);
    if (frames < 0 && Recover(static_cast<int>(frames))) {
        frames = snd_pcm_avail_update(pcm);
    }
    hasGone = hasGone || frames < 0 || snd_pcm_state(pcm) == SND_PCM_STATE_DISCONNECTED;
    return hasGone ? -1 : frames;
}

bool AlsaOutput::WriteAll(const qint16* samples, qint64 frames) {
    const qint64 channels = static_cast<qint64>(silence.size()) / silenceFrames;
    int failures = 0;
    while (frames > 0 && !hasGone) {
        const snd_pcm_sframes_t taken = snd_pcm_writei(pcm, samples, static_cast<snd_pcm_uframes_t>(frames));
        if (taken > 0) {
            samples += taken * channels;
            frames -= taken;
            failures = 0;
        } else if (taken == -EAGAIN || taken == 0) {
            // What was announced as writable is, within a period.
            snd_pcm_wait(pcm, static_cast<int>(2 * periodMs));
            hasGone = ++failures > deviceBufferMs / static_cast<int>(periodMs);
        } else {
            hasGone = !Recover(static_cast<int>(taken)) || ++failures > 2;
        }
    }
    return !hasGone;
}

bool AlsaOutput::Write(const qint16* samples, qint64 frames) {
    paddedFrames = 0;
    writtenFrames += frames;
    return WriteAll(samples, frames);
}

qint64 AlsaOutput::UnheardFrames() {
    snd_pcm_sframes_t delay = 0;
    if (hasGone || snd_pcm_state(pcm) == SND_PCM_STATE_XRUN) {
        return hasGone ? -1 : 0;
    }
    if (snd_pcm_delay(pcm, &delay) < 0) {
        return -1;
    }
    return std::clamp<qint64>(delay - paddedFrames, 0, writtenFrames);
}

qint64 AlsaOutput::Drop() {
    const qint64 unheardFrames = std::max<qint64>(0, UnheardFrames());
    if (writtenFrames > 0 && !hasGone) {
        hasGone = snd_pcm_drop(pcm) < 0 || snd_pcm_prepare(pcm) < 0;
    }
    writtenFrames = 0;
    paddedFrames = 0;
    return hasGone ? -1 : unheardFrames;
}

// By silence behind the last frame, and not by draining, which would block and could not go on when a block
// comes late after all.
bool AlsaOutput::IsDrained() {
    if (writtenFrames == 0 || snd_pcm_state(pcm) == SND_PCM_STATE_XRUN) {
        return true;
    }
    snd_pcm_sframes_t delay = 0;
    if (hasGone || snd_pcm_delay(pcm, &delay) < 0) {
        return false;
    }
    // A server behind the library tells a delay that may be short by some of its mixing step: some of the
    // silence is to be heard, too.
    if (paddedFrames > 0 && delay <= paddedFrames - silenceFrames / 2) {
        return true;
    }
    const qint64 wantedFrames = paddedFrames == 0 ? silenceFrames : silenceFrames - delay;
    const qint64 frames = std::min({wantedFrames, silenceFrames, WritableFrames()});
    if (frames > 0 && WriteAll(silence.data(), frames)) {
        paddedFrames += frames;
    }
    return false;
}

} // namespace kestrune
