#include "backends/encoders/mp3_encoder.h"
#include "backends/encoders/mp3_header_frame.h"

#include "backends/encoders/lossy_files.h"
#include "backends/encoders/mp3_frames.h"

#include <gtest/gtest.h>

#include <QtEndian>

namespace kestrune {

namespace {

Mp3Options Plain(qint32 frequency, qint32 kbps, qint32 channels) {
    Mp3Options options;
    options.frequency = frequency;
    options.bitrate = kbps;
    options.channels = channels;
    return options;
}

QByteArray CodedAs(const Mp3Options& options, const Sound& sound) {
    const std::optional<OutputFormat> format = Mp3Format(options);
    EXPECT_TRUE(format.has_value());
    return format ? Coded(*MakeMp3Encoder(*format), sound) : QByteArray();
}

int KbpsOf(const Mp3Options& options) {
    const std::optional<OutputFormat> format = Mp3Format(options);
    return format ? format->bitrateBps / 1000 : -1;
}

} // namespace

TEST(Mp3FormatTest, TellsTheRateThatIsUsed) {
    EXPECT_EQ(KbpsOf(Plain(44100, 128, 2)), 128);
    EXPECT_EQ(KbpsOf(Plain(44100, 8, 2)), 32) << "the least of MPEG-1";
    EXPECT_EQ(KbpsOf(Plain(22050, 320, 2)), 160) << "the largest of MPEG-2";
    EXPECT_EQ(KbpsOf(Plain(8000, 128, 1)), 64) << "the largest of the lowest rates";
    Mp3Options average = Plain(44100, 128, 2);
    average.vbrMethod = 4;
    average.abrBitrate = 150;
    EXPECT_EQ(KbpsOf(average), 150);
    average.vbrMethod = 0;
    EXPECT_EQ(KbpsOf(average), 0) << "nothing to tell";
}

TEST(Mp3FormatTest, TakesWhatTheOptionsSay) {
    const OutputFormat mono = *Mp3Format(Plain(32000, 64, 1));
    EXPECT_EQ(mono.kind, FormatKind::Mp3);
    EXPECT_EQ(mono.rateHz, 32000);
    EXPECT_EQ(mono.channels, 1);
    Mp3Options byMode = Plain(44100, 128, 2);
    byMode.channelMode = 0;
    EXPECT_EQ(Mp3Format(byMode)->channels, 1);
}

TEST(Mp3FormatTest, RefusesWhatLayerThreeDoesNotHave) {
    EXPECT_FALSE(Mp3Format(Plain(44000, 128, 2)).has_value());
    EXPECT_FALSE(Mp3Format(Plain(96000, 128, 2)).has_value());
    EXPECT_FALSE(Mp3Format(Plain(0, 128, 2)).has_value());
    EXPECT_FALSE(Mp3Format(Plain(44100, 0, 2)).has_value());
    EXPECT_FALSE(Mp3Format(Plain(44100, 128, 3)).has_value());
    EXPECT_FALSE(Mp3Format(Plain(44100, 128, 0)).has_value());
    for (const qint32 wrong : {-2, 5, 100}) {
        Mp3Options options;
        options.vbrMethod = wrong;
        EXPECT_FALSE(Mp3Format(options).has_value());
        options = {};
        options.channelMode = wrong;
        EXPECT_FALSE(Mp3Format(options).has_value());
        options = {};
        options.deEmphasis = wrong;
        EXPECT_FALSE(Mp3Format(options).has_value());
        options = {};
        options.athControl = wrong;
        EXPECT_FALSE(Mp3Format(options).has_value());
    }
}

TEST(Mp3EncoderTest, EveryFrequencyDecodesToTheInputsLength) {
    const TestFolder folder;
    for (const int rateHz : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}) {
        for (const int channels : {1, 2}) {
            const Sound sound = Music(1.37, rateHz, channels);
            const QByteArray file = CodedAs(Plain(rateHz, 320, channels), sound);
            const QString path = folder.Write(QStringLiteral("a.mp3"), file);
            EXPECT_EQ(Probed(path, QStringLiteral("codec_name,sample_rate,channels")),
                      QStringLiteral("mp3,%1,%2").arg(rateHz).arg(channels));
            const Sound decoded = DecodedByFfmpeg(path, rateHz, channels);
            EXPECT_EQ(decoded.Frames(), sound.Frames()) << rateHz;
            EXPECT_GT(SignalToNoiseDb(sound, decoded), 12.0) << rateHz << " " << channels;
        }
    }
}

