#include "backends/writing/rate_converter.h"

#include <algorithm>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace kestrune {

namespace {

// Bits to which the engine's filter holds: images come to about -140 dB.
constexpr int filterBits = 24;
// The engine gives its output in bursts; this is beyond the longest.
constexpr qint64 burstFrames = 16384;
// Of the output of one step.
constexpr qint64 mostFramesAtOnce = 262144;

} // namespace

RateConverter::RateConverter(SwrContext* engine, int fromHz, int toHz, int channels)
    : engine_(engine), fromHz_(fromHz), toHz_(toHz), channels_(channels) {}

RateConverter::~RateConverter() {
    swr_free(&engine_);
}

std::unique_ptr<RateConverter> RateConverter::Make(int fromHz, int toHz, int channels) {
    AVChannelLayout layout = {};
    av_channel_layout_default(&layout, channels);
    SwrContext* engine = nullptr;
    int error = swr_alloc_set_opts2(&engine, &layout, AV_SAMPLE_FMT_FLT, toHz, &layout, AV_SAMPLE_FMT_FLT,
                                    fromHz, 0, nullptr);
    av_channel_layout_uninit(&layout);
    if (error >= 0) {
        av_opt_set_int(engine, "resampler", SWR_ENGINE_SOXR, 0);
        av_opt_set_double(engine, "precision", filterBits, 0);
        error = swr_init(engine);
    }
    if (error < 0) {
        swr_free(&engine);
        return nullptr;
    }
    return std::unique_ptr<RateConverter>(new RateConverter(engine, fromHz, toHz, channels));
}

qint64 RateConverter::WholeFrames() const {
    return (takenFrames_ * toHz_ + fromHz_ / 2) / fromHz_;
}

// Appends to `out`. Without samples the engine gives what it held back.
bool RateConverter::Run(const float* samples, int frames, std::vector<float>& out, qint64& got) {
    const qint64 room = static_cast<qint64>(frames) * toHz_ / fromHz_ + burstFrames;
    const size_t before = out.size();
    out.resize(before + static_cast<size_t>(room * channels_));
    auto* target = reinterpret_cast<uint8_t*>(out.data() + before);
    const auto* source = reinterpret_cast<const uint8_t*>(samples);
    const int converted =
        swr_convert(engine_, &target, static_cast<int>(room), samples != nullptr ? &source : nullptr, frames);
    got = std::max(converted, 0);
    out.resize(before + static_cast<size_t>(got * channels_));
    givenFrames_ += got;
    return converted >= 0;
}

bool RateConverter::Convert(const float* samples, qint64 frames, std::vector<float>& out) {
    const qint64 stepFrames = std::clamp<qint64>(mostFramesAtOnce * fromHz_ / toHz_, 1, mostFramesAtOnce);
    out.clear();
    for (qint64 done = 0; done < frames;) {
        const qint64 part = std::min(frames - done, stepFrames);
        takenFrames_ += part;
        qint64 got = 0;
        if (!Run(samples + done * channels_, static_cast<int>(part), out, got)) {
            return false;
        }
        done += part;
    }
    return true;
}

bool RateConverter::Finish(std::vector<float>& out) {
    out.clear();
    qint64 got = 0;
    do {
        if (!Run(nullptr, 0, out, got)) {
            return false;
        }
    } while (got > 0 && givenFrames_ < WholeFrames());
    // The engine rounds the length its own way: a frame of the tail may be missing or left over.
    const qint64 tailFrames = static_cast<qint64>(out.size()) / channels_ + WholeFrames() - givenFrames_;
    out.resize(static_cast<size_t>(std::max<qint64>(tailFrames, 0) * channels_), 0.0F);
    return true;
}

} // namespace kestrune
