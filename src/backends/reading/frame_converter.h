// Decoded audio of any sample format and channel count turned into 16-bit samples of one or two channels.
#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/samplefmt.h>
}

struct SwrContext;

namespace kestrune {

// Decoded audio as a decoder holds it. The pointers are the caller's.
struct RawFrames {
    const uint8_t* const* planes = nullptr; // one, or one a channel for a planar format
    AVSampleFormat format = AV_SAMPLE_FMT_NONE;
    const AVChannelLayout* layout = nullptr;
    int frames = 0;
};

// 16-bit samples pass untouched, 8-bit ones are widened, deeper ones are dithered. Other channel counts than
// asked for are mixed by the matrix of libswresample, scaled so that it cannot clip.
class FrameConverter {
public:
    // `channels` is 1 or 2, of the output.
    explicit FrameConverter(int channels);
    ~FrameConverter();
    FrameConverter(const FrameConverter&) = delete;
    FrameConverter& operator=(const FrameConverter&) = delete;

    // Appends the frames from `from` on, `count` of them, to `out`. `firstFrame` is the place in the file of
    // the first one appended. False if this audio can't be converted; nothing is appended then.
    bool Convert(const RawFrames& input, int from, int count, qint64 firstFrame, std::vector<qint16>& out);

private:
    bool Mix(const RawFrames& input);
    bool PrepareMixer(const RawFrames& input);

    int channels_;
    SwrContext* mixer_ = nullptr;
    AVSampleFormat mixerFormat_ = AV_SAMPLE_FMT_NONE;
    AVChannelLayout mixerLayout_ = {};
    std::vector<float> mixed_; // interleaved, of channels_
};

} // namespace kestrune
