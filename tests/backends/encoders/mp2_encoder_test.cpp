#include "backends/encoders/mp2_encoder.h"

#include "backends/audio_file/codec_file.h"
#include "backends/encoders/lossy_files.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

constexpr int filterDelay = 481;

QByteArray CodedAs(qint32 rateHz, qint32 kbps, qint32 channels, const Sound& sound) {
    const std::optional<OutputFormat> format = Mp2Format(rateHz, kbps, channels);
    EXPECT_TRUE(format.has_value());
    return format ? Coded(*MakeMp2Encoder(*format), sound) : QByteArray();
}

int KbpsOf(qint32 rateHz, qint32 kbps, qint32 channels) {
    const std::optional<OutputFormat> format = Mp2Format(rateHz, kbps, channels);
    return format ? format->bitrateBps / 1000 : 0;
}

} // namespace

TEST(Mp2FormatTest, KeepsLegalRatesAndLowersOthers) {
    EXPECT_EQ(KbpsOf(44100, 192, 2), 192);
    EXPECT_EQ(KbpsOf(44100, 192, 1), 192);
    EXPECT_EQ(KbpsOf(32000, 384, 2), 384);
    EXPECT_EQ(KbpsOf(44100, 320, 1), 192) << "one channel has no more";
    EXPECT_EQ(KbpsOf(44100, 80, 2), 64) << "two channels do not know 48, 56 and 80";
    EXPECT_EQ(KbpsOf(44100, 8, 2), 64) << "the least one";
    EXPECT_EQ(KbpsOf(24000, 192, 2), 160);
    EXPECT_EQ(KbpsOf(16000, 192, 1), 160);
    EXPECT_EQ(KbpsOf(22050, 8, 2), 8);
}

TEST(Mp2FormatTest, RefusesWhatLayerTwoDoesNotHave) {
    EXPECT_EQ(KbpsOf(8000, 192, 1), 0);
    EXPECT_EQ(KbpsOf(11025, 192, 2), 0);
    EXPECT_EQ(KbpsOf(96000, 192, 2), 0);
    EXPECT_EQ(KbpsOf(44100, 192, 0), 0);
    EXPECT_EQ(KbpsOf(44100, 192, 6), 0);
    EXPECT_EQ(KbpsOf(44100, 0, 2), 0);
    EXPECT_EQ(KbpsOf(44100, -5, 2), 0);
}

TEST(Mp2EncoderTest, WritesEachChannelCodeIntoTheHeader) {
    // By channel code: the mode of the header, ISO/IEC 11172-3, 2.4.2.3.
    const std::vector<int> modes{3, 0, 1, 1, 2};
    for (qint32 code = 1; code <= 5; ++code) {
        const Sound sound = Music(0.5, 44100, code == 1 ? 1 : 2);
        const QByteArray file = CodedAs(44100, 128, code, sound);
        ASSERT_GT(file.size(), 4);
        EXPECT_EQ(static_cast<uchar>(file.at(0)), 0xFF);
        EXPECT_EQ(static_cast<uchar>(file.at(1)) & 0xFE, 0xFC) << "MPEG-1, layer II";
        EXPECT_EQ(static_cast<uchar>(file.at(3)) >> 6, modes[static_cast<size_t>(code) - 1]) << code;
    }
}

TEST(Mp2EncoderTest, EveryRateDecodesToTheWholeInput) {
    const TestFolder folder;
    for (const int rateHz : {16000, 22050, 24000, 32000, 44100, 48000}) {
        for (const int channels : {1, 2}) {
            const Sound sound = Music(1.3, rateHz, channels);
            const QString path = folder.Write(QStringLiteral("a.mp2"), CodedAs(rateHz, 192, channels, sound));
            EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("mp2"));
            EXPECT_EQ(Probed(path, QStringLiteral("sample_rate")), QString::number(rateHz));
            EXPECT_EQ(Probed(path, QStringLiteral("channels")), QString::number(channels));
            const Sound decoded = DecodedByFfmpeg(path, rateHz, channels);
            EXPECT_GE(decoded.Frames(), sound.Frames() + filterDelay);
            EXPECT_LT(decoded.Frames(), sound.Frames() + filterDelay + 1152 + 1);
            EXPECT_GT(SignalToNoiseDb(sound, decoded, filterDelay), 14.0) << rateHz << " " << channels;
        }
    }
}

