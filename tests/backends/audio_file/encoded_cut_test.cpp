// Files of each kind, cut at all sorts of places, beside those that a coder makes of the same samples.
#include "backends/encoders/encoded_cut.h"

#include "backends/audio_file/codec_file.h"
#include "backends/encoders/encoder_factory.h"
#include "backends/encoders/mp2_encoder.h"
#include "backends/encoders/mp3_encoder.h"
#include "backends/encoders/truespeech_encoder.h"
#include "backends/encoders/vorbis_encoder.h"
#include "backends/encoders/wave_template.h"
#include "backends/encoders/wma_encoder.h"
#include "backends/formats/wave_header.h"
#include "backends/writing/encoding_pipeline.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFileInfo>

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint64 allFrames = 150000;

struct Kind {
    QString name; // of a file
    OutputFormat format;
    qint64 mostMore = 0; // frames that are heard behind the end
};

OutputFormat Mp3Of(qint32 vbrMethod, qint32 kbps, qint32 frequency, bool writeHeader) {
    Mp3Options options;
    options.vbrMethod = vbrMethod;
    options.bitrate = kbps;
    options.frequency = frequency;
    options.writeVbrHeader = writeHeader;
    return *Mp3Format(options);
}

VorbisRates Vorbis(qint32 kbps) {
    VorbisRates rates;
    rates.nominalKbps = kbps;
    return rates;
}

OutputFormat LikeTemplate(const QByteArray& formatChunk, quint16 tag, int channels, int bits) {
    OutputFormat format{FormatKind::Template, 44100, channels, bits, 0, RawPcm, tag};
    format.waveFormat = formatChunk;
    return format;
}

// The common fields of a "fmt " chunk with this block.
QByteArray FormatChunk(quint16 tag, quint16 channels, quint16 blockBytes, quint16 bits) {
    QByteArray head = WaveFile({tag, channels, 44100, bits}, {}).mid(20, 16);
    head[12] = static_cast<char>(blockBytes & 255);
    head[13] = static_cast<char>(blockBytes >> 8);
    return head;
}

std::vector<Kind> Kinds() {
    const auto text = [](const char* name) { return QString::fromLatin1(name); };
    const qint64 packet = qint64{4} * 2048;
    std::vector<Kind> kinds = {
        {text("a.wav"), {FormatKind::Pcm, 44100, 2, 16, 0, RawPcm, 0}},
        {text("8.wav"), {FormatKind::Pcm, 44100, 1, 8, 0, RawPcm, 0}},
        {text("24.wav"), {FormatKind::Pcm, 44100, 1, 24, 0, RawPcm, 0}},
        {text("a.raw"), {FormatKind::Raw, 44100, 2, 8, 0, RawALaw, 0}},
        {text("ima.wav"), {FormatKind::ImaAdpcm, 44100, 2, 4, 0, RawPcm, 0}},
        {text("gsm.wav"), {FormatKind::Gsm, 44100, 1, 0, 0, RawPcm, 0}},
        {text("a.vox"), {FormatKind::Vox, 44100, 1, 4, 0, RawPcm, 0}},
        {text("a.g721"), {FormatKind::G721, 44100, 1, 4, 0, RawPcm, 0}},
        {text("a.g723"), {FormatKind::G723, 44100, 1, 5, 0, RawPcm, 0}},
        {text("a.g726"), {FormatKind::G726, 44100, 1, 4, 0, RawPcm, 0}},
        {text("dsp.wav"), TrueSpeechFormat()},
        {text("a.mp2"), *Mp2Format(44100, 192, 2)},
        {text("low.mp2"), *Mp2Format(16000, 32, 1)},
        {text("a.mp3"), Mp3Of(-1, 128, 44100, true)},
        {text("slow.mp3"), Mp3Of(-1, 32, 22050, true)},
        {text("vbr.mp3"), Mp3Of(0, 32, 44100, true)},
        {text("bare.mp3"), Mp3Of(-1, 128, 44100, false), 2304},
        {text("a.ogg"), *VorbisFormat(44100, 2, Vorbis(128))},
        {text("fine.ogg"), *VorbisFormat(48000, 2, Vorbis(400))},
        {text("low.ogg"), *VorbisFormat(8000, 1, Vorbis(10))},
        {text("a.wma"), *WmaFormat(39), packet},
        {text("ms.wav"), LikeTemplate(FormatChunk(WaveTagMsAdpcm, 2, 2048, 4), WaveTagMsAdpcm, 2, 4)},
        {text("mp3.wav"), LikeTemplate(FormatChunk(WaveTagMp3, 2, 1, 0), WaveTagMp3, 2, 0), 2304},
        {text("float.wav"), LikeTemplate(FormatChunk(WaveTagFloat, 1, 4, 32), WaveTagFloat, 1, 32)},
    };
    kinds[22].format.bitrateBps = 128000;
    return kinds;
}

class EncodedCut : public testing::Test {
protected:
    TestFolder folder_;

