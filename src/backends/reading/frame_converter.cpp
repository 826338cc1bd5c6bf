#include "backends/reading/frame_converter.h"

#include "backends/formats/dither.h"

#include <cstring>

extern "C" {
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace kestrune {

namespace {

// More than libswresample takes.
constexpr int mostChannels = 64;

// Reaches the sample of one frame and channel, whether planes or interleaved.
template <typename Sample>
class SampleView {
public:
    SampleView(const uint8_t* const* planes, bool planar, int channels)
        : planes_(planes), planar_(planar), channels_(channels) {}
    Sample At(int frame, int channel) const {
        const uint8_t* const base = planar_ ? planes_[channel] : planes_[0];
        const qint64 index = planar_ ? frame : static_cast<qint64>(frame) * channels_ + channel;
        Sample sample;
        std::memcpy(&sample, base + index * static_cast<qint64>(sizeof(Sample)), sizeof(Sample));
        return sample;
    }

private:
    const uint8_t* const* planes_;
    bool planar_;
    int channels_;
};

struct Span {
    int from = 0;
    int count = 0;
    int channels = 0;
    qint64 firstFrame = 0;
};

template <typename Sample, typename To16>
void Append(const uint8_t* const* planes, bool planar, const Span& span, std::vector<qint16>& out,
            To16 to16) {
    const SampleView<Sample> view(planes, planar, span.channels);
    auto index = static_cast<quint64>(span.firstFrame * span.channels);
    size_t at = out.size();
    out.resize(at + static_cast<size_t>(span.count) * static_cast<size_t>(span.channels));
    for (int frame = span.from; frame < span.from + span.count; ++frame) {
        for (int channel = 0; channel < span.channels; ++channel) {
            out[at++] = to16(view.At(frame, channel), index++);
        }
    }
}

template <typename Sample>
void AppendDithered(const uint8_t* const* planes, bool planar, const Span& span, std::vector<qint16>& out,
                    double scale) {
    Append<Sample>(planes, planar, span, out, [scale](Sample sample, quint64 index) {
        return DitheredSample(static_cast<double>(sample) * scale, index);
    });
}

void AppendUnchanged(const uint8_t* const* planes, bool planar, const Span& span, std::vector<qint16>& out) {
    if (planar && span.channels > 1) {
        Append<qint16>(planes, planar, span, out, [](qint16 sample, quint64) { return sample; });
        return;
    }
    const size_t frameBytes = static_cast<size_t>(span.channels) * sizeof(qint16);
    const size_t at = out.size();
    out.resize(at + static_cast<size_t>(span.count) * static_cast<size_t>(span.channels));
    std::memcpy(out.data() + at, planes[0] + static_cast<size_t>(span.from) * frameBytes,
                static_cast<size_t>(span.count) * frameBytes);
}

bool AppendAs16Bit(const RawFrames& input, const Span& span, std::vector<qint16>& out) {
    const bool planar = av_sample_fmt_is_planar(input.format) != 0;
    switch (av_get_packed_sample_fmt(input.format)) {
    case AV_SAMPLE_FMT_U8:
        Append<quint8>(input.planes, planar, span, out,
                       [](quint8 sample, quint64) { return static_cast<qint16>((sample - 128) * 256); });
        return true;
    case AV_SAMPLE_FMT_S16:
        AppendUnchanged(input.planes, planar, span, out);
        return true;
    case AV_SAMPLE_FMT_S32:
        AppendDithered<qint32>(input.planes, planar, span, out, 1.0 / 65536.0);
        return true;
    case AV_SAMPLE_FMT_S64:
        AppendDithered<qint64>(input.planes, planar, span, out, 1.0 / 281474976710656.0);
        return true;
    case AV_SAMPLE_FMT_FLT:
        AppendDithered<float>(input.planes, planar, span, out, 32768.0);
        return true;
    case AV_SAMPLE_FMT_DBL:
        AppendDithered<double>(input.planes, planar, span, out, 32768.0);
        return true;
    default:
        return false;
    }
}

} // namespace

FrameConverter::FrameConverter(int channels) : channels_(channels) {}

FrameConverter::~FrameConverter() {
    swr_free(&mixer_);
    av_channel_layout_uninit(&mixerLayout_);
}

bool FrameConverter::PrepareMixer(const RawFrames& input) {
    if (mixer_ != nullptr && mixerFormat_ == input.format &&
        av_channel_layout_compare(&mixerLayout_, input.layout) == 0) {
        return true;
    }
    swr_free(&mixer_);
    AVChannelLayout from = {};
    if (input.layout->order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&from, input.layout->nb_channels);
    } else {
        av_channel_layout_copy(&from, input.layout);
    }
    AVChannelLayout to = {};
    av_channel_layout_default(&to, channels_);
    // The rate takes no part: nothing is resampled.
    constexpr int anyRateHz = 48000;
    int error = swr_alloc_set_opts2(&mixer_, &to, AV_SAMPLE_FMT_FLT, anyRateHz, &from, input.format,
                                    anyRateHz, 0, nullptr);
    av_channel_layout_uninit(&from);
    if (error >= 0) {
        // Without this a float output is not scaled, and loud channels would clip.
        av_opt_set_double(mixer_, "rematrix_maxval", 1.0, 0);
        av_opt_set_sample_fmt(mixer_, "internal_sample_fmt", AV_SAMPLE_FMT_FLTP, 0);
        error = swr_init(mixer_);
    }
    if (error < 0) {
        swr_free(&mixer_);
        return false;
    }
    mixerFormat_ = input.format;
    av_channel_layout_copy(&mixerLayout_, input.layout);
    return true;
}

bool FrameConverter::Mix(const RawFrames& input) {
    if (!PrepareMixer(input)) {
        return false;
    }
    mixed_.resize(static_cast<size_t>(input.frames) * static_cast<size_t>(channels_));
    auto* target = reinterpret_cast<uint8_t*>(mixed_.data());
    // libswresample 4.7 takes planes that it does not write to without const inside.
    auto** source = const_cast<const uint8_t**>(input.planes);
    return swr_convert(mixer_, &target, input.frames, source, input.frames) == input.frames;
}

bool FrameConverter::Convert(const RawFrames& input, int from, int count, qint64 firstFrame,
                             std::vector<qint16>& out) {
    const int inputChannels = input.layout->nb_channels;
    if (inputChannels < 1 || inputChannels > mostChannels) {
        return false;
    }
    const Span span{from, count, channels_, firstFrame};
    if (inputChannels == channels_) {
        return AppendAs16Bit(input, span, out);
    }
    if (!Mix(input)) {
        return false;
    }
    const auto* plane = reinterpret_cast<const uint8_t*>(mixed_.data());
    AppendDithered<float>(&plane, false, span, out, 32768.0);
    return true;
}

} // namespace kestrune
