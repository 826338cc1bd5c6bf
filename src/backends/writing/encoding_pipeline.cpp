#include "backends/writing/encoding_pipeline.h"

#include "app/failure_log.h"
#include "backends/formats/dither.h"
#include "backends/writing/rate_converter.h"
#include "components/pcm.h"

#include <algorithm>

namespace kestrune {

namespace {

// What is worked on at once stays in the processor's cache.
constexpr qint64 sliceFrames = 4096;
constexpr float floatScale = 32768.0F;

} // namespace

EncodingPipeline::EncodingPipeline(std::unique_ptr<SampleEncoder> encoder)
    : encoder_(std::move(encoder)), wanted_(encoder_->Input()) {}

EncodingPipeline::~EncodingPipeline() = default;

Outcome EncodingPipeline::Begin(QIODevice& out) {
    outcome_ = encoder_->Begin(out);
    return outcome_;
}

void EncodingPipeline::SetSource(const SampleShape& source) {
    if (!started_) {
        source_ = source;
    }
}

Outcome EncodingPipeline::Start() {
    started_ = true;
    if (source_.rateHz <= 0) {
        source_.rateHz = wanted_.rateHz;
    }
    if (source_.channels != 1 && source_.channels != 2) {
        source_.channels = wanted_.channels;
    }
    middleChannels_ = std::min(source_.channels, wanted_.channels);
    if (source_.rateHz != wanted_.rateHz) {
        converter_ = RateConverter::Make(source_.rateHz, wanted_.rateHz, middleChannels_);
        if (!converter_) {
            qCWarning(logCodecs) << "no way from" << source_.rateHz << "Hz to" << wanted_.rateHz << "Hz";
            return Outcome::NotSupported;
        }
    }
    return Outcome::Ok;
}

Outcome EncodingPipeline::Write(const QByteArray& block) {
    if (outcome_ == Outcome::Ok && !started_) {
        outcome_ = Start();
    }
    if (outcome_ != Outcome::Ok) {
        return outcome_;
    }
    const qint64 frame = frameBytes(source_.channels);
    const QByteArray whole = carry_.isEmpty() ? block : carry_ + block;
    const qint64 frames = whole.size() / frame;
    carry_ = whole.mid(frames * frame);
    const auto* samples = reinterpret_cast<const qint16*>(whole.constData());
    for (qint64 done = 0; done < frames && outcome_ == Outcome::Ok; done += sliceFrames) {
        outcome_ = WriteSlice(samples + done * source_.channels, std::min(frames - done, sliceFrames));
    }
    return outcome_;
}

Outcome EncodingPipeline::WriteSlice(const qint16* samples, qint64 frames) {
    if (!converter_ && !wanted_.takesFloats) {
        return WriteIntegers(samples, frames);
    }
    ToFloats(samples, frames);
    if (!converter_) {
        return WriteConverted(floats_);
    }
    if (!converter_->Convert(floats_.data(), frames, converted_)) {
        return Outcome::NotSupported;
    }
    return WriteConverted(converted_);
}

Outcome EncodingPipeline::WriteIntegers(const qint16* samples, qint64 frames) {
    if (source_.channels == wanted_.channels) {
        return encoder_->WriteIntegers(samples, frames);
    }
    const auto count = static_cast<size_t>(frames);
    integers_.resize(count * static_cast<size_t>(wanted_.channels));
    for (size_t frame = 0; frame < count; ++frame) {
        if (wanted_.channels == 1) {
            // The division rounds toward zero, and the sum of two samples fits an int.
            integers_[frame] = static_cast<qint16>((samples[2 * frame] + samples[2 * frame + 1]) / 2);
        } else {
            integers_[2 * frame] = samples[frame];
            integers_[2 * frame + 1] = samples[frame];
        }
    }
    return encoder_->WriteIntegers(integers_.data(), frames);
}

void EncodingPipeline::ToFloats(const qint16* samples, qint64 frames) {
    const auto count = static_cast<size_t>(frames * middleChannels_);
    floats_.resize(count);
    if (source_.channels == middleChannels_) {
        for (size_t at = 0; at < count; ++at) {
            floats_[at] = static_cast<float>(samples[at]) / floatScale;
        }
        return;
    }
    for (size_t at = 0; at < count; ++at) {
        floats_[at] = static_cast<float>(samples[2 * at] + samples[2 * at + 1]) / (2 * floatScale);
    }
}

// `copies` of each sample, so that both channels of a doubled one get the same noise.
void EncodingPipeline::Dither(const std::vector<float>& samples, int copies) {
    integers_.resize(samples.size() * static_cast<size_t>(copies));
    auto out = integers_.begin();
    for (const float sample : samples) {
        const qint16 value = DitheredSample(static_cast<double>(sample) * floatScale, ditheredSamples_++);
        out = std::fill_n(out, copies, value);
    }
}

Outcome EncodingPipeline::WriteConverted(const std::vector<float>& samples) {
    const qint64 frames = static_cast<qint64>(samples.size()) / middleChannels_;
    const int copies = wanted_.channels / middleChannels_;
    if (!wanted_.takesFloats) {
        Dither(samples, copies);
        return encoder_->WriteIntegers(integers_.data(), frames);
    }
    if (copies == 1) {
        return encoder_->WriteFloats(samples.data(), frames);
    }
    doubled_.clear();
    doubled_.reserve(samples.size() * 2);
    for (const float sample : samples) {
        doubled_.insert(doubled_.end(), 2, sample);
    }
    return encoder_->WriteFloats(doubled_.data(), frames);
}

Outcome EncodingPipeline::Finish() {
    if (outcome_ == Outcome::Ok && converter_) {
        outcome_ = converter_->Finish(converted_) ? WriteConverted(converted_) : Outcome::NotSupported;
    }
    if (outcome_ == Outcome::Ok) {
        outcome_ = encoder_->Finish();
    }
    return outcome_;
}

} // namespace kestrune