    static QByteArray Encoded(const OutputFormat& format, const QByteArray& samples) {
        QBuffer file;
        file.open(QIODevice::ReadWrite);
        EncodingPipeline pipeline(MakeEncoder(format));
        EXPECT_EQ(pipeline.Begin(file), Outcome::Ok);
        pipeline.SetSource({format.rateHz, format.channels});
        EXPECT_EQ(pipeline.Write(samples), Outcome::Ok);
        EXPECT_EQ(pipeline.Finish(), Outcome::Ok);
        return file.data();
    }
    static QByteArray Decoded(const QString& path) {
        CodecFile file;
        EXPECT_EQ(file.OpenRead(path), Outcome::Ok);
        const QByteArray samples = file.ReadBlock(100000000);
        EXPECT_EQ(file.GetLengthBytes(), samples.size());
        return samples;
    }
    // By other programs; 0 for what they need to be told more of.
    static double TellsSeconds(const QString& path) {
        const QString suffix = QFileInfo(path).suffix();
        if (suffix == QStringLiteral("raw") || suffix == QStringLiteral("vox") || suffix.startsWith(u'g')) {
            return 0;
        }
        QByteArray told;
        const QString error = QStringLiteral("error");
        EXPECT_TRUE(RunTool(QStringLiteral("ffprobe"),
                            {QStringLiteral("-v"), error, QStringLiteral("-show_entries"),
                             QStringLiteral("stream=duration"), QStringLiteral("-of"),
                             QStringLiteral("csv=p=0"), path},
                            &told));
        EXPECT_TRUE(RunTool(QStringLiteral("ffmpeg"),
                            {QStringLiteral("-v"), error, QStringLiteral("-xerror"), QStringLiteral("-i"),
                             path, QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")}));
        if (suffix == QStringLiteral("ogg")) {
            QByteArray words;
            EXPECT_TRUE(RunTool(QStringLiteral("ogginfo"), {path}, &words));
            EXPECT_FALSE(words.contains("WARNING")) << words.toStdString();
        }
        return told.trimmed().toDouble();
    }
    void ExpectLikePlain(const Kind& kind, qint64 frames, const QByteArray& samples,
                         const QByteArray& whole) {
        const std::string what = kind.name.toStdString() + " " + std::to_string(frames);
        const qint64 frame = qint64{2} * kind.format.channels;
        QBuffer file;
        file.setData(whole);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const std::optional<qint64> bytes = CutEncoded(file, kind.format, frames);
        ASSERT_TRUE(bytes.has_value()) << what;
        ASSERT_LE(*bytes, file.size()) << what;
        const QByteArray plainFile = Encoded(kind.format, samples.left(frames * frame));
        const QString cut = folder_.Write(QStringLiteral("cut_") + kind.name, file.data().left(*bytes));
        const QString plain = folder_.Write(QStringLiteral("plain_") + kind.name, plainFile);
        const double more = static_cast<double>(kind.mostMore) / kind.format.rateHz;
        EXPECT_NEAR(TellsSeconds(cut), TellsSeconds(plain), 0.003 + more) << what;
        const QByteArray wanted = Decoded(plain);
        const QByteArray got = Decoded(cut);
        EXPECT_GE(got.size(), wanted.size()) << what;
        EXPECT_LE(got.size(), wanted.size() + kind.mostMore * frame) << what;
        const qint64 alike = std::max<qint64>(frames - 4096, 0) * frame;
        EXPECT_TRUE(got.left(alike) == wanted.left(alike)) << what;
    }
};

} // namespace

TEST_F(EncodedCut, IsLikeTheFileOfThePart) {
    for (const Kind& kind : Kinds()) {
        const int channels = kind.format.channels;
        const QByteArray samples =
            BytesOf(NoiseAndTones(static_cast<int>(allFrames), channels, kind.format.rateHz, 12));
        const QByteArray whole = Encoded(kind.format, samples);
        for (const qint64 frames : {22051, 131071}) {
            ExpectLikePlain(kind, frames, samples, whole);
        }
    }
}

TEST_F(EncodedCut, SamplesOneByOneAreTheVeryFile) {
    for (const Kind& kind : Kinds()) {
        const bool isPlain = kind.format.kind == FormatKind::Pcm || kind.format.kind == FormatKind::Raw ||
                             kind.format.waveTag == WaveTagFloat;
        if (!isPlain) {
            continue;
        }
        const QByteArray samples =
            BytesOf(NoiseAndTones(static_cast<int>(allFrames), kind.format.channels, kind.format.rateHz, 12));
        QBuffer file;
        file.setData(Encoded(kind.format, samples));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const std::optional<qint64> bytes = CutEncoded(file, kind.format, 44101);
        ASSERT_TRUE(bytes.has_value());
        const QByteArray plain = Encoded(kind.format, samples.left(qint64{44101} * 2 * kind.format.channels));
        EXPECT_TRUE(file.data().left(*bytes) == plain) << kind.name.toStdString();
    }
}

TEST_F(EncodedCut, SamplesOfAnyBitsEndWithinTheirLastByte) {
    for (const int bits : {2, 3, 4, 5}) {
        const OutputFormat format{FormatKind::G726, 8000, 1, bits, 0, RawPcm, 0};
        const QByteArray samples = BytesOf(NoiseAndTones(20000, 1, 8000, 12));
        QBuffer file;
        file.setData(Encoded(format, samples));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QByteArray plain = Encoded(format, samples.left(2 * 4001));
        EXPECT_EQ(CutEncoded(file, format, 4001), plain.size()) << bits;
        EXPECT_TRUE(file.data().startsWith(plain.chopped(1))) << bits;
    }
}

TEST_F(EncodedCut, WhatIsNoSuchFileIsRefused) {
    for (const Kind& kind : Kinds()) {
        const bool hasHeader = !kind.name.endsWith(QStringLiteral(".raw")) && BitrateOf(kind.format) >= 0 &&
                               kind.format.kind != FormatKind::Vox && kind.format.kind != FormatKind::G721 &&
                               kind.format.kind != FormatKind::G723 && kind.format.kind != FormatKind::G726;
        if (!hasHeader) {
            continue;
        }
        for (const QByteArray& bytes : {QByteArray(), QByteArray("no sound"), QByteArray(100000, 'x')}) {
            QBuffer file;
            file.setData(bytes);
            ASSERT_TRUE(file.open(QIODevice::ReadWrite));
            EXPECT_FALSE(CutEncoded(file, kind.format, 44100).has_value()) << kind.name.toStdString();
        }
    }
}

} // namespace kestrune
