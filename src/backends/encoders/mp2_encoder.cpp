#include "backends/encoders/mp2_encoder.h"

#include <QIODevice>

#include <twolame.h>

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace kestrune {

namespace {

constexpr int bitsPerKbit = 1000;
constexpr int storedBits = 16;
constexpr int framesAtOnce = 16 * TWOLAME_SAMPLES_PER_FRAME;
// The longest frame is 384 kbit/s at 32 kHz; one more than whole ones may come.
constexpr size_t codedBytesAtOnce = 17 * 1728;
// The filter bank gives a sample so many later, and the end of the input only when so many followed.
constexpr int delayFrames = 481;
constexpr int framesOfSilence = 3 * TWOLAME_SAMPLES_PER_FRAME; // for a file without samples
// One coded frame alone is nothing that readers take for sound.
constexpr qint64 leastFrames = 2 * TWOLAME_SAMPLES_PER_FRAME;
constexpr int rateOfMpeg1 = 32000;

enum Channels : qint32 { Mono = 1, Stereo = 2, Joint = 3, ForcedJoint = 4, Dual = 5 };

constexpr std::array<qint32, 6> rates{16000, 22050, 24000, 32000, 44100, 48000};
// ISO/IEC 11172-3, layer II: which rates go with one channel and which with two; 13818-3 for the halved
// rates. In kbit/s, rising.
constexpr std::array ratesOfMono{32, 48, 56, 64, 80, 96, 112, 128, 160, 192};
constexpr std::array ratesOfStereo{64, 96, 112, 128, 160, 192, 224, 256, 320, 384};
constexpr std::array ratesOfMpeg2{8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};

int HighestUpTo(std::span<const int> legal, int kbps) {
    const auto above = std::upper_bound(legal.begin(), legal.end(), kbps);
    return above == legal.begin() ? legal.front() : *(above - 1);
}

int LegalKbps(qint32 rateHz, qint32 kbps, qint32 channels) {
    if (rateHz < rateOfMpeg1) {
        return HighestUpTo(ratesOfMpeg2, kbps);
    }
    return channels == Mono ? HighestUpTo(ratesOfMono, kbps) : HighestUpTo(ratesOfStereo, kbps);
}

TWOLAME_MPEG_mode ModeOf(qint32 channels) {
    switch (channels) {
    case Mono:
        return TWOLAME_MONO;
    case Joint:
    case ForcedJoint:
        return TWOLAME_JOINT_STEREO;
    case Dual:
        return TWOLAME_DUAL_CHANNEL;
    default:
        return TWOLAME_STEREO;
    }
}

struct TwolameCloser {
    void operator()(twolame_options* options) const { twolame_close(&options); }
};
using TwolameHandle = std::unique_ptr<twolame_options, TwolameCloser>;

TwolameHandle MakeTwolame(const OutputFormat& format) {
    TwolameHandle twolame(twolame_init());
    if (!twolame) {
        return nullptr;
    }
    twolame_set_verbosity(twolame.get(), 0);
    twolame_set_num_channels(twolame.get(), format.channels);
    twolame_set_mode(twolame.get(), ModeOf(format.mp2Channels));
    twolame_set_in_samplerate(twolame.get(), format.rateHz);
    twolame_set_out_samplerate(twolame.get(), format.rateHz);
    twolame_set_bitrate(twolame.get(), format.bitrateBps / bitsPerKbit);
    return twolame_init_params(twolame.get()) == 0 ? std::move(twolame) : nullptr;
}

class Mp2Encoder : public SampleEncoder {
public:
    explicit Mp2Encoder(OutputFormat format) : format_(std::move(format)), coded_(codedBytesAtOnce) {}

    EncoderInput Input() const override { return {format_.rateHz, format_.channels, false}; }

    Outcome Begin(QIODevice& out) override {
        out_ = &out;
        twolame_ = MakeTwolame(format_);
        return twolame_ ? Outcome::Ok : Outcome::NotSupported;
    }

    // The library takes floats too, but makes such samples of them itself, and wraps what is over full scale.
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override {
        for (qint64 done = 0; done < frames; done += framesAtOnce) {
            const int count = static_cast<int>(std::min<qint64>(frames - done, framesAtOnce));
            if (!Encode(samples + done * format_.channels, count)) {
                return Outcome::WriteFailed;
            }
        }
        frames_ += frames;
        return Outcome::Ok;
    }

    Outcome Finish() override {
        // Readers look for several frames in a row, which nothing at all would not give.
        const int rest =
            frames_ > 0
                ? std::max(delayFrames, static_cast<int>(leastFrames - std::min(frames_, leastFrames)))
                : framesOfSilence;
        const std::vector<qint16> silence(static_cast<size_t>(rest) * static_cast<size_t>(format_.channels),
                                          0);
        if (!Encode(silence.data(), rest)) {
            return Outcome::WriteFailed;
        }
        const int bytes =
            twolame_encode_flush(twolame_.get(), coded_.data(), static_cast<int>(coded_.size()));
        return Put(bytes) ? Outcome::Ok : Outcome::WriteFailed;
    }

private:
    bool Encode(const qint16* samples, int frames) {
        return Put(twolame_encode_buffer_interleaved(twolame_.get(), samples, frames, coded_.data(),
                                                     static_cast<int>(coded_.size())));
    }

    bool Put(int bytes) {
        return bytes >= 0 && out_->write(reinterpret_cast<const char*>(coded_.data()), bytes) == bytes;
    }

    const OutputFormat format_;
    QIODevice* out_ = nullptr;
    TwolameHandle twolame_;
    std::vector<unsigned char> coded_;
    qint64 frames_ = 0; // that came
};

} // namespace

std::optional<OutputFormat> Mp2Format(qint32 rateHz, qint32 bitrateKbps, qint32 channels) {
    const bool known = std::find(rates.begin(), rates.end(), rateHz) != rates.end();
    if (!known || bitrateKbps <= 0 || channels < Mono || channels > Dual) {
        return std::nullopt;
    }
    OutputFormat format;
    format.kind = FormatKind::Mp2;
    format.rateHz = rateHz;
    format.channels = channels == Mono ? 1 : 2;
    format.bits = storedBits;
    format.bitrateBps = LegalKbps(rateHz, bitrateKbps, channels) * bitsPerKbit;
    format.mp2Channels = channels;
    if (!MakeTwolame(format)) {
        return std::nullopt;
    }
    return format;
}

std::unique_ptr<SampleEncoder> MakeMp2Encoder(const OutputFormat& format) {
    return std::make_unique<Mp2Encoder>(format);
}

} // namespace kestrune
