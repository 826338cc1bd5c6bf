// What saving leaves in files that TagLib writes: pictures, fields unknown here, the other tags.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"

#include <gtest/gtest.h>

#include <QFile>

#include <utility>

namespace kestrune {

namespace {

class TagLibKeeping : public testing::Test {
protected:
    QString Encoded(const char* name, const char* options) {
        return made_.Encode(QLatin1String(name),
                            QString::fromLatin1(options).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    // With a picture, as players keep the cover.
    QString WithPicture(const char* name, const char* options) {
        const QString picture = made_.Path(QStringLiteral("cover.png"));
        OutputOf(
            QStringLiteral("ffmpeg"),
            QStringLiteral("-v error -y -f lavfi -i testsrc=s=64x64 -frames:v 1").split(QLatin1Char(' ')) +
                QStringList(picture));
        const QString path = made_.Path(QLatin1String(name));
        const QString all = QLatin1String("-map 0:a -map 1:v -c:v copy -disposition:v attached_pic ") +
                            QLatin1String(options);
        OutputOf(QStringLiteral("ffmpeg"),
                 QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
                             QStringLiteral("-i"), made_.Source(), QStringLiteral("-i"), picture} +
                     all.split(QLatin1Char(' '), Qt::SkipEmptyParts) + QStringList(path));
        return path;
    }

    static QByteArray PictureSum(const QString& path) {
        return OutputOf(
                   QStringLiteral("ffmpeg"),
                   QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path} +
                       QStringLiteral("-map 0:v -c copy -f streamhash -").split(QLatin1Char(' ')))
            .value_or(QByteArray());
    }

    MadeFiles made_;
};

TEST_F(TagLibKeeping, PicturesStay) {
    const std::pair<const char*, const char*> kinds[] = {
        {"a.flac", ""}, {"a.m4a", ""}, {"a.mp3", "-id3v2_version 4"}};
    for (const auto& [name, options] : kinds) {
        SCOPED_TRACE(name);
        const QString path = WithPicture(name, options);
        const QByteArray before = PictureSum(path);
        ASSERT_TRUE(before.contains("0,v,")) << before.constData();
        ASSERT_EQ(SaveFields(path, UnicodeFields(), TagKind::Id3v2), Outcome::Ok);
        EXPECT_EQ(PictureSum(path), before);
        EXPECT_EQ(FieldsOf(path, TagKind::Id3v2).title, UnicodeFields().title);
    }
}

// Comments as vorbiscomment lists them.
QStringList Comments(const QString& path) {
    const auto output =
        OutputOf(QStringLiteral("vorbiscomment"), {QStringLiteral("-l"), QStringLiteral("-R"), path});
    QStringList comments;
    for (const QString& line : QString::fromUtf8(output.value_or(QByteArray())).split(QLatin1Char('\n'))) {
        if (!line.isEmpty()) {
            comments << line;
        }
    }
    return comments;
}

TEST_F(TagLibKeeping, AnotherProgramsOggCommentsStayAndItReadsTheNewOnes) {
    const QString path = Encoded("a.ogg", "-t 1 -c:a libvorbis -map_metadata -1");
    const QString list =
        made_.Write(QStringLiteral("list.txt"),
                    QString::fromUtf8("Title=Theirs\nmood=calm\nMOOD=bright\nTRACKNUMBER=2/9\n"
                                      "replaygain_track_gain=-3.10 dB\nOrt=Zürich\nARTIST=One\n"
                                      "ARTIST=Two\n")
                        .toUtf8());
    ASSERT_TRUE(OutputOf(QStringLiteral("vorbiscomment"),
                         {QStringLiteral("-w"), QStringLiteral("-R"), QStringLiteral("-c"), list, path}));
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Theirs"));
    EXPECT_EQ(fields.track, 2);
    fields.title = QString::fromUtf8("Ωδή");
    fields.track = 3;
    fields.composer = QStringLiteral("Writer");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    const QStringList wanted = {QString::fromUtf8("Title=Ωδή"),
                                QStringLiteral("mood=calm"),
                                QStringLiteral("MOOD=bright"),
                                QStringLiteral("TRACKNUMBER=3/9"),
                                QStringLiteral("replaygain_track_gain=-3.10 dB"),
                                QString::fromUtf8("Ort=Zürich"),
                                QStringLiteral("ARTIST=One"),
                                QStringLiteral("ARTIST=Two"),
                                QStringLiteral("COMPOSER=Writer")};
    EXPECT_EQ(Comments(path), wanted);
    ASSERT_TRUE(OutputOf(QStringLiteral("vorbiscomment"),
                         {QStringLiteral("-a"), QStringLiteral("-t"), QStringLiteral("ALBUM=Again"), path}));
    EXPECT_EQ(FieldsOf(path).album, QStringLiteral("Again"));
}

TEST_F(TagLibKeeping, CommentsOfManyPagesKeepTheSound) {
    const QString path = Encoded("long.ogg", "-t 2 -c:a libvorbis");
    const QByteArray before = SoundSum(path);
    TagFields fields = FieldsOf(path);
    // A header of several pages, then one of a page again: all later pages are numbered anew twice.
    for (const int length : {200000, 10}) {
        fields.comment = QString(length, QLatin1Char('c'));
        ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
        EXPECT_EQ(FieldsOf(path).comment, fields.comment);
        EXPECT_EQ(SoundSum(path), before);
        const auto judged = OutputOf(QStringLiteral("ogginfo"), {path});
        EXPECT_TRUE(judged && !judged->contains("WARNING") && !judged->contains("ERROR"));
    }
}

TEST_F(TagLibKeeping, ASecondStreamBehindTheFirstStays) {
    const QByteArray second = ContentOf(Encoded("second.ogg", "-t 1 -c:a libvorbis"));
    const QString path = made_.Write(QStringLiteral("chain.ogg"),
                                     ContentOf(Encoded("first.ogg", "-t 1 -c:a libvorbis")) + second);
    TagFields fields = FieldsOf(path);
    fields.comment = QString(200000, QLatin1Char('c'));
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    EXPECT_TRUE(ContentOf(path).endsWith(second));
    EXPECT_EQ(FieldsOf(path).comment, fields.comment);
}

TEST_F(TagLibKeeping, BlocksOfFlacStay) {
    const QByteArray before = ContentOf(Encoded("a.flac", "-t 1"));
    // An application's block behind the stream's own.
    const QByteArray block = QByteArray(1, '\2') + Big(12, 3) + "riffunknown!";
    const qsizetype behindInfo = 4 + 4 + 34;
    const QString path =
        made_.Write(QStringLiteral("b.flac"), before.left(behindInfo) + block + before.mid(behindInfo));
    const QByteArray sound = SoundSum(path);
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    EXPECT_TRUE(ContentOf(path).contains(block));
    EXPECT_EQ(SoundSum(path), sound);
    // Padding gave the room.
    EXPECT_EQ(ContentOf(path).size(), before.size() + block.size());
}

TEST_F(TagLibKeeping, FlacWithTagsAroundItIsSaved) {
    const QByteArray flac = ContentOf(Encoded("a.flac", "-t 1"));
    const QByteArray tag =
        QByteArray("ID3\x03\0\0\0\0\0\x0F", 10) + "TIT2" + Big(5) + QByteArray("\0\0\0Gong", 7);
    const QString path = made_.Write(QStringLiteral("around.flac"), tag + flac);
    const QByteArray sound = SoundSum(path);
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    ExpectFields(FieldsOf(path), PlainFields());
    EXPECT_EQ(SoundSum(path), sound);
}

TEST_F(TagLibKeeping, FlacWithoutCommentsOrPaddingIsSaved) {
    const QByteArray flac = ContentOf(Encoded("a.flac", "-t 1"));
    const qsizetype sound = flac.indexOf("\xFF\xF8");
    ASSERT_GT(sound, 0);
    const QByteArray bare = "fLaC\x80" + flac.mid(5, 3 + 34) + flac.mid(sound);
    const QString path = made_.Write(QStringLiteral("bare.flac"), bare);
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    ExpectFields(FieldsOf(path), PlainFields());
    EXPECT_TRUE(ContentOf(path).endsWith(flac.mid(sound)));
    EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("title")), QStringLiteral("Song"));
}

