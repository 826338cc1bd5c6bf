#include "backends/encoders/encoder_support.h"

#include "backends/encoders/adpcm_encoder.h"
#include "backends/encoders/g72x_encoder.h"
#include "backends/encoders/gsm_encoder.h"
#include "backends/encoders/pcm_encoder.h"
#include "backends/encoders/vox_encoder.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <algorithm>
#include <cstring>
#include <random>

namespace kestrune {

OutputFormat FormatFor(FormatKind kind, int rateHz, int channels, int bits) {
    OutputFormat format;
    format.kind = kind;
    format.rateHz = rateHz;
    format.channels = channels;
    format.bits = bits;
    return format;
}

OutputFormat RawFormat(qint32 type, int rateHz, int channels, int bits) {
    OutputFormat format = FormatFor(FormatKind::Raw, rateHz, channels, bits);
    format.rawType = type;
    return format;
}

std::vector<EncoderCase> SimpleEncoders() {
    return {{"8-bit wave", MakePcmEncoder, FormatFor(FormatKind::Pcm, 11025, 1, 8)},
            {"16-bit wave", MakePcmEncoder, FormatFor(FormatKind::Pcm, 44100, 2, 16)},
            {"24-bit wave", MakePcmEncoder, FormatFor(FormatKind::Pcm, 48000, 2, 24)},
            {"32-bit wave", MakePcmEncoder, FormatFor(FormatKind::Pcm, 44100, 1, 32)},
            {"raw", MakePcmEncoder, RawFormat(RawPcm, 44100, 2, 16)},
            {"A-law", MakePcmEncoder, RawFormat(RawALaw, 44100, 2, 8)},
            {"mu-law", MakePcmEncoder, RawFormat(RawMuLaw, 8000, 1, 8)},
            {"IMA ADPCM", MakeAdpcmEncoder, FormatFor(FormatKind::ImaAdpcm, 44100, 2, 4)},
            {"GSM", MakeGsmEncoder, FormatFor(FormatKind::Gsm, 44100, 1, 0)},
            {"VOX", MakeVoxEncoder, FormatFor(FormatKind::Vox, 8000, 1, 4)},
            {"G.721", MakeG72xEncoder, FormatFor(FormatKind::G721, 8000, 1, 4)},
            {"G.723 of 3 bits", MakeG72xEncoder, FormatFor(FormatKind::G723, 44100, 1, 3)},
            {"G.723 of 5 bits", MakeG72xEncoder, FormatFor(FormatKind::G723, 8000, 1, 5)},
            {"G.726 of 2 bits", MakeG72xEncoder, FormatFor(FormatKind::G726, 16000, 1, 2)}};
}

QByteArray Encoded(SampleEncoder& encoder, const std::vector<qint16>& samples, qint64 pieceFrames) {
    QBuffer out;
    EXPECT_TRUE(out.open(QIODevice::ReadWrite));
    Outcome outcome = encoder.Begin(out);
    const int channels = encoder.Input().channels;
    std::vector<float> floats(samples.size());
    std::transform(samples.begin(), samples.end(), floats.begin(),
                   [](qint16 sample) { return static_cast<float>(sample) / 32768.0F; });
    std::mt19937 random(5);
    const qint64 frames = static_cast<qint64>(samples.size()) / channels;
    for (qint64 at = 0; at < frames && outcome == Outcome::Ok;) {
        const qint64 wanted = pieceFrames > 0 ? pieceFrames : static_cast<qint64>(random() % 700);
        const qint64 count = std::min(wanted, frames - at);
        outcome = encoder.Input().takesFloats ? encoder.WriteFloats(floats.data() + at * channels, count)
                                              : encoder.WriteIntegers(samples.data() + at * channels, count);
        at += count;
    }
    EXPECT_EQ(outcome == Outcome::Ok ? encoder.Finish() : outcome, Outcome::Ok);
    return out.data();
}

SwallowingDevice::SwallowingDevice(qint64 room) : room_(room) {
    open(QIODevice::ReadWrite | QIODevice::Unbuffered);
}

qint64 SwallowingDevice::readData(char* data, qint64 maxSize) {
    std::memset(data, 0, static_cast<size_t>(maxSize));
    return maxSize;
}

qint64 SwallowingDevice::writeData(const char* /*data*/, qint64 count) {
    const qint64 taken = std::clamp<qint64>(room_ - pos(), 0, count);
    written_ += taken;
    size_ = std::max(size_, pos() + taken);
    return taken;
}

} // namespace kestrune
