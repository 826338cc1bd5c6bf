#include "backends/tags/made_files.h"
#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

#include <utility>

namespace kestrune {

namespace {

// An ID3v2.3 frame (id, size, flags, content).
QByteArray Frame(const char* id, const QByteArray& content) {
    const auto size = static_cast<quint32>(content.size());
    QByteArray frame(id, 4);
    for (int shift = 24; shift >= 0; shift -= 8) {
        frame.append(static_cast<char>(size >> shift));
    }
    return frame + QByteArray(2, '\0') + content;
}

QByteArray Latin1Frame(const char* id, const QByteArray& text) {
    return Frame(id, QByteArray(1, '\0') + text);
}

// With the byte order mark that the coding asks for.
QByteArray Utf16Frame(const char* id, const QString& text) {
    QByteArray content("\x01\xFF\xFE", 3);
    for (const QChar unit : text) {
        content.append(static_cast<char>(unit.unicode() & 0xFF));
        content.append(static_cast<char>(unit.unicode() >> 8));
    }
    return Frame(id, content);
}

QByteArray Id3v2(const QByteArray& frames) {
    QByteArray tag("ID3\x03\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7) {
        tag.append(static_cast<char>(frames.size() >> shift & 0x7F));
    }
    return tag + frames;
}

QByteArray Padded(const QByteArray& text, int width) {
    return text.leftJustified(width, '\0', true);
}

QByteArray Id3v1(const QByteArray& title, const QByteArray& artist, char track, char genre) {
    return "TAG" + Padded(title, 30) + Padded(artist, 30) + Padded("Old Album", 30) + "1999" +
           Padded("Old comment", 28) + QByteArray(1, '\0') + track + genre;
}

class TagFieldsOfFiles : public testing::Test {
protected:
    static void SetUpTestSuite() {
        MadeFiles made;
        const QString path =
            made.Encode(QStringLiteral("bare.mp3"),
                        QStringLiteral("-t 1 -id3v2_version 0 -map_metadata -1").split(QLatin1Char(' ')));
        bareMp3_ = new QByteArray(ContentOf(path));
        ASSERT_FALSE(bareMp3_->isEmpty());
    }
    static void TearDownTestSuite() { delete std::exchange(bareMp3_, nullptr); }

    static QByteArray* bareMp3_;
    MadeFiles made_;
    std::unique_ptr<KSTAudioInformation2> info_ = MakeAudioInformation();

    // A short MP3 without any tag.
    static QByteArray BareMp3() { return *bareMp3_; }

    TagFields ReadBack(const QString& path, TagKind kind) {
        info_->SetTagVersion(kind);
        EXPECT_EQ(info_->ReadTagFromFile(path), Outcome::Ok);
        return info_->Tag();
    }

