// An output by libasound.
#pragma once

#include "backends/sound/output_device.h"

#include <QByteArray>
#include <vector>

// The library's own handle, so that its header stays out of this one.
using snd_pcm_t = struct _snd_pcm; // NOLINT(bugprone-reserved-identifier): the library's name

namespace kestrune {

class AlsaOutput : public OutputDevice {
public:
    // `pcmName` as libasound knows it: "default", "plughw:0". NotSupported for a refused format.
    static OutputSource::Opened Open(const QByteArray& pcmName, int sampleRateHz, int channels);
    ~AlsaOutput() override;

    bool IsAlive() override { return !hasGone_; }
    qint64 WritableFrames() override;
    bool Write(const qint16* samples, qint64 frames) override;
    qint64 UnheardFrames() override;
    qint64 Drop() override;
    bool IsDrained() override;

private:
    AlsaOutput(snd_pcm_t* openPcm, int channels, qint64 padFrames);
    bool SetParameters(int sampleRateHz, int channels);
    bool Recover(int error);
    bool WriteAll(const qint16* samples, qint64 frames);

    snd_pcm_t* pcm_;
    std::vector<qint16> silence_; // what keeps the device running until the last frame was heard
    qint64 silenceFrames_;
    qint64 paddedFrames_ = 0; // silence written behind the last frame
    qint64 writtenFrames_ = 0;
    bool hasGone_ = false;
};

} // namespace kestrune
