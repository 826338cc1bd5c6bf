#include "backends/encoders/wave_mp3_encoder.h"

#include "backends/encoders/mp3_encoder.h"
#include "backends/encoders/wave_writer.h"
#include "backends/formats/wave_header.h"

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
    options.bitrate = qRound(static_cast<double>(format.bitrateBps) / bitsPerKbit);
    // A frame that only tells the length would be heard as silence here.
    options.writeVbrHeader = false;
    return options;
}

// `mp3` tells the bit rate that the encoder keeps to, which may be another than was asked for.
WaveFormatChunk WaveFormatOf(const OutputFormat& mp3) {
    constexpr int lowestOfMpeg1Hz = 32000;
    constexpr quint16 codingIsMpeg = 1;
    constexpr quint32 paddedAsNeeded = 0;
    constexpr quint16 framesPerBlock = 1;
    // Samples that every writer of this kind of file tells, whatever its encoder.
    constexpr quint16 usualDelay = 1393;
    const int bytesPerSecond = mp3.bitrateBps / 8;
    const int frameSamples = mp3.rateHz >= lowestOfMpeg1Hz ? 1152 : 576;
    WaveFormatChunk format;
    format.tag = WaveTagMp3;
    format.channels = mp3.channels;
    format.rateHz = mp3.rateHz;
    format.bytesPerSecond = static_cast<quint32>(bytesPerSecond);
    format.blockBytes = 1;
    AppendLittle(format.extra, codingIsMpeg);
    AppendLittle(format.extra, paddedAsNeeded);
    AppendLittle(format.extra, static_cast<quint16>(frameSamples * bytesPerSecond / mp3.rateHz));
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
    explicit WaveMp3Encoder(const OutputFormat& format)
        : input_{format.rateHz, format.channels, true}, mp3Format_(Mp3Format(OptionsOf(format))) {
        if (mp3Format_) {
            mp3_ = MakeMp3Encoder(*mp3Format_);
            input_ = mp3_->Input();
        }
    }

    EncoderInput Input() const override { return input_; }

    Outcome Begin(QIODevice& out) override {
        if (!mp3_) {
            return Outcome::NotSupported;
        }
        data_.emplace(wave_.emplace(WaveFormatOf(*mp3Format_)));
        const Outcome outcome = mp3_->Begin(*data_);
        begun_ = outcome == Outcome::Ok;
        return begun_ ? wave_->Begin(out) : outcome;
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
        return outcome == Outcome::Ok ? wave_->Finish(frames_) : outcome;
    }

private:
    EncoderInput input_;
    std::optional<OutputFormat> mp3Format_; // none when there is no such encoder
    std::optional<WaveWriter> wave_;
    std::optional<WaveData> data_;
    std::unique_ptr<SampleEncoder> mp3_;
    bool begun_ = false;
    qint64 frames_ = 0;
};

} // namespace

bool IsWaveMp3(const OutputFormat& format) {
    return format.rateHz > 0 && Mp3Format(OptionsOf(format)).has_value();
}

std::unique_ptr<SampleEncoder> MakeWaveMp3Encoder(const OutputFormat& format) {
    return std::make_unique<WaveMp3Encoder>(format);
}

} // namespace kestrune
