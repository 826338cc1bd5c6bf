#include "backends/encoders/vorbis_encoder.h"

#include "backends/encoders/lossy_files.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

const VorbisRates nominal128{128, 0, 0, -1};

VorbisRates ByQuality(qint32 quality) {
    return {128, 0, 0, quality};
}

QByteArray CodedAs(const VorbisRates& rates, const Sound& sound) {
    const std::optional<OutputFormat> format = VorbisFormat(sound.rateHz, sound.channels, rates);
    EXPECT_TRUE(format.has_value());
    return format ? Coded(*MakeVorbisEncoder(*format), sound) : QByteArray();
}

bool IsTaken(qint32 rateHz, qint32 channels, const VorbisRates& rates) {
    return VorbisFormat(rateHz, channels, rates).has_value();
}

double KbpsOf(const QByteArray& file, const Sound& sound) {
    return static_cast<double>(file.size()) * 8 / 1000 * sound.rateHz / static_cast<double>(sound.Frames());
}

} // namespace

TEST(VorbisFormatTest, TakesWhatTheEncoderOffers) {
    EXPECT_TRUE(IsTaken(44100, 2, nominal128));
    EXPECT_TRUE(IsTaken(44100, 2, {128, 64, 192, -1}));
    EXPECT_TRUE(IsTaken(44100, 2, {128, 128, 128, -1}));
    EXPECT_TRUE(IsTaken(44100, 1, {32, 0, 0, -1}));
    EXPECT_TRUE(IsTaken(8000, 2, {24, 0, 0, -1}));
    EXPECT_TRUE(IsTaken(22050, 2, {64, 0, 0, -1}));
    for (const qint32 rateHz : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}) {
        EXPECT_TRUE(IsTaken(rateHz, 1, ByQuality(300))) << rateHz;
        EXPECT_TRUE(IsTaken(rateHz, 2, ByQuality(0))) << rateHz;
        EXPECT_TRUE(IsTaken(rateHz, 2, ByQuality(1000))) << rateHz;
    }
}

TEST(VorbisFormatTest, RefusesWhatItDoesNot) {
    EXPECT_FALSE(IsTaken(8000, 2, nominal128));
    EXPECT_FALSE(IsTaken(44100, 2, {8, 0, 0, -1}));
    EXPECT_FALSE(IsTaken(44100, 2, {600, 0, 0, -1}));
    EXPECT_FALSE(IsTaken(44100, 1, {320, 0, 0, -1}));
    EXPECT_FALSE(IsTaken(44100, 2, {0, 0, 0, -1}));
    EXPECT_FALSE(IsTaken(44100, 2, {128, 192, 64, -1})) << "the least above the largest";
    EXPECT_FALSE(IsTaken(44100, 2, {128, 160, 0, -1})) << "the least above the nominal";
    EXPECT_FALSE(IsTaken(44100, 2, {128, 0, 96, -1})) << "the largest below the nominal";
    EXPECT_FALSE(IsTaken(44100, 2, ByQuality(1001)));
    EXPECT_FALSE(IsTaken(44100, 2, {128, 0, 0, -2}));
    EXPECT_FALSE(IsTaken(44100, 3, nominal128));
    EXPECT_FALSE(IsTaken(44100, 0, nominal128));
    EXPECT_FALSE(IsTaken(0, 2, nominal128));
    EXPECT_FALSE(IsTaken(44100, 2, {2147483647, 0, 0, -1}));
}

TEST(VorbisFormatTest, TellsItsBitRate) {
    EXPECT_EQ(VorbisFormat(44100, 2, nominal128)->bitrateBps, 128000);
    EXPECT_EQ(VorbisFormat(44100, 2, {96, 64, 192, -1})->bitrateBps, 96000);
    EXPECT_EQ(VorbisFormat(44100, 2, ByQuality(300))->bitrateBps, 112000) << "what quality 3 is meant to be";
}

TEST(VorbisEncoderTest, EveryRateDecodesToTheInputsLength) {
    const TestFolder folder;
    for (const int rateHz : {8000, 11025, 16000, 22050, 32000, 44100, 48000}) {
        for (const int channels : {1, 2}) {
            const Sound sound = Music(1.37, rateHz, channels);
            const QString path = folder.Write(QStringLiteral("a.ogg"), CodedAs(ByQuality(700), sound));
            EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("vorbis"));
            const Sound decoded = DecodedByFfmpeg(path, rateHz, channels);
            EXPECT_EQ(decoded.Frames(), sound.Frames()) << rateHz;
            EXPECT_GT(SignalToNoiseDb(sound, decoded), 8.0) << rateHz << " " << channels;
        }
    }
}

