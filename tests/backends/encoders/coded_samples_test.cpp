// ADPCM, GSM, VOX and the G.72x family, judged by what other programs decode of them.
#include "backends/audio_file/codec_file.h"
#include "backends/encoders/adpcm_encoder.h"
#include "backends/encoders/encoder_support.h"
#include "backends/encoders/g72x_encoder.h"
#include "backends/encoders/gsm_encoder.h"
#include "backends/encoders/vox_encoder.h"
#include "backends/formats/wave_header.h"
#include "support/chord.h"
#include "support/judges.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QtEndian>

#include <cstring>

namespace kestrune {

namespace {

class CodedSamples : public testing::Test {
protected:
    std::vector<qint16> Sound(int frames, int channels, int rateHz) const {
        return Chord(11).Samples(frames, channels, rateHz);
    }

    TestFolder folder_;
};

// The frame count of the "fact" chunk; -1 without one.
qint64 FactOf(const QByteArray& wave) {
    const qsizetype at = wave.indexOf("fact");
    return at < 0 ? -1 : qFromLittleEndian<quint32>(wave.constData() + at + 8);
}

WaveHeader HeaderOf(const QByteArray& wave) {
    QBuffer device;
    device.setData(wave);
    device.open(QIODevice::ReadOnly);
    return ReadWaveHeader(device).value_or(WaveHeader());
}

std::vector<qint16> DecodedByUs(CodecFile& file, const QString& path) {
    EXPECT_EQ(file.OpenRead(path), Outcome::Ok);
    const QByteArray bytes = ReadToEnd(file);
    std::vector<qint16> samples(static_cast<size_t>(bytes.size() / 2));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * 2);
    return samples;
}

} // namespace

TEST_F(CodedSamples, ImaAdpcmAtEveryRateAndChannelCount) {
    struct Shape {
        int rateHz;
        int channels;
        int blockBytes;
    };
    for (const Shape& shape : {Shape{8000, 1, 256}, Shape{11025, 2, 512}, Shape{22050, 1, 512},
                               Shape{44100, 2, 2048}, Shape{96000, 1, 1024}}) {
        SCOPED_TRACE(shape.rateHz);
        const int frames = shape.rateHz + 17;
        const std::vector<qint16> sound = Sound(frames, shape.channels, shape.rateHz);
        const QByteArray bytes = Encoded(
            *MakeAdpcmEncoder(FormatFor(FormatKind::ImaAdpcm, shape.rateHz, shape.channels, 4)), sound);
        const WaveHeader header = HeaderOf(bytes);
        const int blockFrames = (shape.blockBytes / shape.channels - 4) * 2 + 1;
        EXPECT_EQ(header.blockBytes, shape.blockBytes);
        EXPECT_EQ(header.bits, 4);
        EXPECT_EQ(header.bytesPerSecond, shape.rateHz * shape.blockBytes / blockFrames);
        EXPECT_EQ(header.dataBytes, (frames + blockFrames - 1) / blockFrames * shape.blockBytes);
        EXPECT_EQ(FactOf(bytes), frames);
        const QString file = folder_.Write(QStringLiteral("a.wav"), bytes);
        EXPECT_EQ(ProbedBy(file),
                  QStringLiteral("adpcm_ima_wav,%1,%2").arg(shape.rateHz).arg(shape.channels));
        const std::vector<qint16> decoded = DecodedBySox(file);
        const qint64 decodedFrames = static_cast<qint64>(decoded.size()) / shape.channels;
        EXPECT_GE(decodedFrames, frames);
        EXPECT_LT(decodedFrames, frames + blockFrames);
        const Likeness likeness = Compared(sound, decoded, shape.channels, 8);
        EXPECT_EQ(likeness.delayFrames, 0);
        EXPECT_GT(likeness.signalToNoiseDb, 20.0);
    }
}

TEST_F(CodedSamples, MicrosoftAdpcm) {
    OutputFormat format = FormatFor(FormatKind::Template, 44100, 2, 4);
    format.waveTag = WaveTagMsAdpcm;
    format.waveFormat = QByteArray(12, '\0') + QByteArray("\x00\x08", 2) + QByteArray(2, '\0');
    constexpr int frames = 60001;
    const std::vector<qint16> sound = Sound(frames, 2, 44100);
    const QByteArray bytes = Encoded(*MakeAdpcmEncoder(format), sound);
    EXPECT_EQ(HeaderOf(bytes).blockBytes, 2048);
    EXPECT_EQ(FactOf(bytes), frames);
    const QString file = folder_.Write(QStringLiteral("a.wav"), bytes);
    EXPECT_EQ(ProbedBy(file), QStringLiteral("adpcm_ms,44100,2"));
    const std::vector<qint16> decoded = DecodedBySox(file);
    EXPECT_GE(decoded.size(), sound.size());
    EXPECT_LT(decoded.size(), sound.size() + 2 * 2036);
    const Likeness likeness = Compared(sound, decoded, 2, 8);
    EXPECT_EQ(likeness.delayFrames, 0);
    EXPECT_GT(likeness.signalToNoiseDb, 20.0);
}

