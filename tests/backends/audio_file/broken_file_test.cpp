// Files that are not what they claim: each must fail to open or give a shorter decode.
#include "backends/audio_file/codec_file.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <random>

namespace kestrune {

namespace {

// More than any of the files here can hold.
constexpr qint64 mostBytes = Q_INT64_C(64) << 20;

// Opens, reads, seeks and closes. Returns the bytes of a straight decode.
qint64 Exercise(const QString& path) {
    CodecFile file;
    if (file.OpenRead(path) != Outcome::Ok) {
        EXPECT_LT(file.GetFormatId(), 0);
        EXPECT_TRUE(file.ReadBlock(4096).isEmpty());
        EXPECT_EQ(file.SeekTo(0), -1);
        return 0;
    }
    EXPECT_GE(file.GetFormatId(), 0);
    EXPECT_GT(file.GetWaveFormat(), 0);
    EXPECT_TRUE(file.GetChannels() == 1 || file.GetChannels() == 2);
    EXPECT_LT(file.GetFormatText().size(), 190);
    EXPECT_GE(file.GetLengthBytes(), 0);
    qint64 bytes = 0;
    QByteArray block = file.ReadBlock(50000);
    while (!block.isEmpty() && bytes < mostBytes) {
        bytes += block.size();
        block = file.ReadBlock(50000);
    }
    EXPECT_LT(bytes, mostBytes);
    const qint64 middle = file.SeekTo(bytes / 2);
    EXPECT_GE(middle, 0);
    EXPECT_LE(middle, bytes);
    file.ReadBlock(5000);
    EXPECT_EQ(file.SeekTo(0), 0);
    EXPECT_EQ(file.ReadBlock(4).isEmpty(), bytes == 0);
    return bytes;
}

struct Kind {
    const char* name;
    QStringList maker; // program and arguments; %i and %o stand for the files
};

const Kind kinds[] = {
    {"t.mp3", {"lame", "--quiet", "%i", "%o"}},
    {"t.mp2", {"twolame", "--quiet", "%i", "%o"}},
    {"t.ogg", {"oggenc", "-Q", "-o", "%o", "%i"}},
    {"t.mpc", {"mpcenc", "--silent", "%i", "%o"}},
    {"t.wma", {"ffmpeg", "-v", "error", "-i", "%i", "-c:a", "wmav2", "-b:a", "64k", "%o"}},
    {"t.avi", {"ffmpeg", "-v", "error", "-i", "%i", "-c:a", "libmp3lame", "%o"}},
    {"t.flac", {"ffmpeg", "-v", "error", "-i", "%i", "%o"}},
    {"t.m4a", {"ffmpeg", "-v", "error", "-i", "%i", "%o"}},
    {"t.opus", {"ffmpeg", "-v", "error", "-i", "%i", "-c:a", "libopus", "%o"}},
    {"t.aiff", {"ffmpeg", "-v", "error", "-i", "%i", "%o"}},
    {"t.mpeg", {"ffmpeg", "-v", "error", "-i", "%i", "-c:a", "mp2", "%o"}},
    {"ima.wav", {"ffmpeg", "-v", "error", "-i", "%i", "-c:a", "adpcm_ima_wav", "%o"}},
    {"ms.wav", {"ffmpeg", "-v", "error", "-i", "%i", "-c:a", "adpcm_ms", "%o"}},
    {"gsm.wav", {"sox", "%i", "-r", "8000", "-c", "1", "-e", "gsm", "%o"}},
    {"t.vox", {"sox", "%i", "-r", "8000", "-c", "1", "%o"}},
    {"t.gsm", {"sox", "%i", "-r", "8000", "-c", "1", "%o"}},
};

class BrokenFile : public testing::Test {
protected:
    QByteArray Make(const Kind& kind) {
        const QString source =
            folder_.Write(QStringLiteral("in.wav"),
                          WaveFile({1, 2, 44100, 16}, BytesOf(NoiseAndTones(15000, 2, 44100, 41))));
        const QString target = folder_.Path(QLatin1String(kind.name));
        QStringList words = kind.maker;
        words.replaceInStrings(QStringLiteral("%i"), source).replaceInStrings(QStringLiteral("%o"), target);
        RunTool(words.takeFirst(), words);
        return ReadWholeFile(target);
    }

    qint64 Try(const QString& name, const QByteArray& content) {
        SCOPED_TRACE(testing::Message() << qPrintable(name) << ", " << content.size() << " bytes");
        return Exercise(folder_.Write(name, content));
    }