TEST(Mp3EncoderTest, EveryRateOfTheTableIsWritten) {
    const Sound sound = Music(0.7, 44100, 2);
    for (const int kbps : {32, 48, 56, 64, 96, 112, 128, 160, 192, 224, 256, 320}) {
        for (const Mp3Frame& frame : SoundFrames(CodedAs(Plain(44100, kbps, 2), sound))) {
            ASSERT_EQ(frame.kbps, kbps);
            ASSERT_EQ(frame.rateHz, 44100);
            ASSERT_EQ(frame.mode, 0);
        }
    }
    const Sound low = Music(0.7, 16000, 1);
    for (const int kbps : {8, 16, 24, 32, 48, 56, 64, 96, 112, 128, 160}) {
        for (const Mp3Frame& frame : SoundFrames(CodedAs(Plain(16000, kbps, 1), low))) {
            ASSERT_EQ(frame.kbps, kbps);
            ASSERT_EQ(frame.rateHz, 16000);
            ASSERT_EQ(frame.mode, 3);
        }
    }
}

TEST(Mp3EncoderTest, TheFramesAreThoseOfTheProgramOfTheLibrary) {
    const TestFolder folder;
    Sound sound = Music(2.0, 44100, 2);
    std::vector<qint16> whole;
    for (float& sample : sound.samples) {
        whole.push_back(static_cast<qint16>(std::lround(sample * 20000.0F)));
        sample = static_cast<float>(whole.back()) / 32768.0F;
    }
    const QString wave = folder.Write(QStringLiteral("a.wav"), WaveFile(WaveShape(), BytesOf(whole)));
    const QString path = folder.Path(QStringLiteral("b.mp3"));
    struct Same {
        QStringList words;
        Mp3Options options;
    };
    Mp3Options variable;
    variable.vbrMethod = 0;
    variable.vbrQuality = 2;
    variable.bitrate = 32;
    variable.quality = 3;
    variable.channelMode = 2;
    Mp3Options average = variable;
    average.vbrMethod = 4;
    average.abrBitrate = 150;
    const std::vector<Same> both{
        {{QStringLiteral("-b128"), QStringLiteral("-q5"), QStringLiteral("-ms")}, Mp3Options()},
        {{QStringLiteral("-V2")}, variable},
        {{QStringLiteral("--abr"), QStringLiteral("150")}, average},
    };
    for (const Same& same : both) {
        ASSERT_TRUE(RunTool(QStringLiteral("lame"),
                            QStringList{QStringLiteral("--quiet"), QStringLiteral("--noreplaygain")} +
                                same.words + QStringList{wave, path}));
        const QByteArray judge = ReadWholeFile(path);
        const QByteArray ours = CodedAs(same.options, sound);
        const int header = Mp3Frames(judge).front().bytes;
        EXPECT_EQ(ours.size(), judge.size());
        EXPECT_TRUE(ours.mid(header) == judge.mid(header)) << qPrintable(same.words.join(QLatin1Char(' ')));
    }
}

TEST(Mp3EncoderTest, DecodersAgreeOnTheLength) {
    const TestFolder folder;
    for (const double seconds : {0.01, 0.5, 1.0, 2.123}) {
        const Sound sound = Music(seconds, 44100, 2);
        const QString path = folder.Write(QStringLiteral("a.mp3"), CodedAs(Mp3Options(), sound));
        const QString wave = folder.Path(QStringLiteral("a.wav"));
        ASSERT_TRUE(RunTool(QStringLiteral("lame"),
                            {QStringLiteral("--quiet"), QStringLiteral("--decode"), path, wave}));
        EXPECT_EQ(ReadWholeFile(wave).size(), 44 + sound.Frames() * 4);
        EXPECT_EQ(DecodedByFfmpeg(path, 44100, 2).Frames(), sound.Frames());
    }
}

