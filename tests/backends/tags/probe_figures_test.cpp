#include "backends/audio_file/codec_file.h"
#include "backends/tags/made_files.h"
#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

#include <QFile>

#include <ostream>
#include <utility>

namespace kestrune {

namespace {

// How far the length may be from what a decoder gives.
enum class Length {
    Exact,       // frames equal those of the source at the rate of the file
    WithinBlock, // within one block of the coding of what ffprobe says
};

struct Case {
    const char* name;
    const char* options; // of ffmpeg
    const char* text;    // the format string, without the bit rate where that depends on the encoder
    int formatTag;
    int bits;
    Length length;
    int blockFrames = 0;
};

void PrintTo(const Case& made, std::ostream* out) {
    *out << made.name;
}

const Case cases[] = {
    {"cbr.mp3", "-b:a 128k", "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo", 85, 16, Length::Exact},
    {"vbr.mp3", "-q:a 4", "MPEG Layer-3, 44,100 Hz, ", 85, 16, Length::Exact},
    {"mono.mp3", "-ar 22050 -ac 1 -b:a 56k", "MPEG Layer-3, 22,050 Hz, 56 KBPS, Mono", 85, 16, Length::Exact},
    {"plain.mp3", "-b:a 160k -write_xing 0", "MPEG Layer-3, 44,100 Hz, 160 KBPS, Stereo", 85, 16,
     Length::WithinBlock, 1152},
    {"a.mp2", "-b:a 192k", "MPEG Layer-2, 44,100 Hz, 192 KBPS, Stereo", 80, 16, Length::WithinBlock, 1152},
    {"a.ogg", "-c:a libvorbis", "Ogg Vorbis, 44,100 Hz, ", 0x566F, 16, Length::Exact},
    {"a.opus", "-c:a libopus", "OPUS, 48,000 Hz, ", 0x704F, 16, Length::Exact},
    {"a.flac", "", "FLAC, 44,100 Hz, ", 0xF1AC, 16, Length::Exact},
    {"a.oga", "-c:a flac", "FLAC, 44,100 Hz, ", 0xF1AC, 16, Length::Exact},
    {"a.wma", "-b:a 96k", "Windows Media Audio, 44,100 Hz, 96 KBPS, Stereo", 0x161, 16, Length::WithinBlock,
     2048},
    {"v1.wma", "-c:a wmav1 -b:a 64k -ar 22050", "Windows Media Audio, 22,050 Hz, 64 KBPS, Stereo", 0x160, 16,
     Length::WithinBlock, 1024},
    {"a.m4a", "", "AAC, 44,100 Hz, ", 0xFF, 16, Length::WithinBlock, 1024},
    {"a.aiff", "", "PCM, 44,100 Hz, 1411 KBPS, Stereo", 1, 16, Length::Exact},
    {"a.wv", "", "WAVPACK, 44,100 Hz, ", 0x5756, 16, Length::Exact},
    {"a.tta", "", "TTA, 44,100 Hz, ", 0x77A1, 16, Length::Exact},
    {"s8.wav", "-c:a pcm_u8 -ar 11025 -ac 1", "PCM, 11,025 Hz, 88 KBPS, Mono", 1, 8, Length::Exact},
    {"s16.wav", "-c:a pcm_s16le", "PCM, 44,100 Hz, 1411 KBPS, Stereo", 1, 16, Length::Exact},
    {"s24.wav", "-c:a pcm_s24le", "PCM, 44,100 Hz, 2117 KBPS, Stereo", 1, 24, Length::Exact},
    {"f32.wav", "-c:a pcm_f32le", "PCM, 44,100 Hz, 2822 KBPS, Stereo", 3, 32, Length::Exact},
    {"alaw.wav", "-c:a pcm_alaw -ar 8000 -ac 1", "A-Law, 8,000 Hz, 64 KBPS, Mono", 6, 16, Length::Exact},
    {"mulaw.wav", "-c:a pcm_mulaw -ar 8000 -ac 1", "mu-Law, 8,000 Hz, 64 KBPS, Mono", 7, 16, Length::Exact},
    {"ima.wav", "-c:a adpcm_ima_wav", "IMA ADPCM, 44,100 Hz, 355 KBPS, Stereo", 0x11, 16, Length::WithinBlock,
     2041},
    {"ms.wav", "-c:a adpcm_ms", "Microsoft ADPCM, 44,100 Hz, 357 KBPS, Stereo", 2, 16, Length::WithinBlock,
     2036},
    {"rf64.wav", "-rf64 always", "PCM, 44,100 Hz, 1411 KBPS, Stereo", 1, 16, Length::Exact},
    {"a.au", "", "PCM, 44,100 Hz, 1411 KBPS, Stereo", 1, 16, Length::Exact},
    {"a.mkv", "-c:a pcm_s16le", "PCM, 44,100 Hz, 1411 KBPS, Stereo", 1, 16, Length::WithinBlock, 2048},
    {"pcm.avi", "-c:a pcm_s16le", "PCM, 44,100 Hz, 1411 KBPS, Stereo", 1, 16, Length::Exact},
    {"mp3.avi", "-c:a libmp3lame -b:a 128k", "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo", 85, 16,
     Length::WithinBlock, 1152},
    {"a.ac3", "-b:a 192k", "AC3, 44,100 Hz, 192 KBPS, Stereo", 0x2000, 16, Length::WithinBlock, 1536},
};

class ProbeFigures : public testing::TestWithParam<Case> {
protected:
    static void SetUpTestSuite() {
        made_ = new MadeFiles;
        QList<std::pair<QString, QStringList>> outputs;
        for (const Case& wanted : cases) {
            outputs.append({QLatin1String(wanted.name),
                            QString::fromLatin1(wanted.options).split(QLatin1Char(' '), Qt::SkipEmptyParts)});
        }
        ASSERT_TRUE(made_->EncodeAll(outputs));
    }
    static void TearDownTestSuite() { delete std::exchange(made_, nullptr); }

