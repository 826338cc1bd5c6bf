#include "backends/codecs/wave_mp3_encoder.h"

#include "backends/codecs/mp3_encoder.h"
#include "backends/codecs/wave_header.h"
#include "backends/codecs/wave_writer.h"

#include <QIODevice>
#include <QtEndian>

#include <optional>

namespace kestrune {

namespace {

constexpr int bitsPerKbit = 1000;

template <typename Number>
void AppendLittle(QByteArray& bytes, Number value) {
    const Number little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

Mp3Options OptionsOf(const OutputFormat& format) {
    Mp3Options options;
    options.frequency = format.rateHz;
    options.channels = format.channels;
    options.channelMode = format.channels == 1 ? 0 : 2;
    options.bitrate = (format.bitrateBps + bitsPerKbit / 2) / bitsPerKbit;
    // A frame that only tells the length would be heard as silence here.
    options.writeVbrHeader = false;
    return options;
}

WaveFormatChunk WaveFormatOf(const Mp3Options& options) {
    constexpr int lowestOfMpeg1Hz = 32000;
    constexpr quint16 codingIsMpeg = 1;
    constexpr quint32 paddedAsNeeded = 0;
    constexpr quint16 framesPerBlock = 1;
    // Samples that every writer of this kind of file tells, whatever its encoder.
    constexpr quint16 usualDelay = 1393;
    const int bytesPerSecond = options.bitrate * bitsPerKbit / 8;
    const int frameSamples = options.frequency >= lowestOfMpeg1Hz ? 1152 : 576;
    WaveFormatChunk format;
    format.tag = WaveTagMp3;
    format.channels = options.channels;
    format.rateHz = options.frequency;
    format.bytesPerSecond = static_cast<quint32>(bytesPerSecond);
    format.blockBytes = 1;
    AppendLittle(format.extra, codingIsMpeg);
    AppendLittle(format.extra, paddedAsNeeded);
    AppendLittle(format.extra, static_cast<quint16>(frameSamples * bytesPerSecond / options.frequency));
    AppendLittle(format.extra, framesPerBlock);
    AppendLittle(format.extra, usualDelay);
    return format;
}

// What an encoder writes, given on to the data of a WAVE file.
class WaveData : public QIODevice {
public:
    explicit WaveData(WaveWriter& wave) : wave_(wave) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* /*data*/, qint64 /*maxSize*/) override { return -1; }
    qint64 writeData(const char* data, qint64 count) override {
        return wave_.Write(data, count) == Outcome::Ok ? count : -1;
    }

private:
    WaveWriter& wave_;
};

class WaveMp3Encoder : public SampleEncoder {
public:
    explicit WaveMp3Encoder(const Mp3Options& options)
        : options_(options), wave_(WaveFormatOf(options)), data_(wave_) {
        if (const std::optional<OutputFormat> format = Mp3Format(options)) {
            mp3_ = MakeMp3Encoder(*format);
        }
    }

    EncoderInput Input() const override {
        return mp3_ ? mp3_->Input() : EncoderInput{options_.frequency, options_.channels, true};
    }

    Outcome Begin(QIODevice& out) override {
        const Outcome outcome = mp3_ ? mp3_->Begin(data_) : Outcome::NotSupported;
        begun_ = outcome == Outcome::Ok;
        return begun_ ? wave_.Begin(out) : outcome;
    }

    Outcome WriteIntegers(const qint16* samples, qint64 frames) override {
        frames_ += frames;
        return begun_ ? mp3_->WriteIntegers(samples, frames) : Outcome::NotOpen;
    }

    Outcome WriteFloats(const float* samples, qint64 frames) override {
        frames_ += frames;
        return begun_ ? mp3_->WriteFloats(samples, frames) : Outcome::NotOpen;
    }

    Outcome Finish() override {
        const Outcome outcome = begun_ ? mp3_->Finish() : Outcome::NotOpen;
        return outcome == Outcome::Ok ? wave_.Finish(frames_) : outcome;
    }

private:
    Mp3Options options_;
    WaveWriter wave_;
    WaveData data_;
    std::unique_ptr<SampleEncoder> mp3_;
    bool begun_ = false;
    qint64 frames_ = 0;
};

} // namespace

bool IsWaveMp3(const OutputFormat& format) {
    return format.rateHz > 0 && Mp3Format(OptionsOf(format)).has_value();
}

std::unique_ptr<SampleEncoder> MakeWaveMp3Encoder(const OutputFormat& format) {
    return std::make_unique<WaveMp3Encoder>(OptionsOf(format));
}

} // namespace kestrune
