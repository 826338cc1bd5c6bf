#include "backends/encoders/mp3_encoder.h"

#include "backends/encoders/mp3_header_frame.h"
#include "backends/encoders/mp3_options.h"

#include <QIODevice>

#include <algorithm>
#include <vector>

namespace kestrune {

namespace {

constexpr int bitsPerKbit = 1000;
constexpr int storedBits = 16;
constexpr int framesAtOnce = 16 * 1152;
constexpr int framesOfSilence = 1152; // for a file without samples
// What LAME may give at most for so many frames, and for its rest.
constexpr size_t codedBytesAtOnce = framesAtOnce * 5 / 4 + 7200;
// LAME takes floats at the scale of 16-bit samples.
constexpr float fullScale = 32768.0F;

class Mp3Encoder : public SampleEncoder {
public:
    explicit Mp3Encoder(Mp3Options options)
        : options_(std::move(options)), left_(framesAtOnce), right_(framesAtOnce), coded_(codedBytesAtOnce) {}

    EncoderInput Input() const override { return {options_.frequency, Channels(), true}; }

    Outcome Begin(QIODevice& out) override {
        out_ = &out;
        lame_ = MakeLame(options_);
        return lame_ ? Outcome::Ok : Outcome::NotSupported;
    }

    Outcome WriteFloats(const float* samples, qint64 frames) override {
        hasSamples_ = hasSamples_ || frames > 0;
        for (qint64 done = 0; done < frames; done += framesAtOnce) {
            const int count = static_cast<int>(std::min<qint64>(frames - done, framesAtOnce));
            Split(samples + done * Channels(), count);
            const int bytes = lame_encode_buffer_float(lame_.get(), left_.data(), right_.data(), count,
                                                       coded_.data(), static_cast<int>(coded_.size()));
            if (!Put(bytes)) {
                return Outcome::WriteFailed;
            }
        }
        return Outcome::Ok;
    }

    Outcome Finish() override {
        // Readers look for several frames in a row, which nothing at all would not give.
        if (!hasSamples_) {
            const std::vector<float> silence(static_cast<size_t>(framesOfSilence * Channels()));
            if (const Outcome outcome = WriteFloats(silence.data(), framesOfSilence);
                outcome != Outcome::Ok) {
                return outcome;
            }
        }
        const int bytes = lame_encode_flush(lame_.get(), coded_.data(), static_cast<int>(coded_.size()));
        return Put(bytes) && PutHeader() ? Outcome::Ok : Outcome::WriteFailed;
    }

private:
    int Channels() const { return IsMono(options_) ? 1 : 2; }

    void Split(const float* samples, int frames) {
        if (Channels() == 1) {
            std::transform(samples, samples + frames, left_.begin(), [](float s) { return s * fullScale; });
            return;
        }
        for (int frame = 0; frame < frames; ++frame) {
            left_[static_cast<size_t>(frame)] = samples[2 * frame] * fullScale;
            right_[static_cast<size_t>(frame)] = samples[2 * frame + 1] * fullScale;
        }
    }

    // Takes what LAME gave.
    bool Put(int bytes) {
        if (bytes <= 0) {
            return bytes == 0;
        }
        if (out_->pos() == 0 && options_.writeVbrHeader && !HasHeaderOfLame() && !LeaveRoom()) {
            return false;
        }
        if (!ownHeader_.soundHeader.isEmpty()) {
            ownHeader_.soundBytes += static_cast<quint32>(bytes);
            ownHeader_.soundSum = Mp3Sum(ownHeader_.soundSum, coded_.data(), bytes);
        }
        return Write(bytes);
    }

    bool Write(int bytes) {
        return out_->write(reinterpret_cast<const char*>(coded_.data()), bytes) == bytes;
    }

    // Bytes that come before any frame was coded are the room for LAME's own.
    bool HasHeaderOfLame() const {
        return lame_get_frameNum(lame_.get()) == 0 || lame_get_lametag_frame(lame_.get(), nullptr, 0) > 0;
    }

    bool LeaveRoom() {
        ownHeader_.soundHeader = QByteArray(reinterpret_cast<const char*>(coded_.data()), 4);
        const QByteArray room(Mp3HeaderBytes(ownHeader_.soundHeader), '\0');
        return out_->write(room) == room.size();
    }

    // The first frame, which stands empty until now, tells the length, the padding and where to find what.
    bool PutHeader() {
        if (!options_.writeVbrHeader) {
            return true;
        }
        const qint64 end = out_->pos();
        return out_->seek(0) && (ownHeader_.soundHeader.isEmpty() ? WriteHeaderOfLame() : WriteOwnHeader()) &&
               out_->seek(end);
    }

    bool WriteHeaderOfLame() {
        const size_t bytes = lame_get_lametag_frame(lame_.get(), coded_.data(), coded_.size());
        return bytes <= coded_.size() && Write(static_cast<int>(bytes));
    }

    bool WriteOwnHeader() {
        ownHeader_.kbps = lame_get_brate(lame_.get());
        ownHeader_.frames = static_cast<quint32>(lame_get_frameNum(lame_.get()));
        ownHeader_.delay = lame_get_encoder_delay(lame_.get());
        ownHeader_.padding = lame_get_encoder_padding(lame_.get());
        ownHeader_.lowpassHz = lame_get_lowpassfreq(lame_.get());
        ownHeader_.figure = 100 - 10 * lame_get_VBR_q(lame_.get()) - lame_get_quality(lame_.get());
        ownHeader_.channelMode = options_.channelMode;
        const QByteArray frame = Mp3HeaderFrame(ownHeader_);
        return out_->write(frame) == frame.size();
    }

    const Mp3Options options_;
    QIODevice* out_ = nullptr;
    LameHandle lame_;
    std::vector<float> left_;
    std::vector<float> right_;
    std::vector<unsigned char> coded_;
    bool hasSamples_ = false;
    Mp3HeaderFacts ownHeader_; // without a sound header where LAME makes the header
};

// What is told of the bit rate: the constant one, the average one, or none.
int TellableKbps(lame_t lame) {
    switch (lame_get_VBR(lame)) {
    case vbr_off:
        return lame_get_brate(lame);
    case vbr_abr:
        return lame_get_VBR_mean_bitrate_kbps(lame);
    default:
        return 0;
    }
}

} // namespace

std::optional<OutputFormat> Mp3Format(const Mp3Options& options) {
    const LameHandle lame = MakeLame(options);
    if (!lame) {
        return std::nullopt;
    }
    OutputFormat format;
    format.kind = FormatKind::Mp3;
    format.rateHz = options.frequency;
    format.channels = IsMono(options) ? 1 : 2;
    format.bits = storedBits;
    format.bitrateBps = TellableKbps(lame.get()) * bitsPerKbit;
    format.mp3 = options;
    return format;
}

std::unique_ptr<SampleEncoder> MakeMp3Encoder(const OutputFormat& format) {
    return std::make_unique<Mp3Encoder>(format.mp3);
}

} // namespace kestrune