    TagFields ReadBack(const QByteArray& bytes, TagKind kind) {
        return ReadBack(made_.Write(QStringLiteral("tagged.mp3"), bytes), kind);
    }
};

QByteArray* TagFieldsOfFiles::bareMp3_ = nullptr;

TEST_F(TagFieldsOfFiles, Id3v2HasAllThirteen) {
    const QByteArray tag =
        Id3v2(Latin1Frame("TIT2", "Song") + Latin1Frame("TPE1", "Band") + Latin1Frame("TALB", "Record") +
              Latin1Frame("TCON", "(17)") + Latin1Frame("TCOP", "1998 Label") +
              Frame("COMM", QByteArray("\0eng\0Remark", 11)) + Latin1Frame("TYER", "1998") +
              Latin1Frame("TRCK", "7/12") + Latin1Frame("TCOM", "Writer") +
              Frame("WXXX", QByteArray("\0\0http://example.org/", 21)) + Latin1Frame("TENC", "Coder") +
              Latin1Frame("TOPE", "First Band"));
    const TagFields fields = ReadBack(tag + BareMp3(), TagKind::Id3v2);
    EXPECT_EQ(fields.title, QStringLiteral("Song"));
    EXPECT_EQ(fields.artist, QStringLiteral("Band"));
    EXPECT_EQ(fields.album, QStringLiteral("Record"));
    EXPECT_EQ(fields.genre, 17);
    EXPECT_EQ(fields.genreText, QString());
    EXPECT_EQ(fields.copyright, QStringLiteral("1998 Label"));
    EXPECT_EQ(fields.comment, QStringLiteral("Remark"));
    EXPECT_EQ(fields.year, 1998);
    EXPECT_EQ(fields.track, 7);
    EXPECT_EQ(fields.composer, QStringLiteral("Writer"));
    EXPECT_EQ(fields.url, QStringLiteral("http://example.org/"));
    EXPECT_EQ(fields.encodedBy, QStringLiteral("Coder"));
    EXPECT_EQ(fields.originalArtist, QStringLiteral("First Band"));
}

TEST_F(TagFieldsOfFiles, Id3v2TextIsReadInEachCoding) {
    const QString greek = QString::fromUtf8("Ωδή στη χαρά");
    EXPECT_EQ(ReadBack(Id3v2(Utf16Frame("TIT2", greek)) + BareMp3(), TagKind::Id3v2).title, greek);
    EXPECT_EQ(ReadBack(Id3v2(Latin1Frame("TIT2", "Caf\xE9")) + BareMp3(), TagKind::Id3v2).title,
              QString::fromUtf8("Café"));
    const QString utf8 = made_.Encode(QStringLiteral("utf8.mp3"),
                                      {QStringLiteral("-id3v2_version"), QStringLiteral("4"),
                                       QStringLiteral("-metadata"), QStringLiteral("title=") + greek});
    EXPECT_EQ(ReadBack(utf8, TagKind::Id3v2).title, greek);
    const QString utf16 = made_.Encode(QStringLiteral("utf16.mp3"),
                                       {QStringLiteral("-id3v2_version"), QStringLiteral("3"),
                                        QStringLiteral("-metadata"), QStringLiteral("title=") + greek});
    EXPECT_EQ(ReadBack(utf16, TagKind::Id3v2).title, greek);
}

TEST_F(TagFieldsOfFiles, GenreTextIsKeptAsItStands) {
    const TagFields own = ReadBack(Id3v2(Latin1Frame("TCON", "Music for Lifts")) + BareMp3(), TagKind::Id3v2);
    EXPECT_EQ(own.genreText, QStringLiteral("Music for Lifts"));
    EXPECT_EQ(own.genre, 255);
    const TagFields known = ReadBack(Id3v2(Latin1Frame("TCON", "Hip-Hop")) + BareMp3(), TagKind::Id3v2);
    EXPECT_EQ(known.genreText, QStringLiteral("Hip-Hop"));
    EXPECT_EQ(known.genre, 7);
    const TagFields both = ReadBack(Id3v2(Latin1Frame("TCON", "(7)Old School")) + BareMp3(), TagKind::Id3v2);
    EXPECT_EQ(both.genreText, QStringLiteral("Old School"));
    EXPECT_EQ(both.genre, 7);
}

TEST_F(TagFieldsOfFiles, EachKindShowsItsOwnTag) {
    const QByteArray bytes =
        Id3v2(Latin1Frame("TIT2", "New Song")) + BareMp3() + Id3v1("Old Song", "Old Band", 3, 20);
    const TagFields old = ReadBack(bytes, TagKind::Id3v1);
    EXPECT_EQ(old.title, QStringLiteral("Old Song"));
    EXPECT_EQ(old.artist, QStringLiteral("Old Band"));
    EXPECT_EQ(old.album, QStringLiteral("Old Album"));
    EXPECT_EQ(old.comment, QStringLiteral("Old comment"));
    EXPECT_EQ(old.year, 1999);
    EXPECT_EQ(old.track, 3);
    EXPECT_EQ(old.genre, 20);
    const TagFields fresh = ReadBack(bytes, TagKind::Id3v2);
    EXPECT_EQ(fresh.title, QStringLiteral("New Song"));
    EXPECT_EQ(fresh.artist, QString());
    EXPECT_EQ(fresh.genre, 255);
}

TEST_F(TagFieldsOfFiles, MissingTagGivesEmptyFields) {
    const QByteArray bare = BareMp3();
    for (const TagKind kind : {TagKind::Id3v1, TagKind::Id3v2}) {
        info_->Tag().title = QStringLiteral("left over");
        const TagFields fields = ReadBack(bare, kind);
        EXPECT_EQ(fields.title, QString());
        EXPECT_EQ(fields.year, 0);
        EXPECT_EQ(fields.genre, 255);
    }
}

TEST_F(TagFieldsOfFiles, Id3v1IsTheKindAtTheStart) {
    const QByteArray bytes =
        Id3v2(Latin1Frame("TIT2", "New Song")) + BareMp3() + Id3v1("Old Song", "Old Band", 3, 20);
    ASSERT_EQ(info_->ReadTagFromFile(made_.Write(QStringLiteral("both.mp3"), bytes)), Outcome::Ok);
    EXPECT_EQ(info_->Tag().title, QStringLiteral("Old Song"));
}

TEST_F(TagFieldsOfFiles, Id3v1TextIsUtf8IfItCanBe) {
    EXPECT_EQ(ReadBack(BareMp3() + Id3v1("Caf\xC3\xA9", "B", 0, 0), TagKind::Id3v1).title,
              QString::fromUtf8("Café"));
    EXPECT_EQ(ReadBack(BareMp3() + Id3v1("Caf\xE9 \x96 \x93now\x94", "B", 0, 0), TagKind::Id3v1).title,
              QString::fromUtf8("Café – “now”"));
}

TEST_F(TagFieldsOfFiles, Id3v1GenresBehindTheListAreNone) {
    EXPECT_EQ(ReadBack(BareMp3() + Id3v1("S", "B", 0, static_cast<char>(147)), TagKind::Id3v1).genre, 147);
    EXPECT_EQ(ReadBack(BareMp3() + Id3v1("S", "B", 0, static_cast<char>(148)), TagKind::Id3v1).genre, 255);
    EXPECT_EQ(ReadBack(BareMp3() + Id3v1("S", "B", 0, static_cast<char>(255)), TagKind::Id3v1).genre, 255);
}

TEST_F(TagFieldsOfFiles, ProbeTakesEachNameFromTheBestTagThatHasIt) {
    const QByteArray old = Id3v1("Old Song", "Old Band", 0, 0);
    ASSERT_EQ(info_->OpenInfo(made_.Write(QStringLiteral("a.mp3"),
                                          Id3v2(Latin1Frame("TIT2", "New Song")) + BareMp3() + old)),
              Outcome::Ok);
    EXPECT_EQ(info_->GetTitle(), QStringLiteral("New Song"));
    EXPECT_EQ(info_->GetArtist(), QStringLiteral("Old Band"));
    ASSERT_EQ(info_->OpenInfo(made_.Write(QStringLiteral("a.mp3"), BareMp3() + old)), Outcome::Ok);
    EXPECT_EQ(info_->GetTitle(), QStringLiteral("Old Song"));
    ASSERT_EQ(info_->OpenInfo(made_.Write(QStringLiteral("a.mp3"), BareMp3())), Outcome::Ok);
    EXPECT_EQ(info_->GetTitle(), QString());
}

TEST_F(TagFieldsOfFiles, BlankTitleIsKept) {
    const QByteArray bytes =
        Id3v2(Latin1Frame("TIT2", "  ")) + BareMp3() + Id3v1("Old Song", "Old Band", 0, 0);
    ASSERT_EQ(info_->OpenInfo(made_.Write(QStringLiteral("a.mp3"), bytes)), Outcome::Ok);
    EXPECT_EQ(info_->GetTitle(), QStringLiteral("  "));
}

TEST_F(TagFieldsOfFiles, OggCommentsAreReadByName) {
    const QString path = made_.Path(QStringLiteral("a.ogg"));
    ASSERT_TRUE(OutputOf(QStringLiteral("oggenc"), {QStringLiteral("-Q"),
                                                    QStringLiteral("-o"),
                                                    path,
                                                    QStringLiteral("-t"),
                                                    QString::fromUtf8("Größe"),
                                                    QStringLiteral("-a"),
                                                    QStringLiteral("Band"),
                                                    QStringLiteral("-l"),
                                                    QStringLiteral("Record"),
                                                    QStringLiteral("-G"),
                                                    QStringLiteral("Jazz"),
                                                    QStringLiteral("-N"),
                                                    QStringLiteral("9"),
                                                    QStringLiteral("-d"),
                                                    QStringLiteral("2003-05-01"),
                                                    QStringLiteral("-c"),
                                                    QStringLiteral("COMPOSER=Writer"),
                                                    QStringLiteral("-c"),
                                                    QStringLiteral("COPYRIGHT=Label"),
                                                    QStringLiteral("-c"),
                                                    QStringLiteral("ENCODED-BY=Coder"),
                                                    made_.Source()}));
    for (const TagKind kind : {TagKind::Id3v1, TagKind::Id3v2}) {
        const TagFields fields = ReadBack(path, kind);
        EXPECT_EQ(fields.title, QString::fromUtf8("Größe"));
        EXPECT_EQ(fields.artist, QStringLiteral("Band"));
        EXPECT_EQ(fields.album, QStringLiteral("Record"));
        EXPECT_EQ(fields.genre, 8);
        EXPECT_EQ(fields.genreText, QStringLiteral("Jazz"));
        EXPECT_EQ(fields.track, 9);
        EXPECT_EQ(fields.year, 2003);
        EXPECT_EQ(fields.composer, QStringLiteral("Writer"));
        EXPECT_EQ(fields.copyright, QStringLiteral("Label"));
        EXPECT_EQ(fields.encodedBy, QStringLiteral("Coder"));
    }
}

TEST_F(TagFieldsOfFiles, OtherKindsGiveTheirFields) {
    const QStringList metadata{QStringLiteral("-t"),        QStringLiteral("1"),
                               QStringLiteral("-metadata"), QString::fromUtf8("title=Größe"),
                               QStringLiteral("-metadata"), QStringLiteral("artist=Band"),
                               QStringLiteral("-metadata"), QStringLiteral("copyright=Label")};
    for (const char* name : {"a.wav", "a.wma", "a.flac", "a.m4a", "a.wv"}) {
        SCOPED_TRACE(name);
        const QString path = made_.Encode(QLatin1String(name), metadata);
        const TagFields fields = ReadBack(path, TagKind::Id3v1);
        EXPECT_EQ(fields.title, QString::fromUtf8("Größe"));
        EXPECT_EQ(fields.artist, QStringLiteral("Band"));
        EXPECT_EQ(fields.copyright, QStringLiteral("Label"));
        ASSERT_EQ(info_->OpenInfo(path), Outcome::Ok);
        EXPECT_EQ(info_->GetTitle(), QString::fromUtf8("Größe"));
        EXPECT_EQ(info_->GetArtist(), QStringLiteral("Band"));
    }
}

} // namespace

} // namespace kestrune