TEST(Mp2EncoderTest, WholeFramesLoseNothingAtTheEnd) {
    const TestFolder folder;
    Sound sound = Music(1.0, 48000, 2);
    sound.samples.resize(static_cast<size_t>(30) * 1152 * 2);
    const QString path = folder.Write(QStringLiteral("a.mp2"), CodedAs(48000, 384, 2, sound));
    Sound end = DecodedByFfmpeg(path, 48000, 2);
    ASSERT_GE(end.Frames(), sound.Frames() + filterDelay);
    const size_t tail = static_cast<size_t>(sound.samples.size()) - 2 * 1152;
    end.samples.erase(end.samples.begin(), end.samples.begin() + static_cast<std::ptrdiff_t>(tail));
    sound.samples.erase(sound.samples.begin(), sound.samples.begin() + static_cast<std::ptrdiff_t>(tail));
    EXPECT_GT(SignalToNoiseDb(sound, end, filterDelay), 14.0);
}

TEST(Mp2EncoderTest, IsWhatTheProgramOfTheLibraryWrites) {
    const TestFolder folder;
    Sound sound = Music(1.0, 44100, 2);
    std::vector<qint16> whole;
    for (float& sample : sound.samples) {
        whole.push_back(static_cast<qint16>(std::lround(sample * 20000.0F)));
        sample = static_cast<float>(whole.back()) / 32768.0F;
    }
    const QString wave = folder.Write(QStringLiteral("a.wav"), WaveFile(WaveShape(), BytesOf(whole)));
    ASSERT_TRUE(
        RunTool(QStringLiteral("twolame"),
                {QStringLiteral("--quiet"), QStringLiteral("-b"), QStringLiteral("192"), QStringLiteral("-m"),
                 QStringLiteral("s"), wave, folder.Path(QStringLiteral("b.mp2"))}));
    const QByteArray judge = ReadWholeFile(folder.Path(QStringLiteral("b.mp2")));
    const QByteArray ours = CodedAs(44100, 192, 2, sound);
    // The last frame differs: ours goes on until the end of the input is through the filters.
    const qsizetype same = judge.size() - 2 * 627;
    EXPECT_TRUE(ours.left(same) == judge.left(same));
}

TEST(Mp2EncoderTest, WhatIsOverFullScaleIsCut) {
    const TestFolder folder;
    const Sound loud = Noise(1.0, 44100, 2, 1.6F);
    Sound cut = loud;
    for (float& sample : cut.samples) {
        sample = std::clamp(sample, -1.0F, 32767.0F / 32768.0F);
    }
    EXPECT_TRUE(CodedAs(44100, 384, 2, loud) == CodedAs(44100, 384, 2, cut));
}

TEST(Mp2EncoderTest, AFileWithoutSamplesCanBeRead) {
    const TestFolder folder;
    const QString path = folder.Write(QStringLiteral("a.mp2"), CodedAs(44100, 192, 2, Sound()));
    EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("mp2"));
}

// One coded frame is too little for every reader.
TEST(Mp2EncoderTest, TheShortestSoundsCanBeRead) {
    const TestFolder folder;
    const QString path = folder.Path(QStringLiteral("a.mp2"));
    for (const int rateHz : {16000, 22050, 44100, 48000}) {
        for (const qint64 frames : {1, 100, 671, 672}) {
            Sound sound = Music(0.1, rateHz, 2);
            sound.samples.resize(static_cast<size_t>(frames) * 2);
            folder.Write(QStringLiteral("a.mp2"), CodedAs(rateHz, 128, 2, sound));
            const QString what = QStringLiteral("%1 frames at %2 Hz").arg(frames).arg(rateHz);
            EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("mp2"))
                << what.toStdString();
            EXPECT_TRUE(RunTool(QStringLiteral("sox"), {path, folder.Path(QStringLiteral("a.wav"))}))
                << what.toStdString();
            CodecFile reader;
            ASSERT_EQ(reader.OpenRead(path), Outcome::Ok) << what.toStdString();
            const qint64 decoded = reader.ReadBlock(1000000).size() / 4;
            EXPECT_GE(decoded, frames + filterDelay) << what.toStdString();
            EXPECT_LE(decoded, 2 * 1152) << what.toStdString();
        }
    }
}

TEST(Mp2EncoderTest, TheSameInputGivesTheSameFile) {
    const Sound sound = Music(1.0, 44100, 2);
    EXPECT_TRUE(CodedAs(44100, 128, 3, sound) == CodedAs(44100, 128, 3, sound));
}

} // namespace kestrune
