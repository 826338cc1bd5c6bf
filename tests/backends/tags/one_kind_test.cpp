// What the playlist says of a file and what the player makes of it are the same kind, whatever the file is
// called.
#include "backends/audio_file/codec_file.h"
#include "backends/tags/made_files.h"
#include "backends/tags/tag_information.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include <ostream>
#include <random>
#include <utility>

namespace kestrune {

namespace {

// Whether the start of the file names its kind, so that an extension of bare samples does not count.
enum class Mark { Own, None };

struct Made {
    const char* name;
    const char* maker; // options of ffmpeg, "sox" and its options, or the name of a function of the tests
    const char* kind;  // as users read it
    Mark mark = Mark::Own;
};

void PrintTo(const Made& made, std::ostream* out) {
    *out << made.name;
}

const Made files[] = {
    {"plain.wav", "-c:a pcm_s16le", "PCM"},
    {"ima.wav", "-c:a adpcm_ima_wav", "IMA ADPCM"},
    {"mp3.wav", "-c:a libmp3lame", "MPEG Layer-3"},
    {"speech.wav", "truespeech", "TrueSpeech"},
    {"rf64.wav", "-c:a pcm_s16le -rf64 always", "PCM"},
    {"rifx.wav", "sox -B", "PCM"},
    {"a.w64", "-c:a pcm_s16le", "PCM"},
    {"pcm.avi", "-c:a pcm_s16le", "PCM"},
    {"mp3.avi", "-c:a libmp3lame", "MPEG Layer-3"},
    {"plain.aiff", "", "PCM"},
    {"alaw.aiff", "-c:a pcm_alaw", "A-Law"},
    {"mulaw.aiff", "-c:a pcm_mulaw", "mu-Law"},
    {"little.aifc", "-c:a pcm_s16le -f aiff", "PCM"},
    {"a.8svx", "sox", "PCM"},
    {"a.maud", "sox", "PCM"},
    {"a.au", "", "PCM"},
    {"a.caf", "-c:a pcm_s16le", "PCM"},
    {"a.voc", "-c:a pcm_s16le", "PCM"},
    {"a.flac", "", "FLAC"},
    {"a.ogg", "-c:a libvorbis", "Ogg Vorbis"},
    {"a.opus", "-c:a libopus", "OPUS"},
    {"a.spx", "-c:a libspeex -ar 16000 -ac 1", "SPEEX"},
    {"a.oga", "-c:a flac", "FLAC"},
    {"a.wv", "", "WAVPACK"},
    {"a.tta", "", "TTA"},
    {"a.mpc", "mpcenc", "Musepack SV8"},
    {"a.wma", "", "Windows Media Audio"},
    {"a.m4a", "", "AAC"},
    {"alac.m4a", "-c:a alac", "ALAC"},
    {"a.mov", "-c:a pcm_s16be", "PCM"},
    {"a.mkv", "-c:a pcm_s16le", "PCM"},
    {"a.webm", "-c:a libvorbis", "Ogg Vorbis"},
    {"a.dss", "dictation", "DSS"},
    {"a.mpg", "-c:a mp2", "MPEG Layer-2"},
    {"tagged.mp3", "-b:a 128k", "MPEG Layer-3"},
    {"bare.mp3", "-b:a 128k -id3v2_version 0 -write_xing 0", "MPEG Layer-3", Mark::None},
    {"a.mp2", "", "MPEG Layer-2", Mark::None},
    {"a.mp1", "layer1", "MPEG Layer-1", Mark::None},
    {"a.ac3", "", "AC3", Mark::None},
    {"a.eac3", "", "EAC3", Mark::None},
    {"a.aac", "", "AAC", Mark::None},
    {"a.dts", "-c:a dca -strict -2", "DTS", Mark::None},
    {"a.ts", "-c:a mp2", "MPEG Layer-2", Mark::None},
    {"a.flv", "-c:a libmp3lame", "MPEG Layer-3", Mark::None},
    {"a.nut", "-c:a pcm_s16le", "PCM", Mark::None},
    {"a.rm", "", "AC3", Mark::None},
    {"a.swf", "-c:a libmp3lame", "MPEG Layer-3", Mark::None},
    {"a.wtv", "-c:a mp2", "MPEG Layer-2", Mark::None},
    {"a.adx", "", "ADPCM_ADX", Mark::None},
    {"a.ast", "", "PCM", Mark::None},
    {"a.nist", "sox", "PCM", Mark::None},
    {"a.paf", "sox", "PCM", Mark::None},
    {"a.avr", "sox", "PCM", Mark::None},
    {"a.pvf", "sox", "PCM", Mark::None},
    {"a.wve", "sox -r 8000 -c 1", "A-Law", Mark::None},
    {"a.sds", "sox -r 8000 -c 1", "PCM", Mark::None},
};

// An ID3v2 tag that holds nothing but padding.
QByteArray EmptyTag() {
    return QByteArray::fromHex("49443303000000000010") + QByteArray(16, '\0');
}

QByteArray Noise(qsizetype bytes) {
    std::mt19937 random(11);
    QByteArray noise(bytes, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    return noise;
}

// Kind and rate, or "none" for what can't be read.
struct Told {
    QString byProber;
    QString byReader;
};

class OneKind : public testing::TestWithParam<Made> {
protected:
    static void SetUpTestSuite() {
        made_ = new MadeFiles;
        QList<std::pair<QString, QStringList>> outputs;
        for (const Made& file : files) {
            const QString maker = QLatin1String(file.maker);
            if (maker.isEmpty() || maker.startsWith(u'-')) {
                outputs.append({QLatin1String(file.name), maker.split(u' ', Qt::SkipEmptyParts)});
            }
        }
        ASSERT_TRUE(made_->EncodeAll(outputs));
    }
    static void TearDownTestSuite() { delete std::exchange(made_, nullptr); }

    static QByteArray Bytes(const Made& file) {
        const QString maker = QLatin1String(file.maker);
        const QString path = made_->Path(QLatin1String(file.name));
        if (maker == QLatin1String("truespeech")) {
            return TrueSpeechFile(500, 37);
        }
        if (maker == QLatin1String("dictation")) {
            return DictationFile(120, 23);
        }
        if (maker == QLatin1String("layer1")) {
            return LayerOneFile(100, 3);
        }
        if (maker == QLatin1String("mpcenc")) {
            OutputOf(maker,
                     {QStringLiteral("--silent"), QStringLiteral("--overwrite"), made_->Source(), path});
        } else if (maker.startsWith(QLatin1String("sox"))) {
            OutputOf(QStringLiteral("sox"), QStringList(made_->Source()) << maker.split(u' ').mid(1) << path);
        }
        return ContentOf(path);
    }

    static Told Tell(const QString& name, const QByteArray& bytes) {
        const TestFolder folder;
        const QString path = folder.Write(name, bytes);
        const auto info = MakeAudioInformation();
        CodecFile reader;
        const bool probed = info->OpenInfo(path) == Outcome::Ok;
        const bool opened = reader.OpenRead(path) == Outcome::Ok;
        const QString none = QStringLiteral("none");
        return {probed ? info->GetFormatString().section(u',', 0, 2) : none,
                opened ? reader.GetFormatText().section(u',', 0, 2) : none};
    }

    static void ExpectBothTell(const QString& kind, const QString& name, const QByteArray& bytes) {
        const Told told = Tell(name, bytes);
        EXPECT_EQ(told.byProber.toStdString(), told.byReader.toStdString()) << name.toStdString();
        EXPECT_EQ(told.byReader.section(u',', 0, 0).toStdString(), kind.toStdString()) << name.toStdString();
    }

    static MadeFiles* made_; // shared by the cases, since making them takes long
};

MadeFiles* OneKind::made_ = nullptr;

QString OwnName(const Made& file) {
    return QStringLiteral("own.") + QFileInfo(QLatin1String(file.name)).suffix();
}

// Real files by their own names and by those of others.

TEST_P(OneKind, IsToldByTheContent) {
    const Made& file = GetParam();
    const QByteArray bytes = Bytes(file);
    ASSERT_GT(bytes.size(), 1000);
    const QString kind = QLatin1String(file.kind);
    for (const QString& name : {OwnName(file), QStringLiteral("other.mp3"), QStringLiteral("other.dat")}) {
        ExpectBothTell(kind, name, bytes);
    }
    const bool marked = file.mark == Mark::Own;
    ExpectBothTell(marked ? kind : QStringLiteral("PCM"), QStringLiteral("other.raw"), bytes);
    ExpectBothTell(marked ? kind : QStringLiteral("PCM"), QStringLiteral("other.pcm"), bytes);
    ExpectBothTell(marked ? kind : QStringLiteral("Dialogic VOX"), QStringLiteral("other.vox"), bytes);
}

INSTANTIATE_TEST_SUITE_P(Files, OneKind, testing::ValuesIn(files),
                         [](const testing::TestParamInfo<Made>& made) {
                             std::string name = made.param.name;
                             name.replace(name.find('.'), 1, "_");
                             return name;
                         });

// A tag in front is a mark, of kinds that have none too, and hides no kind.
class TaggedKind : public OneKind {};

TEST_P(TaggedKind, IsToldBehindTagsToo) {
    const Made& file = GetParam();
    const QByteArray bytes = Bytes(file);
    ASSERT_GT(bytes.size(), 1000);
    for (const int tags : {1, 6}) {
        for (const QString& name : {OwnName(file), QStringLiteral("other.raw"), QStringLiteral("other.vox"),
                                    QStringLiteral("other.dat")}) {
            SCOPED_TRACE(tags);
            ExpectBothTell(QLatin1String(file.kind), name, EmptyTag().repeated(tags) + bytes);
        }
    }
}

const Made filesBehindTags[] = {
    {"plain.wav", "-c:a pcm_s16le", "PCM"},
    {"plain.aiff", "", "PCM"},
    {"a.flac", "", "FLAC"},
    {"a.ogg", "-c:a libvorbis", "Ogg Vorbis"},
    {"a.wv", "", "WAVPACK"},
    {"a.tta", "", "TTA"},
    {"a.mpc", "mpcenc", "Musepack SV8"},
    {"a.m4a", "", "AAC"},
    {"bare.mp3", "-b:a 128k -id3v2_version 0 -write_xing 0", "MPEG Layer-3"},
    {"a.ac3", "", "AC3"},
    {"a.aac", "", "AAC"},
};

INSTANTIATE_TEST_SUITE_P(Files, TaggedKind, testing::ValuesIn(filesBehindTags),
                         [](const testing::TestParamInfo<Made>& made) {
                             std::string name = made.param.name;
                             name.replace(name.find('.'), 1, "_");
                             return name;
                         });

// What is no real file of its kind.

class DoubtfulKind : public OneKind {};

TEST_F(DoubtfulKind, PartsOfMarksLeaveBareSamples) {
    const QByteArrayList parts = {
        QByteArray::fromHex("3026B275"), "riff", "wvPk", "Rifx", "OGGS", "form", "Creative Voice", "ftypxx"};
    for (const QByteArray& part : parts) {
        SCOPED_TRACE(part.toHex(' ').constData());
        ExpectBothTell(QStringLiteral("PCM"), QStringLiteral("a.raw"), part + Noise(60000));
        ExpectBothTell(QStringLiteral("Dialogic VOX"), QStringLiteral("a.vox"), part + Noise(60000));
    }
}

TEST_F(DoubtfulKind, WholeMarksAreNoBareSamples) {
    const QByteArrayList marks = {"RIFF\x10\x10\x10\x10WEBP",
                                  "FORM\x10\x10\x10\x10ILBM",
                                  "RIFX",
                                  "RF64",
                                  "BW64",
                                  "OggS",
                                  "fLaC",
                                  "MAC ",
                                  "wvpk",
                                  "caff",
                                  ".snd",
                                  "xxxxftyp",
                                  "Creative Voice File",
                                  "\x02"
                                  "dss",
                                  "\x03"
                                  "dss",
                                  "\x1A\x45\xDF\xA3",
                                  QByteArray::fromHex("3026B2758E66CF11A6D900AA0062CE6C"),
                                  QByteArray::fromHex("726966662E91CF11A5D628DB04C10000"),
                                  QByteArray::fromHex("000001BA"),
                                  EmptyTag()};
    for (const QByteArray& mark : marks) {
        SCOPED_TRACE(mark.toHex(' ').constData());
        ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.raw"), mark + Noise(60000));
        ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.vox"), mark + Noise(60000));
    }
}

TEST_F(DoubtfulKind, NoiseIsNothingUnderAnyOtherName) {
    for (const char* name : {"a", "a.al", "a.sw", "a.sln", "a.g722", "a.aac", "a.ac3", "a.mp3", "a.mp1",
                             "a.mpeg", "a.wma", "a.wav", "a.ogg", "a.dss", "a.flac", "a.dat"}) {
        ExpectBothTell(QStringLiteral("none"), QLatin1String(name), Noise(60000));
    }
}

// Bare samples hold what looks like single frames.
TEST_F(DoubtfulKind, SamplesOfAnotherKindAreNoMpegAudio) {
    const QByteArray samples = Bytes({"a.txw", "sox -r 33333 -c 1", ""});
    ASSERT_GT(samples.size(), 1000);
    ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.mp3"), samples);
    ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.dat"), samples);
}

TEST_F(DoubtfulKind, AFewFramesOfMpegAudioAreEnough) {
    constexpr qsizetype frameBytes = 418;
    const QByteArray bare = Bytes({"bare.mp3", "-", ""});
    for (const int frames : {2, 3, 4, 8}) {
        SCOPED_TRACE(frames);
        const QByteArray few = bare.left(frames * frameBytes);
        ExpectBothTell(QStringLiteral("MPEG Layer-3"), QStringLiteral("a.mp3"), few);
        ExpectBothTell(QStringLiteral("MPEG Layer-3"), QStringLiteral("a.dat"), few);
    }
}

TEST_F(DoubtfulKind, TheNameCountsWhereTheContentSaysTooLittle) {
    const QByteArray aac = Bytes({"a.aac", "-", ""});
    ASSERT_GT(aac.size(), 7);
    const auto byteAt = [&](qsizetype at) { return static_cast<uchar>(aac[at]); };
    const qsizetype frameBytes = (byteAt(3) & 3) << 11 | byteAt(4) << 3 | byteAt(5) >> 5;
    for (const QByteArray& little : {aac.left(frameBytes), Noise(1000) + aac.left(frameBytes)}) {
        ExpectBothTell(QStringLiteral("AAC"), QStringLiteral("a.aac"), little);
        ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.dat"), little);
    }
    constexpr qsizetype blockBytes = 836; // at least one of 192 kbit/s
    const QByteArray little = Bytes({"a.ac3", "-", ""}).left(blockBytes);
    ExpectBothTell(QStringLiteral("AC3"), QStringLiteral("a.ac3"), little);
    ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.dat"), little);
    // A name that libavformat would believe.
    ExpectBothTell(QStringLiteral("none"), QStringLiteral("a.eac3"),
                   Bytes({"a.eac3", "-", ""}).left(blockBytes));
}

// As one with pictures.
TEST_F(DoubtfulKind, AKindIsToldBehindALongTag) {
    const QByteArray tag = QByteArray::fromHex("494433030000007F0000") + QByteArray(0x7F << 14, '\0');
    for (const char* name : {"a.ac3", "a.aac", "a.ogg", "a.flac"}) {
        const QByteArray bytes = tag + Bytes({name, "-", ""});
        const QString kind =
            Tell(QStringLiteral("a.dat"), Bytes({name, "-", ""})).byReader.section(u',', 0, 0);
        ASSERT_NE(kind, QStringLiteral("none"));
        ExpectBothTell(kind, QStringLiteral("a.dat"), bytes);
        ExpectBothTell(kind, QStringLiteral("a.raw"), bytes);
    }
}

TEST_F(DoubtfulKind, NoiseBeforeMpegAudioHidesNothing) {
    const QByteArray bare = Bytes({"bare.mp3", "-", ""});
    for (const char* name : {"a.mp3", "a.dat"}) {
        ExpectBothTell(QStringLiteral("MPEG Layer-3"), QLatin1String(name), Noise(60000) + bare);
    }
    ExpectBothTell(QStringLiteral("MPEG Layer-3"), QStringLiteral("a.mp3"), Noise(300000) + bare);
}

} // namespace

} // namespace kestrune