    TestFolder folder_;
};

} // namespace

TEST_F(BrokenFile, CutAnywhereGivesAShorterDecode) {
    for (const Kind& kind : kinds) {
        const QString name = QLatin1String(kind.name);
        const QByteArray content = Make(kind);
        const qint64 whole = Try(name, content);
        EXPECT_GT(whole, 0) << kind.name;
        const qsizetype step = std::max<qsizetype>(content.size() / 25, 1);
        for (qsizetype bytes = 0; bytes < content.size(); bytes += bytes < 64 ? 9 : step) {
            EXPECT_LE(Try(name, content.left(bytes)), whole) << kind.name << " cut to " << bytes;
        }
    }
}

TEST_F(BrokenFile, FlippedBytesDoNoHarm) {
    std::mt19937 random(43);
    for (const Kind& kind : kinds) {
        const QByteArray content = Make(kind);
        for (int round = 0; round < 12; ++round) {
            QByteArray damaged = content;
            // The first rounds hit the header, the others all of the file.
            const auto reach =
                static_cast<quint32>(round < 6 ? std::min<qsizetype>(damaged.size(), 200) : damaged.size());
            for (int flip = 0; flip < 8; ++flip) {
                damaged[static_cast<qsizetype>(random() % reach)] = static_cast<char>(random());
            }
            Try(QLatin1String(kind.name), damaged);
        }
    }
}

TEST_F(BrokenFile, RandomBytesDoNoHarm) {
    const QStringList extensions = {"wav", "mp3",   "mp2",  "mp1",  "mpeg", "vox", "raw", "pcm",
                                    "gsm", "adpcm", "g726", "g721", "g723", "ogg", "wma", "mpc",
                                    "mp",  "mp+",   "dss",  "flac", "m4a",  "avi", "txt", "m3u8"};
    const QByteArrayList starts = {"",
                                   "",
                                   "RIFF\x10\x10\0\0WAVEfmt ",
                                   "OggS",
                                   "fLaC",
                                   "MPCK",
                                   "MP+\x07",
                                   "ID3\x03",
                                   "\xFF\xFB\x90\x64",
                                   "FORM\0\0\x20\0AIFF",
                                   "\002dss",
                                   ".snd",
                                   "\x30\x26\xB2\x75"};
    std::mt19937 random(47);
    for (int round = 0; round < 300; ++round) {
        QByteArray content = starts[static_cast<qsizetype>(random() % static_cast<quint32>(starts.size()))];
        const quint32 bytes = random() % 20000;
        for (quint32 at = 0; at < bytes; ++at) {
            content.append(static_cast<char>(random()));
        }
        Try(QStringLiteral("r.") + extensions[round % extensions.size()], content);
    }
}

TEST_F(BrokenFile, WhatIsNoPlainFileIsNotFound) {
    CodecFile file;
    ASSERT_TRUE(QDir().mkdir(folder_.Path(QStringLiteral("folder.wav"))));
    EXPECT_EQ(file.OpenRead(folder_.Path(QStringLiteral("folder.wav"))), Outcome::NotFound);
    EXPECT_EQ(file.OpenRead(QString()), Outcome::NotFound);
    EXPECT_EQ(file.OpenRead(QStringLiteral("/dev/zero")), Outcome::NotFound);
    EXPECT_EQ(file.OpenRead(QStringLiteral("http://127.0.0.1:1/a.mp3")), Outcome::NotFound);
    EXPECT_LT(file.GetFormatId(), 0);
}

TEST_F(BrokenFile, EmptyFilesAndTextCannotBeDecoded) {
    CodecFile file;
    const QByteArray text = QByteArray("All work and no play makes a dull file.\n").repeated(2000);
    for (const char* name : {"a.wav", "a.mp3", "a.ogg", "a.wma", "a.mpc", "a.dss", "a.txt", "a"}) {
        EXPECT_EQ(file.OpenRead(folder_.Write(QLatin1String(name), {})), Outcome::NotDecodable) << name;
        EXPECT_EQ(file.OpenRead(folder_.Write(QLatin1String(name), text)), Outcome::NotDecodable) << name;
        EXPECT_LT(file.GetFormatId(), 0);
    }
}

TEST_F(BrokenFile, WaveHeadersThatMakeNoSenseFail) {
    const QByteArray data(1000, 'x');
    for (const WaveShape& shape :
         {WaveShape{1, 0, 44100, 16}, WaveShape{1, 300, 44100, 16}, WaveShape{1, 2, 0, 16},
          WaveShape{1, 2, 0xFFFFFFFF, 16}, WaveShape{1, 2, 44100, 0}, WaveShape{0x4321, 2, 44100, 16}}) {
        CodecFile file;
        EXPECT_EQ(file.OpenRead(folder_.Write(QStringLiteral("a.wav"), WaveFile(shape, data))),
                  Outcome::NotDecodable)
            << shape.tag << " " << shape.channels << " " << shape.rateHz << " " << shape.bits;
    }
}

TEST_F(BrokenFile, ScriptsThatNameOtherFilesOpenNothing) {
    const QString good =
        folder_.Write(QStringLiteral("good.wav"), WaveFile({1, 2, 44100, 16}, QByteArray(100000, 'x')));
    const QByteArray path = QFile::encodeName(good);
    CodecFile file;
    const QByteArray list = "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:9,\n" + path + "\n#EXT-X-ENDLIST\n";
    const QByteArray script = "ffconcat version 1.0\nfile '" + path + "'\n";
    const QByteArray session = "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\n"
                               "m=audio 49152 RTP/AVP 0\n";
    for (const QByteArray& content : {list, script, session}) {
        for (const char* name : {"a.m3u8", "a.ffconcat", "a.sdp", "a.mp3", "a.wav"}) {
            EXPECT_EQ(file.OpenRead(folder_.Write(QLatin1String(name), content)), Outcome::NotDecodable)
                << name << " " << content.toStdString();
        }
    }
}

} // namespace kestrune
