#include "backends/encoders/wma_encoder.h"

#include "backends/encoders/lossy_files.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

QByteArray CodedAs(const OutputFormat& format, const Sound& sound) {
    return Coded(*MakeWmaEncoder(format), sound);
}

int FrameLength(int rateHz) {
    return rateHz <= 16000 ? 512 : rateHz <= 22050 ? 1024 : 2048;
}

} // namespace

TEST(WmaFormatTest, ProfilesStandInOrder) {
    for (size_t at = 1; at < wmaProfiles.size(); ++at) {
        const WmaProfile& before = wmaProfiles[at - 1];
        const WmaProfile& now = wmaProfiles[at];
        EXPECT_TRUE(std::tie(before.rateHz, before.channels, before.bitrateBps) <
                    std::tie(now.rateHz, now.channels, now.bitrateBps))
            << at;
    }
}

TEST(WmaFormatTest, TellsRateBitRateAndChannels) {
    const std::optional<OutputFormat> usual = WmaFormat(39);
    ASSERT_TRUE(usual.has_value());
    EXPECT_EQ(usual->kind, FormatKind::WindowsMedia);
    EXPECT_EQ(usual->rateHz, 44100);
    EXPECT_EQ(usual->channels, 2);
    EXPECT_EQ(usual->bitrateBps, 128000);
    EXPECT_EQ(usual->wmaProfile, 39);
    const std::optional<OutputFormat> lower = WmaFormat(10);
    ASSERT_TRUE(lower.has_value());
    EXPECT_EQ(lower->rateHz, 22050);
    EXPECT_EQ(lower->channels, 2);
    EXPECT_EQ(lower->bitrateBps, 32000);
    EXPECT_FALSE(WmaFormat(-1).has_value());
    EXPECT_FALSE(WmaFormat(48).has_value());
}

TEST(WmaEncoderTest, EachProfileWritesWhatItSays) {
    const TestFolder folder;
    for (qint32 profile = 0; profile < wmaProfileCount; ++profile) {
        const OutputFormat format = *WmaFormat(profile);
        const Sound sound = Music(1.0, format.rateHz, format.channels);
        const QString path = folder.Write(QStringLiteral("a.wma"), CodedAs(format, sound));
        EXPECT_EQ(
            Probed(path, QStringLiteral("codec_name,sample_rate,channels,bit_rate")),
            QStringLiteral("wmav2,%1,%2,%3").arg(format.rateHz).arg(format.channels).arg(format.bitrateBps))
            << profile;
        const Sound decoded = DecodedByFfmpeg(path, format.rateHz, format.channels);
        EXPECT_GE(decoded.Frames(), sound.Frames()) << profile;
        EXPECT_LE(decoded.Frames(), sound.Frames() + 2 * FrameLength(format.rateHz)) << profile;
        EXPECT_GT(SignalToNoiseDb(sound, decoded), 3.0) << profile;
    }
}

TEST(WmaEncoderTest, TheHeaderTellsTheTrueLength) {
    const TestFolder folder;
    for (const qint32 profile : {0, 10, 39}) {
        const OutputFormat format = *WmaFormat(profile);
        for (const double seconds : {0.02, 0.5, 3.21}) {
            const Sound sound = Noise(seconds, format.rateHz, format.channels);
            const QString path = folder.Write(QStringLiteral("a.wma"), CodedAs(format, sound));
            EXPECT_NEAR(ProbedSeconds(path), seconds, 0.0015) << profile;
        }
    }
}

TEST(WmaEncoderTest, BeginsAtTheFirstSampleAndLosesNoneAtTheEnd) {
    const TestFolder folder;
    for (const qint32 profile : {4, 13, 22, 43, 47}) {
        const OutputFormat format = *WmaFormat(profile);
        const int length = FrameLength(format.rateHz);
        for (const int frames : {20 * length, 20 * length + 1, 21 * length - 1}) {
            Sound sound = Music(2.0, format.rateHz, format.channels);
            sound.samples.resize(static_cast<size_t>(frames * format.channels));
            const QString path = folder.Write(QStringLiteral("a.wma"), CodedAs(format, sound));
            Sound decoded = DecodedByFfmpeg(path, format.rateHz, format.channels);
            EXPECT_EQ(ClosestLag(sound, decoded, 200), 0) << profile;
            ASSERT_GE(decoded.Frames(), frames) << profile;
            const auto skip = static_cast<std::ptrdiff_t>((frames - length) * format.channels);
            sound.samples.erase(sound.samples.begin(), sound.samples.begin() + skip);
            decoded.samples.erase(decoded.samples.begin(), decoded.samples.begin() + skip);
            EXPECT_GT(SignalToNoiseDb(sound, decoded), 8.0) << profile << ", the end of " << frames;
        }
    }
}

TEST(WmaEncoderTest, NoSpaceOfTheContainerIsLost) {
    // ASF: the head of each payload, of each packet of about 3,200 bytes, and of the file.
    constexpr int payloadHead = 17;
    constexpr int packetHead = 12;
    constexpr int fileHead = 1200;
    for (qint32 profile = 0; profile < wmaProfileCount; ++profile) {
        const OutputFormat format = *WmaFormat(profile);
        const Sound sound = Noise(6.0, format.rateHz, format.channels);
        const int length = FrameLength(format.rateHz);
        const qint64 frames = sound.Frames() / length + 3;
        const qint64 frameBytes = static_cast<qint64>(format.bitrateBps) * length / format.rateHz / 8 + 1;
        const qint64 payloads = frames * (frameBytes + payloadHead);
        const qint64 packets = payloads / 2200 + 1;
        const qint64 lastPacket = 4000;
        EXPECT_LT(CodedAs(format, sound).size(), payloads + packets * packetHead + fileHead + lastPacket)
            << profile;
    }
}

TEST(WmaEncoderTest, MoreBitsAreCloser) {
    const TestFolder folder;
    const Sound sound = Music(3.0, 44100, 2);
    double ratio = -100;
    for (const qint32 profile : {35, 39, 41, 43}) {
        const QString path = folder.Write(QStringLiteral("a.wma"), CodedAs(*WmaFormat(profile), sound));
        const double closer = SignalToNoiseDb(sound, DecodedByFfmpeg(path, 44100, 2));
        EXPECT_GT(closer, ratio + 1.0) << profile;
        ratio = closer;
    }
}

TEST(WmaEncoderTest, LoudAndSilentSoundIsCoded) {
    const TestFolder folder;
    for (const qint32 profile : {0, 10, 39}) {
        const OutputFormat format = *WmaFormat(profile);
        const Sound loud = Noise(0.7, format.rateHz, format.channels, 1.8F);
        Sound silence = loud;
        std::fill(silence.samples.begin(), silence.samples.end(), 0.0F);
        for (const Sound& sound : {loud, silence}) {
            const QString path = folder.Write(QStringLiteral("a.wma"), CodedAs(format, sound));
            EXPECT_GE(DecodedByFfmpeg(path, format.rateHz, format.channels).Frames(), sound.Frames());
        }
    }
}

TEST(WmaEncoderTest, AFileWithoutSamplesCanBeRead) {
    const TestFolder folder;
    const QString path = folder.Write(QStringLiteral("a.wma"), CodedAs(*WmaFormat(39), Sound()));
    EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("wmav2"));
}

TEST(WmaEncoderTest, TheSameInputGivesTheSameFile) {
    const Sound sound = Music(1.0, 44100, 2);
    EXPECT_TRUE(CodedAs(*WmaFormat(39), sound) == CodedAs(*WmaFormat(39), sound));
}

} // namespace kestrune