TEST(VorbisEncoderTest, TheProgramsOfTheFormatReadIt) {
    const TestFolder folder;
    const Sound sound = Music(2.0, 44100, 2);
    const QString path = folder.Write(QStringLiteral("a.ogg"), CodedAs(nominal128, sound));
    const QString wave = folder.Path(QStringLiteral("a.wav"));
    ASSERT_TRUE(RunTool(QStringLiteral("oggdec"), {QStringLiteral("-Q"), QStringLiteral("-o"), wave, path}));
    EXPECT_EQ(ReadWholeFile(wave).size(), 44 + sound.Frames() * 4);
    QByteArray told;
    ASSERT_TRUE(RunTool(QStringLiteral("ogginfo"), {path}, &told));
    EXPECT_TRUE(told.contains("ENCODER=Kestrune")) << told.toStdString();
    EXPECT_FALSE(told.contains("WARNING")) << told.toStdString();
    EXPECT_TRUE(told.contains("Nominal bitrate: 128")) << told.toStdString();
}

TEST(VorbisEncoderTest, QualityDecidesSizeAndCloseness) {
    const TestFolder folder;
    const Sound sound = Music(3.0, 44100, 2);
    qsizetype bytes = 0;
    double ratio = -100;
    for (const qint32 quality : {0, 300, 600, 1000}) {
        const QByteArray file = CodedAs(ByQuality(quality), sound);
        const QString path = folder.Write(QStringLiteral("a.ogg"), file);
        const double closer = SignalToNoiseDb(sound, DecodedByFfmpeg(path, 44100, 2));
        EXPECT_GT(file.size(), bytes * 5 / 4) << quality;
        EXPECT_GT(closer, ratio + 1.0) << quality;
        bytes = file.size();
        ratio = closer;
    }
}

TEST(VorbisEncoderTest, HeldRatesAreHeld) {
    // Noise wants far more than it may have, silence far less than it must take.
    const Sound noise = Noise(15.0, 44100, 2, 0.9F);
    EXPECT_GT(KbpsOf(CodedAs({256, 0, 0, -1}, noise), noise), 400.0);
    EXPECT_LT(KbpsOf(CodedAs({256, 0, 256, -1}, noise), noise), 300.0);
    Sound silence = noise;
    std::fill(silence.samples.begin(), silence.samples.end(), 0.0F);
    EXPECT_LT(KbpsOf(CodedAs(nominal128, silence), silence), 20.0);
    EXPECT_GT(KbpsOf(CodedAs({128, 96, 160, -1}, silence), silence), 85.0);
}

TEST(VorbisEncoderTest, IsAsGoodAsTheProgramOfTheLibrary) {
    const TestFolder folder;
    Sound sound = Music(2.0, 44100, 2);
    std::vector<qint16> whole;
    for (float& sample : sound.samples) {
        whole.push_back(static_cast<qint16>(std::lround(sample * 20000.0F)));
        sample = static_cast<float>(whole.back()) / 32768.0F;
    }
    const QString wave = folder.Write(QStringLiteral("a.wav"), WaveFile(WaveShape(), BytesOf(whole)));
    const QString judge = folder.Path(QStringLiteral("b.ogg"));
    ASSERT_TRUE(
        RunTool(QStringLiteral("oggenc"), {QStringLiteral("-Q"), QStringLiteral("-b"), QStringLiteral("128"),
                                           QStringLiteral("-o"), judge, wave}));
    const QByteArray ours = CodedAs(nominal128, sound);
    const QString path = folder.Write(QStringLiteral("a.ogg"), ours);
    EXPECT_LT(ours.size(), ReadWholeFile(judge).size() * 101 / 100);
    EXPECT_GT(SignalToNoiseDb(sound, DecodedByFfmpeg(path, 44100, 2)),
              SignalToNoiseDb(sound, DecodedByFfmpeg(judge, 44100, 2)) - 0.1);
}

TEST(VorbisEncoderTest, AFileWithoutSamplesCanBeRead) {
    const TestFolder folder;
    const QString path = folder.Write(QStringLiteral("a.ogg"), CodedAs(nominal128, Sound()));
    EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("vorbis"));
    EXPECT_EQ(DecodedByFfmpeg(path, 44100, 2).Frames(), 0);
}

TEST(VorbisEncoderTest, TheSameInputGivesTheSameFile) {
    const Sound sound = Music(1.0, 44100, 2);
    EXPECT_TRUE(CodedAs(nominal128, sound) == CodedAs(nominal128, sound));
}

} // namespace kestrune