// FLAC allows 16 MiB to each.
TEST_F(TagLibKeeping, FlacWithTensOfMegabytesOfPicturesIsSaved) {
    const QByteArray flac = ContentOf(Encoded("a.flac", "-t 1 -metadata title=Old"));
    const qsizetype behindInfo = 4 + 4 + 34;
    QByteArray pictures;
    for (const char fill : {'a', 'b', 'c'}) {
        const QByteArray picture(10'000'000, fill);
        const QByteArray block = Big(3) + Big(9) + "image/png" + Big(0) + Big(1) + Big(1) + Big(24) + Big(0) +
                                 Big(static_cast<quint32>(picture.size())) + picture;
        pictures += '\6' + Big(static_cast<quint32>(block.size()), 3) + block;
    }
    const QString path =
        made_.Write(QStringLiteral("b.flac"), flac.left(behindInfo) + pictures + flac.mid(behindInfo));
    const QByteArray sound = SoundSum(path);
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Old"));
    fields.title = QStringLiteral("New");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    ExpectFields(FieldsOf(path), fields);
    EXPECT_EQ(SoundSum(path), sound);
    EXPECT_TRUE(ContentOf(path).mid(behindInfo).startsWith(pictures));
}

TEST_F(TagLibKeeping, TextsOfWindowsMediaAreReadWhereOtherWritersPutThem) {
    const QString path = Encoded("a.wma", "-t 1 -b:a 64k -metadata title=Old -metadata artist=Band "
                                          "-metadata comment=Remark -metadata copyright=1998");
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Old"));
    EXPECT_EQ(fields.artist, QStringLiteral("Band"));
    EXPECT_EQ(fields.comment, QStringLiteral("Remark"));
    EXPECT_EQ(fields.copyright, QStringLiteral("1998"));
    fields.title = QStringLiteral("New");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    ExpectFields(FieldsOf(path), fields);
    EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("comment")), QStringLiteral("Remark"));
    fields.comment = QStringLiteral("Other");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    ExpectFields(FieldsOf(path), fields);
    EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("comment")), QStringLiteral("Other"));
}

TEST_F(TagLibKeeping, UnknownAttributesOfWindowsMediaStay) {
    const QString path = Encoded(
        "a.wma", "-t 1 -b:a 64k -metadata title=Old -metadata WM/Mood=calm -metadata publisher=House");
    ASSERT_EQ(SaveFields(path, UnicodeFields()), Outcome::Ok);
    const QHash<QString, QString> tags = TagsByFfprobe(path);
    EXPECT_EQ(tags.value(QStringLiteral("wm/mood")), QStringLiteral("calm"));
    EXPECT_EQ(tags.value(QStringLiteral("publisher")), QStringLiteral("House"));
    EXPECT_EQ(tags.value(QStringLiteral("title")), UnicodeFields().title);
}

} // namespace

} // namespace kestrune