    static MadeFiles* made_; // shared by the cases, since making them takes long
};

MadeFiles* ProbeFigures::made_ = nullptr;

TEST_P(ProbeFigures, AgreeWithOtherPrograms) {
    const Case& wanted = GetParam();
    const QString path = made_->Path(QLatin1String(wanted.name));
    const auto judged = JudgeByFfprobe(path);
    ASSERT_TRUE(judged);

    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
    EXPECT_EQ(info->Frequency(), judged->rateHz);
    EXPECT_EQ(info->Channels(), judged->channels);
    EXPECT_EQ(info->FormatTag(), wanted.formatTag);
    EXPECT_EQ(info->BitsPerSample(), wanted.bits);
    EXPECT_EQ(info->FileSize(), QFile(path).size());
    const QString text = info->GetFormatString();
    EXPECT_TRUE(text.startsWith(QLatin1String(wanted.text))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(judged->channels == 1 ? QLatin1String("Mono") : QLatin1String("Stereo")));
    EXPECT_NEAR(static_cast<double>(info->GetDurationMs()) / 1000,
                static_cast<double>(info->Samples()) / info->Frequency(), 0.0011);
    if (wanted.length == Length::Exact) {
        EXPECT_EQ(info->Samples(), sourceSeconds * judged->rateHz);
    } else {
        EXPECT_NEAR(static_cast<double>(info->GetDurationMs()), judged->durationMs,
                    1000.0 * wanted.blockFrames / judged->rateHz + 1);
    }
}

// The tag editor shows what a probe tells.
TEST_P(ProbeFigures, AreTheSameAfterReadingTheTag) {
    const QString path = made_->Path(QLatin1String(GetParam().name));
    const auto probed = MakeAudioInformation();
    ASSERT_EQ(probed->OpenInfo(path), Outcome::Ok);
    const auto read = MakeAudioInformation();
    ASSERT_EQ(read->ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(read->GetFormatString(), probed->GetFormatString());
    EXPECT_EQ(read->Frequency(), probed->Frequency());
    EXPECT_EQ(read->GetBitrate(), probed->GetBitrate());
    EXPECT_EQ(read->GetDurationMs(), probed->GetDurationMs());
    EXPECT_EQ(read->Channels(), probed->Channels());
    EXPECT_EQ(read->Samples(), probed->Samples());
    EXPECT_EQ(read->FileSize(), probed->FileSize());
    EXPECT_EQ(read->BitsPerSample(), probed->BitsPerSample());
    EXPECT_EQ(read->FormatTag(), probed->FormatTag());
}

// What a playlist says of a file is what its player says.
TEST_P(ProbeFigures, AgreeWithTheReaderOfSamples) {
    const Case& wanted = GetParam();
    const QString path = made_->Path(QLatin1String(wanted.name));
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
    CodecFile reader;
    ASSERT_EQ(reader.OpenRead(path), Outcome::Ok);
    EXPECT_EQ(info->GetFormatString().section(QLatin1Char(','), 0, 2),
              reader.GetFormatText().section(QLatin1Char(','), 0, 2));
    const double allowedMs =
        wanted.length == Length::Exact ? 1 : 2000.0 * wanted.blockFrames / info->Frequency() + 1;
    EXPECT_NEAR(static_cast<double>(info->GetDurationMs()), static_cast<double>(reader.GetLengthMs()),
                allowedMs);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ProbeFigures, testing::ValuesIn(cases),
                         [](const testing::TestParamInfo<Case>& made) {
                             std::string name = made.param.name;
                             name.replace(name.find('.'), 1, "_");
                             return name;
                         });

TEST(Probe, MusepackIsMeasuredExactly) {
    MadeFiles made;
    const QString path = made.Path(QStringLiteral("a.mpc"));
    ASSERT_TRUE(OutputOf(QStringLiteral("mpcenc"),
                         {QStringLiteral("--silent"), QStringLiteral("--overwrite"), made.Source(), path}));
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
    EXPECT_EQ(info->Samples(), sourceSeconds * 44100);
    EXPECT_EQ(info->GetDurationMs(), 3000);
    EXPECT_TRUE(info->GetFormatString().startsWith(QLatin1String("Musepack SV8, 44,100 Hz")));
}

TEST(Probe, LayerOneIsMeasuredByItsBitRate) {
    const MadeFiles made;
    // 200 silent frames of 136 bytes, 384 samples each at 44100 Hz and 128 kbit/s.
    const QByteArray frame = QByteArray::fromHex("FFFF4000") + QByteArray(132, '\0');
    const QString path = made.Write(QStringLiteral("a.mp1"), frame.repeated(200));
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
    EXPECT_EQ(info->GetBitrate(), 128000);
    EXPECT_NEAR(static_cast<double>(info->GetDurationMs()), 1000.0 * 200 * 384 / 44100, 45);
    EXPECT_EQ(info->GetFormatString(), QStringLiteral("MPEG Layer-1, 44,100 Hz, 128 KBPS, Stereo"));
}

TEST(Probe, GsmInWaveCountsItsBlocks) {
    MadeFiles made;
    const QString path = made.Path(QStringLiteral("gsm.wav"));
    ASSERT_TRUE(OutputOf(QStringLiteral("sox"), QStringLiteral("%1 -r 8000 -c 1 -e gsm-full-rate %2")
                                                    .arg(made.Source(), path)
                                                    .split(QLatin1Char(' '))));
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
    EXPECT_EQ(info->GetFormatString(), QStringLiteral("GSM 6.10, 8,000 Hz, 13 KBPS, Mono"));
    EXPECT_EQ(info->GetBitrate(), 13000);
    EXPECT_EQ(info->FormatTag(), 0x31);
    EXPECT_NEAR(static_cast<double>(info->GetDurationMs()), 3000, 41);
}

struct HeaderlessCase {
    const char* name;
    qint64 bytes;
    qint64 durationMs;
    int bitrateBps;
    int formatTag;
    const char* text;
};

TEST(Probe, HeaderlessFilesAreMeasuredByTheirSize) {
    const HeaderlessCase headerless[] = {
        {"a.vox", 8000, 2000, 32000, 0x10, "Dialogic VOX, 8,000 Hz, 32 KBPS, Mono"},
        {"a.raw", 176400, 1000, 1411200, 1, "PCM, 44,100 Hz, 1411 KBPS, Stereo"},
        {"A.PCM", 88200, 500, 1411200, 1, "PCM, 44,100 Hz, 1411 KBPS, Stereo"},
        {"a.gsm", 3300, 2000, 13200, 0x31, "GSM 6.10, 8,000 Hz, 13 KBPS, Mono"},
        {"a.g721", 4000, 1000, 32000, 0x40, "G.721, 8,000 Hz, 32 KBPS, Mono"},
        {"a.g723", 5000, 1000, 40000, 0x14, "G.723, 8,000 Hz, 40 KBPS, Mono"},
        {"a.g726", 4000, 1000, 32000, 0x45, "G.726, 8,000 Hz, 32 KBPS, Mono"},
        {"a.adpcm", 4000, 1000, 32000, 0x11, "IMA ADPCM, 8,000 Hz, 32 KBPS, Mono"},
    };
    const MadeFiles made;
    const auto info = MakeAudioInformation();
    for (const HeaderlessCase& wanted : headerless) {
        SCOPED_TRACE(wanted.name);
        const QString path = made.Write(QLatin1String(wanted.name), QByteArray(wanted.bytes, '\x35'));
        ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
        EXPECT_EQ(info->GetDurationMs(), wanted.durationMs);
        EXPECT_EQ(info->GetBitrate(), wanted.bitrateBps);
        EXPECT_EQ(info->FormatTag(), wanted.formatTag);
        EXPECT_EQ(info->GetFormatString(), QLatin1String(wanted.text));
        EXPECT_EQ(info->OpenInfo(made.Write(QLatin1String(wanted.name), QByteArray())),
                  Outcome::NotDecodable);
    }
}

TEST(Probe, ContentOverrulesAMisleadingExtension) {
    MadeFiles made;
    const QByteArray flac = ContentOf(made.Encode(QStringLiteral("a.flac"), {}));
    const QByteArray mp3 = ContentOf(made.Encode(QStringLiteral("a.mp3"), {}));
    const QByteArray wave = ContentOf(made.Source());
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(made.Write(QStringLiteral("flac.mp3"), flac)), Outcome::Ok);
    EXPECT_TRUE(info->GetFormatString().startsWith(QLatin1String("FLAC")));
    ASSERT_EQ(info->OpenInfo(made.Write(QStringLiteral("mp3.wav"), mp3)), Outcome::Ok);
    EXPECT_TRUE(info->GetFormatString().startsWith(QLatin1String("MPEG Layer-3")));
    ASSERT_EQ(info->OpenInfo(made.Write(QStringLiteral("mp3"), mp3)), Outcome::Ok);
    EXPECT_TRUE(info->GetFormatString().startsWith(QLatin1String("MPEG Layer-3")));
    ASSERT_TRUE(mp3.startsWith("ID3"));
    ASSERT_EQ(info->OpenInfo(made.Write(QStringLiteral("mp3.raw"), mp3)), Outcome::Ok);
    EXPECT_TRUE(info->GetFormatString().startsWith(QLatin1String("MPEG Layer-3")));
    for (const char* name : {"wave.raw", "wave.vox", "wave.gsm"}) {
        ASSERT_EQ(info->OpenInfo(made.Write(QLatin1String(name), wave)), Outcome::Ok);
        EXPECT_EQ(info->GetDurationMs(), 3000) << name;
        EXPECT_EQ(info->FormatTag(), 1) << name;
    }
}

TEST(Probe, WaveWithoutSamplesIsValid) {
    MadeFiles made;
    const QString path = made.Path(QStringLiteral("empty.wav"));
    ASSERT_TRUE(OutputOf(QStringLiteral("sox"),
                         QStringLiteral("%1 %2 trim 0 0").arg(made.Source(), path).split(QLatin1Char(' '))));
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(path), Outcome::Ok);
    EXPECT_TRUE(info->IsValid());
    EXPECT_EQ(info->GetDurationMs(), 0);
    EXPECT_EQ(info->Frequency(), 44100);
    EXPECT_EQ(info->GetBitrate(), 1411200);
}

TEST(Probe, WaveThatWasStreamedHasTheLengthOfItsFile) {
    MadeFiles made;
    const auto streamed =
        OutputOf(QStringLiteral("ffmpeg"),
                 {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), made.Source(),
                  QStringLiteral("-f"), QStringLiteral("wav"), QStringLiteral("-")});
    ASSERT_TRUE(streamed);
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(made.Write(QStringLiteral("a.wav"), *streamed)), Outcome::Ok);
    EXPECT_EQ(info->Samples(), sourceSeconds * 44100);
}

} // namespace

} // namespace kestrune