TEST(Mp3EncoderTest, LowRatesTellTheirLengthToo) {
    const TestFolder folder;
    struct Low {
        int rateHz;
        int kbps;
        int channels;
    };
    const std::vector<Low> rates{{44100, 32, 1}, {44100, 48, 2}, {48000, 56, 2}, {32000, 40, 2},
                                 {22050, 24, 1}, {24000, 56, 2}, {16000, 8, 1},  {16000, 32, 2},
                                 {12000, 8, 1},  {8000, 8, 2},   {8000, 16, 1}};
    for (const Low& low : rates) {
        const Sound sound = Music(2.37, low.rateHz, low.channels);
        const QByteArray file = CodedAs(Plain(low.rateHz, low.kbps, low.channels), sound);
        const std::vector<Mp3Frame> frames = Mp3Frames(file);
        ASSERT_GT(frames.size(), 3U);
        EXPECT_TRUE(frames.front().isHeader) << low.rateHz << " " << low.kbps;
        EXPECT_EQ(frames.front().mode, frames.back().mode);
        EXPECT_EQ(frames.back().kbps, low.kbps);
        const qsizetype mark = file.indexOf("Info");
        EXPECT_EQ(qFromBigEndian<quint32>(file.constData() + mark + 8), frames.size() - 1);
        EXPECT_EQ(qFromBigEndian<quint32>(file.constData() + mark + 12), file.size());
        const QString path = folder.Write(QStringLiteral("a.mp3"), file);
        EXPECT_EQ(DecodedByFfmpeg(path, low.rateHz, low.channels).Frames(), sound.Frames()) << low.rateHz;
        const QString wave = folder.Path(QStringLiteral("a.wav"));
        ASSERT_TRUE(RunTool(QStringLiteral("lame"),
                            {QStringLiteral("--quiet"), QStringLiteral("--decode"), path, wave}));
        EXPECT_EQ(ReadWholeFile(wave).size(), 44 + sound.Frames() * 2 * low.channels) << low.rateHz;
        ASSERT_TRUE(RunTool(QStringLiteral("ffprobe"),
                            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-err_detect"),
                             QStringLiteral("crccheck+explode"), path}));
    }
}

TEST(Mp3EncoderTest, OwnHeadersSumsAreThoseOfLame) {
    // A header that LAME wrote, made anew from what it says.
    const Sound sound = Music(1.0, 44100, 2);
    const QByteArray file = CodedAs(Mp3Options(), sound);
    const std::vector<Mp3Frame> frames = Mp3Frames(file);
    const auto header = static_cast<qsizetype>(frames.front().bytes);
    const QByteArray rest = file.mid(header);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(rest.constData());
    const qsizetype block = file.indexOf("Info") + 120;
    EXPECT_EQ(qFromBigEndian<quint16>(file.constData() + block + 32), Mp3Sum(0, bytes, rest.size()));
    const auto* const start = reinterpret_cast<const unsigned char*>(file.constData());
    EXPECT_EQ(qFromBigEndian<quint16>(file.constData() + block + 34), Mp3Sum(0, start, block + 34));
    EXPECT_EQ(qFromBigEndian<quint32>(file.constData() + block + 28), file.size());
}

TEST(Mp3EncoderTest, AFileWithoutSamplesCanBeRead) {
    const TestFolder folder;
    const QString path = folder.Write(QStringLiteral("a.mp3"), CodedAs(Mp3Options(), Sound()));
    EXPECT_EQ(Probed(path, QStringLiteral("codec_name")), QStringLiteral("mp3"));
}

TEST(Mp3EncoderTest, TheSameInputGivesTheSameFile) {
    const Sound sound = Music(1.0, 44100, 2);
    EXPECT_TRUE(CodedAs(Mp3Options(), sound) == CodedAs(Mp3Options(), sound));
}

} // namespace kestrune