TEST_F(CodedSamples, GsmAtAnyRate) {
    for (const int rateHz : {8000, 44100, 48000}) {
        SCOPED_TRACE(rateHz);
        const int frames = rateHz + 100;
        const std::vector<qint16> sound = Chord(11, rateHz * 0.1).Samples(frames, 1, rateHz);
        const QByteArray bytes = Encoded(*MakeGsmEncoder(FormatFor(FormatKind::Gsm, rateHz, 1, 0)), sound);
        const int blocks = (frames + 319) / 320;
        EXPECT_EQ(HeaderOf(bytes).dataBytes, blocks * 65);
        EXPECT_EQ(HeaderOf(bytes).blockBytes, 65);
        const QString file = folder_.Write(QStringLiteral("a.wav"), bytes);
        EXPECT_EQ(ProbedBy(file), QStringLiteral("gsm_ms,%1,1").arg(rateHz));
        const std::vector<qint16> decoded = DecodedBySox(file);
        EXPECT_EQ(static_cast<int>(decoded.size()), blocks * 320);
        EXPECT_EQ(DecodedByFfmpeg(file), decoded);
        EXPECT_GT(Compared(sound, decoded, 1, 40).signalToNoiseDb, 6.0);
    }
}

TEST_F(CodedSamples, VoxIsWhatSoxWrites) {
    const std::vector<qint16> sound = Sound(16001, 1, 8000);
    const QByteArray bytes = Encoded(*MakeVoxEncoder(FormatFor(FormatKind::Vox, 8000, 1, 4)), sound, 0);
    EXPECT_EQ(bytes.size(), 8001);
    const QString plain = folder_.Write(QStringLiteral("a.wav"), WaveFile({1, 1, 8000, 16}, BytesOf(sound)));
    ASSERT_TRUE(
        RunTool(QStringLiteral("sox"), {QStringLiteral("-D"), plain, folder_.Path(QStringLiteral("b.vox"))}));
    // They fill up the odd last byte in different ways.
    const QByteArray judged = ReadWholeFile(folder_.Path(QStringLiteral("b.vox")));
    EXPECT_EQ(judged.size(), bytes.size());
    EXPECT_TRUE(bytes.first(8000) == judged.first(8000));
}

TEST_F(CodedSamples, G72xByOtherDecoders) {
    struct Member {
        FormatKind kind;
        int bits;
        double leastDb;
    };
    // The decoder of ffmpeg does not interchange at 5 bits; that one is judged by the reader alone.
    for (const Member& member : {Member{FormatKind::G726, 2, 8.0}, Member{FormatKind::G723, 3, 12.0},
                                 Member{FormatKind::G721, 4, 18.0}, Member{FormatKind::G726, 4, 18.0}}) {
        SCOPED_TRACE(member.bits);
        const std::vector<qint16> sound = Sound(16003, 1, 8000);
        const QByteArray bytes =
            Encoded(*MakeG72xEncoder(FormatFor(member.kind, 8000, 1, member.bits)), sound, 0);
        EXPECT_EQ(bytes.size(), (16003 * member.bits + 7) / 8);
        const QString file = folder_.Write(QStringLiteral("a.g726"), bytes);
        const std::vector<qint16> decoded = DecodedByFfmpeg(
            file, {QStringLiteral("-f"), QStringLiteral("g726"), QStringLiteral("-code_size"),
                   QString::number(member.bits), QStringLiteral("-ar"), QStringLiteral("8000")});
        EXPECT_EQ(static_cast<qint64>(decoded.size()), bytes.size() * 8 / member.bits);
        const Likeness likeness = Compared(sound, decoded, 1, 8);
        EXPECT_EQ(likeness.delayFrames, 0);
        EXPECT_GT(likeness.signalToNoiseDb, member.leastDb);
    }
}

TEST_F(CodedSamples, G72xComesBackByTheReader) {
    struct Member {
        FormatKind kind;
        const char* name;
        int bits;
        double leastDb;
    };
    for (const Member& member :
         {Member{FormatKind::G721, "a.g721", 4, 18.0}, Member{FormatKind::G723, "a.g723", 3, 12.0},
          Member{FormatKind::G723, "a.g723", 5, 22.0}, Member{FormatKind::G726, "a.g726", 2, 8.0},
          Member{FormatKind::G726, "a.g726", 5, 22.0}}) {
        SCOPED_TRACE(testing::Message() << member.name << " " << member.bits);
        const std::vector<qint16> sound = Sound(22057, 1, 22050);
        CodecFile file;
        file.SetFormatG721(22050);
        file.SetFormatG723(22050, member.bits);
        file.SetFormatG726(22050, member.bits);
        const QString path =
            folder_.Write(QLatin1String(member.name),
                          Encoded(*MakeG72xEncoder(FormatFor(member.kind, 22050, 1, member.bits)), sound));
        const std::vector<qint16> decoded = DecodedByUs(file, path);
        EXPECT_GE(decoded.size(), sound.size());
        EXPECT_LT(static_cast<int>(decoded.size()), static_cast<int>(sound.size()) + 8 / member.bits + 1);
        const Likeness likeness = Compared(sound, decoded, 1, 8);
        EXPECT_EQ(likeness.delayFrames, 0);
        EXPECT_GT(likeness.signalToNoiseDb, member.leastDb);
    }
}

} // namespace kestrune
