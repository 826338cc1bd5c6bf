// Every coded kind against a decode of the same file by another program, and its seeks against our own
// decode.
#include "backends/audio_file/codec_file.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QFile>

#include <random>

namespace kestrune {

namespace {

// Commands are words parted by blanks. %i is the source (44100 Hz stereo), %8 one of 8000 Hz mono, %6 one of
// 48000 Hz with six channels, %o the file under test. A maker of one word is a file that the test writes.
struct FormatCase {
    const char* name;
    const char* fileName;
    const char* maker;
    const char* judge;   // writes headerless 16-bit samples to standard output
    int tolerance;       // steps; 0 for kinds that decode to 16 bits
    const char* text;    // the format text
    int judgeLacks = 0;  // samples at the end that the judge does not give
    int lengthSlack = 0; // bytes by which the length may be off before the end was met
};

constexpr const char* ffmpegJudge = "ffmpeg -v error -i %o -map 0:a:0 -f s16le -";
constexpr const char* layerTwoJudge = "ffmpeg -v error -c:a mp2float -i %o -map 0:a:0 -f s16le -";
constexpr const char* layerOneJudge = "ffmpeg -v error -c:a mp1float -i %o -map 0:a:0 -f s16le -";
constexpr const char* soxJudge = "sox -D %o -t raw -e signed -b 16 -";

const FormatCase cases[] = {
    {"Mp3", "a.mp3", "lame --quiet -b 128 %i %o", ffmpegJudge, 1,
     "MPEG Layer-3, 44,100 Hz, 128 kbps, Stereo"},
    {"Mp3ByLame", "a.mp3", "lame --quiet -b 128 %i %o", "lame --quiet --decode -t %o -", 2,
     "MPEG Layer-3, 44,100 Hz, 128 kbps, Stereo"},
    {"Mp3Variable", "a.mp3", "lame --quiet -V 4 %i %o", ffmpegJudge, 1, nullptr},
    {"Mp3WithoutHeaderFrame", "a.mp3", "lame --quiet -t -b 128 %i %o", ffmpegJudge, 1, nullptr},
    {"Mp3Tagged", "a.mp3", "lame --quiet -b 64 --tt Title --ta Artist --add-id3v2 %i %o", ffmpegJudge, 1,
     nullptr},
    {"Mp3Slow", "a.mp3", "lame --quiet -b 8 -m m --resample 8 %i %o", ffmpegJudge, 1,
     "MPEG Layer-3, 8,000 Hz, 8 kbps, Mono"},
    {"Mp3Half", "a.mp3", "lame --quiet -b 32 --resample 22.05 %i %o", ffmpegJudge, 1, nullptr},
    {"Mp3Full", "a.mp3", "lame --quiet -b 320 %i %o", ffmpegJudge, 1, nullptr},
    {"Mp3NamedWav", "a.wav", "lame --quiet -b 128 %i %d/n.mp3", ffmpegJudge, 1, nullptr},
    {"Mp3InWav", "a.wav", "ffmpeg -v error -i %i -c:a libmp3lame -b:a 128k %o", ffmpegJudge, 1, nullptr},
    {"Mp2", "a.mp2", "twolame --quiet -b 192 %i %o", layerTwoJudge, 1,
     "MPEG Layer-2, 44,100 Hz, 192 kbps, Stereo"},
    {"Mp2BySox", "a.mp2", "twolame --quiet -b 192 %i %o", soxJudge, 2, nullptr, 2304},
    {"Mp2InProgramStream", "a.mpeg", "ffmpeg -v error -i %i -c:a mp2 -b:a 192k %o", layerTwoJudge, 1,
     nullptr},
    {"Mp1", "a.mp1", "layer1", layerOneJudge, 1, "MPEG Layer-1, 44,100 Hz, 384 kbps, Stereo"},
    {"Ogg", "a.ogg", "oggenc -Q -q 4 -o %o %i", ffmpegJudge, 1, "Ogg Vorbis, 44,100 Hz, 128 kbps, Stereo"},
    {"OggByOggdec", "a.ogg", "oggenc -Q -q 4 -o %o %i", "oggdec -Q -R -o - %o", 1, nullptr},
    {"OggLow", "a.ogg", "oggenc -Q -q -1 -o %o %8", ffmpegJudge, 1, nullptr},
    {"WindowsMedia2", "a.wma", "ffmpeg -v error -i %i -c:a wmav2 -b:a 128k %o", ffmpegJudge, 1,
     "Windows Media Audio, 44,100 Hz, 128 kbps, Stereo"},
    {"WindowsMedia1", "a.wma", "ffmpeg -v error -i %i -c:a wmav1 -b:a 64k %o", ffmpegJudge, 1, nullptr},
    {"WindowsMediaSpeech", "a.wma", "ffmpeg -v error -i %8 -c:a wmav2 -b:a 24k %o", ffmpegJudge, 1, nullptr},
    {"Musepack", "a.mpc", "mpcenc --silent %i %o", "mpcdec %o %d/judge.wav", 2, nullptr},
    {"MusepackLow", "a.mpc", "mpcenc --silent --telephone %i %o", "mpcdec %o %d/judge.wav", 2, nullptr},
    {"MusepackNamedMp", "a.mp", "mpcenc --silent %i %d/n.mpc", "mpcdec %o %d/judge.wav", 2, nullptr},
    {"Dictation", "a.dss", "dictation", ffmpegJudge, 0, nullptr},
    {"WavImaAdpcm", "a.wav", "ffmpeg -v error -i %i -c:a adpcm_ima_wav %o", ffmpegJudge, 0, nullptr},
    {"WavImaAdpcmMono", "a.wav", "ffmpeg -v error -i %8 -c:a adpcm_ima_wav %o", ffmpegJudge, 0, nullptr},
    {"WavMsAdpcm", "a.wav", "ffmpeg -v error -i %i -c:a adpcm_ms %o", ffmpegJudge, 0, nullptr},
    {"WavGsm", "a.wav", "sox %8 -e gsm %o", ffmpegJudge, 0, "GSM 6.10, 8,000 Hz, 13 kbps, Mono"},
    {"WavTrueSpeech", "a.wav", "truespeech", ffmpegJudge, 0, "TrueSpeech, 8,000 Hz, 9 kbps, Mono"},
    {"AviMp3", "a.avi",
     "ffmpeg -v error -f lavfi -i testsrc=size=64x48:rate=10:duration=4 -i %i -c:v mpeg4 -c:a libmp3lame "
     "-b:a 128k "
     "%o",
     ffmpegJudge, 1, nullptr},
    {"AviPcm", "a.avi", "ffmpeg -v error -i %i -c:a pcm_s16le %o", ffmpegJudge, 0, nullptr},
    {"AviImaAdpcm", "a.avi", "ffmpeg -v error -i %i -c:a adpcm_ima_wav %o", ffmpegJudge, 0, nullptr},
    {"Flac", "a.flac", "ffmpeg -v error -i %i %o", ffmpegJudge, 0, nullptr},
    {"Aiff", "a.aiff", "ffmpeg -v error -i %i %o", ffmpegJudge, 0, "PCM, 44,100 Hz, 1411 kbps, Stereo"},
    {"Au", "a.au", "ffmpeg -v error -i %i %o", ffmpegJudge, 0, nullptr},
    {"AuMuLaw", "a.au", "ffmpeg -v error -i %8 -c:a pcm_mulaw %o", ffmpegJudge, 0,
     "mu-Law, 8,000 Hz, 64 kbps, Mono"},
    {"W64", "a.w64", "ffmpeg -v error -i %i %o", ffmpegJudge, 0, nullptr},
    {"Alac", "a.m4a", "ffmpeg -v error -i %i -c:a alac %o", ffmpegJudge, 0, nullptr},
    {"Aac", "a.m4a", "ffmpeg -v error -i %i -c:a aac -b:a 128k %o", ffmpegJudge, 1, nullptr},
    {"AacAlone", "a.aac", "ffmpeg -v error -i %i -c:a aac -b:a 128k %o", ffmpegJudge, 1, nullptr},
    {"Opus", "a.opus", "ffmpeg -v error -i %i -c:a libopus -b:a 96k %o", ffmpegJudge, 1, nullptr},
    {"VorbisInMatroska", "a.mkv", "ffmpeg -v error -i %i -c:a libvorbis -q:a 4 %o", ffmpegJudge, 1, nullptr},
    {"FlacInMatroska", "a.mkv", "ffmpeg -v error -i %i -c:a flac %o", ffmpegJudge, 0, nullptr, 0, 400},
    {"FlacInOgg", "a.oga", "ffmpeg -v error -i %i -c:a flac %o", ffmpegJudge, 0, nullptr},
    {"PcmInMatroska", "a.mkv", "ffmpeg -v error -i %i -c:a pcm_s16le %o", ffmpegJudge, 0, nullptr},
    {"PcmInMovie", "a.mov", "ffmpeg -v error -i %i -c:a pcm_s16be %o", ffmpegJudge, 0, nullptr},
    {"Mp3InMatroska", "a.mkv", "ffmpeg -v error -i %i -c:a libmp3lame %o", ffmpegJudge, 1, nullptr},
    {"Tta", "a.tta", "ffmpeg -v error -i %i %o", ffmpegJudge, 0, nullptr},
    {"WavPack", "a.wv", "ffmpeg -v error -i %i %o", ffmpegJudge, 0, nullptr},
    {"SurroundAc3", "a.ac3", "ffmpeg -v error -i %6 -c:a ac3 -b:a 448k %o",
     "ffmpeg -v error -i %o -ac 2 -f s16le -", 2, nullptr},
};

void PrintTo(const FormatCase& tested, std::ostream* out) {
    *out << tested.name;
}

class Format : public testing::TestWithParam<FormatCase> {
protected:
    static constexpr int frames = 44100 * 4 + 77;

