#include "backends/tags/made_files.h"
#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtEndian>

#include <random>

#include <sys/stat.h>

namespace kestrune {

namespace {

// All reads, so that a sanitizer sees what they touch; true when the figures make sense.
bool IsSensible(KSTAudioInformation2& info, Outcome outcome) {
    if (outcome != Outcome::Ok) {
        return !info.IsValid() && info.GetDurationMs() == 0 && info.GetFormatString().isEmpty();
    }
    return info.Frequency() > 0 && info.Channels() > 0 && info.GetDurationMs() >= 0 &&
           info.GetBitrate() >= 0 && info.Samples() >= 0 && !info.GetFormatString().isEmpty();
}

class BrokenFiles : public testing::Test {
protected:
    MadeFiles made_;
    std::unique_ptr<KSTAudioInformation2> info_ = MakeAudioInformation();

    std::vector<QByteArray> GoodFiles() {
        const char* const names[] = {"a.mp3",  "a.ogg", "a.flac", "a.wma", "a.wav",  "a.m4a", "a.avi",
                                     "a.aiff", "a.mka", "a.wv",   "a.tta", "a.opus", "a.mp2", "a.au"};
        QList<std::pair<QString, QStringList>> outputs;
        for (const char* name : names) {
            outputs.append(
                {QLatin1String(name), QStringLiteral("-t 0.4 -metadata title=Song").split(QLatin1Char(' '))});
        }
        EXPECT_TRUE(made_.EncodeAll(outputs));
        std::vector<QByteArray> files;
        for (const char* name : names) {
            files.push_back(ContentOf(made_.Path(QLatin1String(name))));
            EXPECT_FALSE(files.back().isEmpty()) << name;
        }
        return files;
    }
};

// Of the first page, at which the others are counted.
TEST_F(BrokenFiles, AnOggPageWithoutAPlaceChangesNoLength) {
    const char* const names[] = {"a.opus", "a.ogg"};
    for (const char* name : names) {
        const QString path = made_.Encode(QLatin1String(name), {});
        ASSERT_EQ(info_->ReadTagFromFile(path), Outcome::Ok);
        const qint64 samples = info_->Samples();
        EXPECT_GT(samples, 0);
        for (const quint64 place : {~quint64{0}, quint64{1} << 63U}) {
            QByteArray content = ContentOf(path);
            qToLittleEndian(place, content.data() + 6);
            ASSERT_EQ(
                info_->ReadTagFromFile(made_.Write(QLatin1String("broken_") + QLatin1String(name), content)),
                Outcome::Ok);
            EXPECT_EQ(info_->Samples(), samples) << name;
        }
    }
}

TEST_F(BrokenFiles, OtherKindsOfFilesAreNoAudioWhateverTheirName) {
    const QString picture = made_.Path(QStringLiteral("picture.png"));
    ASSERT_TRUE(OutputOf(QStringLiteral("ffmpeg"),
                         QStringLiteral("-v error -f lavfi -i testsrc=s=320x240:d=1 -frames:v 1 %1")
                             .arg(picture)
                             .split(QLatin1Char(' '))));
    std::mt19937 random(4);
    QByteArray noise(300000, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    const std::pair<const char*, QByteArray> contents[] = {
        {"text", QByteArray("1\n00:00:01,000 --> 00:00:02,000\nHello\n\n").repeated(900)},
        {"picture", ContentOf(picture)},
        {"program", ContentOf(QStringLiteral("/proc/self/exe"))},
        {"shell", ContentOf(QStringLiteral("/bin/sh"))},
        {"noise", noise},
        {"zeros", QByteArray(100000, '\0')},
        {"ones", QByteArray(100000, '\xFF')},
        {"empty", QByteArray()},
        {"tag only", QByteArray("ID3\3\0\0\0\0\0\0", 10)},
        {"old tag only", "TAG" + QByteArray(125, 'x')},
    };
    for (const auto& [what, bytes] : contents) {
        for (const char* extension : {"mp3", "wav", "ogg", "wma", "mpc", "dss", "mpeg", "avi"}) {
            const QString path = made_.Write(QLatin1String("x.") + QLatin1String(extension), bytes);
            EXPECT_EQ(info_->OpenInfo(path), Outcome::NotDecodable) << what << " as " << extension;
        }
    }
}

TEST_F(BrokenFiles, FoldersPipesAndMissingFilesAreNotFound) {
    ASSERT_TRUE(QDir().mkpath(made_.Path(QStringLiteral("folder.mp3"))));
    ASSERT_EQ(mkfifo(QFile::encodeName(made_.Path(QStringLiteral("pipe.mp3"))).constData(), 0600), 0);
    for (const char* name : {"folder.mp3", "pipe.mp3", "missing.mp3", "missing.raw"}) {
        EXPECT_EQ(info_->OpenInfo(made_.Path(QLatin1String(name))), Outcome::NotFound) << name;
    }
    EXPECT_EQ(info_->OpenInfo(QString()), Outcome::NotFound);
}

// A list of files is no audio, even when what it names is.
TEST_F(BrokenFiles, ListsThatNameAudioAreNotFollowed) {
    const QString song = made_.Encode(QStringLiteral("song.mp3"), {});
    ASSERT_EQ(info_->OpenInfo(song), Outcome::Ok);
    const QByteArray name = song.toUtf8();
    const QByteArray lists[] = {
        "ffconcat version 1.0\nfile 'song.mp3'\n",
        "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:3\n#EXTINF:3,\n" + name + "\n#EXT-X-ENDLIST\n",
        "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=audio 5004 RTP/AVP 14\n",
    };
    for (const QByteArray& list : lists) {
        EXPECT_EQ(info_->OpenInfo(made_.Write(QStringLiteral("list.mp3"), list)), Outcome::NotDecodable)
            << list.constData();
    }
}

TEST_F(BrokenFiles, CutFilesEndInASensibleAnswer) {
    int answers = 0;
    for (const QByteArray& good : GoodFiles()) {
        for (const double part : {0.0, 0.001, 0.01, 0.05, 0.2, 0.5, 0.9, 0.999}) {
            const auto bytes = static_cast<qsizetype>(static_cast<double>(good.size()) * part);
            const QString path = made_.Write(QStringLiteral("cut.bin"), good.left(bytes));
            EXPECT_TRUE(IsSensible(*info_, info_->OpenInfo(path))) << bytes << " of " << good.size();
            info_->ReadTagFromFile(path);
            ++answers;
        }
    }
    EXPECT_EQ(answers, 14 * 8);
}

TEST_F(BrokenFiles, SpoiltFilesEndInASensibleAnswer) {
    std::mt19937 random(11);
    for (const QByteArray& good : GoodFiles()) {
        for (int round = 0; round < 25; ++round) {
            QByteArray spoilt = good;
            const qsizetype reach = round % 2 == 0 ? std::min<qsizetype>(spoilt.size(), 300) : spoilt.size();
            for (int change = 0; change < 30; ++change) {
                const auto at = static_cast<qsizetype>(random() % static_cast<unsigned long>(reach));
                spoilt[at] = change % 3 == 0 ? '\xFF' : static_cast<char>(random());
            }
            const QString path = made_.Write(QStringLiteral("spoilt.bin"), spoilt);
            EXPECT_TRUE(IsSensible(*info_, info_->OpenInfo(path))) << round;
            info_->SetTagVersion(round % 4 < 2 ? TagKind::Id3v1 : TagKind::Id3v2);
            info_->ReadTagFromFile(path);
        }
    }
}

} // namespace

} // namespace kestrune
