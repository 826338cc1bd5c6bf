#include "backends/audio_file/codec_file.h"
#include "backends/formats/format_text.h"
#include "backends/transform/stereo_to_mono.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace kestrune {

TEST(FormatText, NamesAllFigures) {
    EXPECT_EQ(FormatText(QStringLiteral("MPEG Layer-3"), 44100, 128000, 2),
              QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo"));
    EXPECT_EQ(FormatText(QStringLiteral("PCM"), 8000, 64000, 1),
              QStringLiteral("PCM, 8,000 Hz, 64 KBPS, Mono"));
    EXPECT_EQ(FormatText(QStringLiteral("PCM"), 192000, 27648000, 6),
              QStringLiteral("PCM, 192,000 Hz, 27648 KBPS, 6 Channels"));
}

TEST(FormatText, LeavesOutWhatIsUnknown) {
    EXPECT_EQ(FormatText(QStringLiteral("X"), 0, 0, 0), QStringLiteral("X"));
    EXPECT_EQ(FormatText(QStringLiteral("X"), 800, -1, 2), QStringLiteral("X, 800 Hz, Stereo"));
}

TEST(FormatText, RoundsTheBitRate) {
    EXPECT_EQ(FormatText(QStringLiteral("X"), 0, 127500, 0), QStringLiteral("X, 128 KBPS"));
    EXPECT_EQ(FormatText(QStringLiteral("X"), 0, 127499, 0), QStringLiteral("X, 127 KBPS"));
    EXPECT_EQ(FormatText(QStringLiteral("X"), 0, 2147483647, 0), QStringLiteral("X, 2147484 KBPS"));
}

TEST(FormatText, SpellsTheUnitInBothWays) {
    EXPECT_EQ(FormatText(QStringLiteral("X"), 0, 64000, 1, BitrateUnit::Small),
              QStringLiteral("X, 64 kbps, Mono"));
    EXPECT_EQ(FormatText(QStringLiteral("X"), 0, 64000, 1, BitrateUnit::Capitals),
              QStringLiteral("X, 64 KBPS, Mono"));
}

TEST(FormatText, StaysShortAndPlain) {
    const QString text = FormatText(QString(500, QChar(0xE4)), 2147483647, 2147483647, 2147483647);
    EXPECT_LT(text.size(), 190);
    for (const QChar character : text) {
        EXPECT_TRUE(character >= QLatin1Char(' ') && character <= QLatin1Char('~'));
    }
}

TEST(StereoToMono, TakesTheMeanRoundedTowardZero) {
    QList<qint16> samples = {1, 2, -1, -2, 32767, 32767, -32768, -32768, 32767, -32768, 3, 4, 10, 20};
    StereoToMonoTransform().StereoToMono(samples);
    EXPECT_EQ(samples, QList<qint16>({1, -1, 32767, -32768, 0, 3, 15}));
}

TEST(StereoToMono, DropsASampleWithoutPartner) {
    QList<qint16> samples = {4, 6, 9};
    StereoToMonoTransform().StereoToMono(samples);
    EXPECT_EQ(samples, QList<qint16>({5}));
    StereoToMonoTransform().StereoToMono(samples);
    EXPECT_TRUE(samples.isEmpty());
    StereoToMonoTransform().StereoToMono(samples);
    EXPECT_TRUE(samples.isEmpty());
}

TEST(SetFormat, GivesTextAndKeepsSettings) {
    CodecFile file;
    EXPECT_TRUE(file.GetFormatText().isEmpty());
    EXPECT_EQ(file.SetFormatMP3(44100, 128, 2), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 kbps, Stereo"));
    EXPECT_EQ(file.SetFormatMP2(48000, 192, 4), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("MPEG Layer-2, 48,000 Hz, 192 kbps, Stereo"));
    EXPECT_EQ(file.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("PCM, 44,100 Hz, 1411 kbps, Stereo"));
    EXPECT_EQ(file.GetFormatBits(), 16);
    EXPECT_EQ(file.SetFormatRaw(RawMuLaw, 8000, 1, 16), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("mu-Law, 8,000 Hz, 64 kbps, Mono"));
    EXPECT_EQ(file.GetRawType(), RawMuLaw);
    EXPECT_EQ(file.SetFormatGSM(8000), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("GSM 6.10, 8,000 Hz, 13 kbps, Mono"));
    EXPECT_EQ(file.SetFormatG726(8000, 4), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("G.726, 8,000 Hz, 32 kbps, Mono"));
}

TEST(SetFormat, RefusesWhatAKindDoesNotOffer) {
    CodecFile file;
    ASSERT_EQ(file.SetFormatMP3(44100, 128, 2), Outcome::Ok);
    EXPECT_EQ(file.SetFormatMP3(44000, 128, 2), Outcome::NotSupported);
    EXPECT_TRUE(file.GetFormatText().isEmpty());
    EXPECT_EQ(file.SetFormatRaw(4, 8000, 1, 16), Outcome::NotSupported);
    EXPECT_EQ(file.SetFormatRaw(RawPcm, 8000, 3, 16), Outcome::NotSupported);
    EXPECT_EQ(file.SetFormatPCMFreq(0, 2, 16), Outcome::NotSupported);
    EXPECT_EQ(file.SetFormatG723(8000, 4), Outcome::NotSupported);
    EXPECT_EQ(file.SetFormatADPCM(8000, 0), Outcome::NotSupported);
    EXPECT_EQ(file.SelectFormat(), Outcome::NotSupported);
}

TEST(SetFormat, TakesTheFormatOfAWaveFile) {
    const TestFolder folder;
    const QString path =
        folder.Write(QStringLiteral("a.wav"), WaveFile({6, 2, 22050, 8}, QByteArray(100, 'x')));
    CodecFile file;
    EXPECT_EQ(file.SetFormatFromFile(path), Outcome::Ok);
    EXPECT_EQ(file.GetFormatText(), QStringLiteral("A-Law, 22,050 Hz, 353 kbps, Stereo"));
    EXPECT_EQ(file.SetFormatFromFile(folder.Path(QStringLiteral("none.wav"))), Outcome::NotFound);
    EXPECT_TRUE(file.GetFormatText().isEmpty());
    EXPECT_EQ(file.SetFormatFromFile(folder.Write(QStringLiteral("b.wav"), "text")), Outcome::NotDecodable);
}

} // namespace kestrune