    void SetUp() override {
        source_ = folder_.Write(QStringLiteral("in.wav"),
                                WaveFile({1, 2, 44100, 16}, BytesOf(NoiseAndTones(frames, 2, 44100, 11))));
        path_ = folder_.Path(QLatin1String(GetParam().fileName));
        ASSERT_TRUE(Make());
    }

    bool Make() {
        const QByteArray maker = GetParam().maker;
        if (maker == "layer1") {
            folder_.Write(QLatin1String(GetParam().fileName), LayerOneFile(300, 19));
            return true;
        }
        if (maker == "truespeech") {
            folder_.Write(QLatin1String(GetParam().fileName), TrueSpeechFile(500, 37));
            return true;
        }
        if (maker == "dictation") {
            folder_.Write(QLatin1String(GetParam().fileName), DictationFile(120, 23));
            return true;
        }
        folder_.Write(QStringLiteral("speech.wav"),
                      WaveFile({1, 1, 8000, 16}, BytesOf(NoiseAndTones(frames / 4, 1, 8000, 13))));
        folder_.Write(QStringLiteral("surround.wav"),
                      WaveFile({1, 6, 48000, 16}, BytesOf(NoiseAndTones(frames, 6, 48000, 15))));
        const bool made = Run(maker, nullptr);
        for (const char* other : {"n.mp3", "n.mpc"}) {
            if (QFile::exists(folder_.Path(QLatin1String(other)))) {
                return made && QFile::rename(folder_.Path(QLatin1String(other)), path_);
            }
        }
        return made;
    }

    bool Run(const QByteArray& command, QByteArray* output) {
        QStringList words = QString::fromLatin1(command).split(QLatin1Char(' '));
        for (QString& word : words) {
            word.replace(QLatin1String("%i"), source_);
            word.replace(QLatin1String("%o"), path_);
            word.replace(QLatin1String("%8"), folder_.Path(QStringLiteral("speech.wav")));
            word.replace(QLatin1String("%6"), folder_.Path(QStringLiteral("surround.wav")));
            word.replace(QLatin1String("%d"), folder_.Path(QString()));
        }
        return RunTool(words.takeFirst(), words, output);
    }

    QByteArray Judged() {
        QByteArray judged;
        Run(GetParam().judge, &judged);
        const QString file = folder_.Path(QStringLiteral("judge.wav"));
        constexpr qsizetype headBytes = 44;
        return QFile::exists(file) ? ReadWholeFile(file).mid(headBytes) : judged;
    }

    TestFolder folder_;
    QString source_;
    QString path_;
    CodecFile file_;
};

} // namespace

TEST_P(Format, DecodesAsTheJudgeDoes) {
    ASSERT_EQ(file_.OpenRead(path_), Outcome::Ok);
    EXPECT_GE(file_.GetFormatId(), 0);
    if (GetParam().text != nullptr) {
        EXPECT_EQ(file_.GetFormatText(), QString::fromLatin1(GetParam().text));
    }
    const qint64 declaredBytes = file_.GetLengthBytes();
    const QByteArray whole = ReadToEnd(file_);
    EXPECT_LE(std::abs(declaredBytes - whole.size()), GetParam().lengthSlack);
    EXPECT_EQ(file_.GetLengthBytes(), whole.size());
    const Comparison comparison = Compare(whole, Judged());
    EXPECT_EQ(comparison.ourSamples, comparison.judgeSamples + GetParam().judgeLacks);
    EXPECT_GT(comparison.ourSamples, 8000);
    EXPECT_LE(comparison.largest, GetParam().tolerance);
}

TEST_P(Format, SeeksToTheSample) {
    CodecFile other;
    ASSERT_EQ(other.OpenRead(path_), Outcome::Ok);
    const QByteArray whole = ReadToEnd(other);
    ASSERT_EQ(file_.OpenRead(path_), Outcome::Ok);
    ExpectExactSeeks(file_, whole, 50);
}

// Damage in the middle must not move what follows it, whether decoded straight or reached by a seek.
TEST_P(Format, SeeksToTheSampleInADamagedFile) {
    QByteArray content = ReadWholeFile(path_);
    std::mt19937 random(53);
    for (int flip = 0; flip < 60; ++flip) {
        const auto back = static_cast<quint32>(content.size() * 3 / 4);
        content[content.size() - 1 - static_cast<qsizetype>(random() % back)] = static_cast<char>(random());
    }
    folder_.Write(QLatin1String(GetParam().fileName), content);
    CodecFile other;
    if (other.OpenRead(path_) != Outcome::Ok) {
        EXPECT_LT(other.GetFormatId(), 0);
        return;
    }
    const QByteArray whole = ReadToEnd(other);
    ASSERT_EQ(file_.OpenRead(path_), Outcome::Ok);
    ExpectExactSeeks(file_, whole, 25);
}

// A picture in the tag is larger than what kinds are looked for in, and the name says something else.
TEST(LeadingTag, IsSteppedOver) {
    constexpr int pictureBytes = 3 << 20;
    const TestFolder folder;
    const QString source = folder.Write(
        QStringLiteral("in.wav"), WaveFile({1, 2, 44100, 16}, BytesOf(NoiseAndTones(60000, 2, 44100, 67))));
    for (const QString& name : {QStringLiteral("a.mp3"), QStringLiteral("a.flac"), QStringLiteral("a.mpc")}) {
        const QString plain = folder.Path(name);
        if (name.endsWith(QLatin1String("mpc"))) {
            ASSERT_TRUE(RunTool(QStringLiteral("mpcenc"), {"--silent", source, plain}));
        } else {
            ASSERT_TRUE(RunTool(QStringLiteral("ffmpeg"), {"-v", "error", "-i", source, plain}));
        }
        CodecFile file;
        ASSERT_EQ(file.OpenRead(plain), Outcome::Ok);
        const QByteArray expected = ReadToEnd(file);
        const QByteArray size = {"\x01\x40\x00\x00", 4}; // pictureBytes in groups of seven bits
        const QByteArray tag = QByteArray("ID3\x03\0\0", 6) + size + QByteArray(pictureBytes, 'p');
        const QString tagged = folder.Write(QStringLiteral("t.ogg"), tag + ReadWholeFile(plain));
        ASSERT_EQ(file.OpenRead(tagged), Outcome::Ok) << qPrintable(name);
        EXPECT_EQ(file.GetLengthBytes(), expected.size()) << qPrintable(name);
        EXPECT_TRUE(ReadToEnd(file) == expected) << qPrintable(name);
        ExpectExactSeeks(file, expected, 20);
    }
}

// Two streams, one behind the other, the second with a set-up of its own.
TEST(ChainedOgg, IsReadAcrossTheJoint) {
    const TestFolder folder;
    const QString source = folder.Write(
        QStringLiteral("in.wav"), WaveFile({1, 2, 44100, 16}, BytesOf(NoiseAndTones(50000, 2, 44100, 61))));
    const QString one = folder.Path(QStringLiteral("one.ogg"));
    const QString two = folder.Path(QStringLiteral("two.ogg"));
    ASSERT_TRUE(RunTool(QStringLiteral("oggenc"), {"-Q", "-s", "1", "-q", "0", "-o", one, source}));
    ASSERT_TRUE(RunTool(QStringLiteral("oggenc"), {"-Q", "-s", "2", "-q", "8", "-o", two, source}));
    const QString chain = folder.Write(QStringLiteral("a.ogg"), ReadWholeFile(one) + ReadWholeFile(two));
    CodecFile file;
    ASSERT_EQ(file.OpenRead(chain), Outcome::Ok);
    const QByteArray whole = ReadToEnd(file);
    constexpr qint64 bothBytes = 2 * 50000 * 4;
    constexpr qint64 longestFrameBytes = 4096 * 4;
    EXPECT_NEAR(static_cast<double>(whole.size()), bothBytes, longestFrameBytes);
    EXPECT_EQ(file.GetLengthBytes(), whole.size());
    ExpectExactSeeks(file, whole, 50);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Format, testing::ValuesIn(cases),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace kestrune
