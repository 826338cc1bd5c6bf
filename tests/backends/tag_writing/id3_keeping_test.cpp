// What saving to MPEG files leaves as it was, and how other programs' tags are changed.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"

#include <gtest/gtest.h>

#include <utility>

namespace kestrune {

namespace {

QByteArray Frame3(const char* id, const QByteArray& content, const QByteArray& flags = QByteArray(2, '\0')) {
    return QByteArray(id, 4) + Big(static_cast<quint32>(content.size())) + flags + content;
}

QByteArray Frame4(const char* id, const QByteArray& content, const QByteArray& flags = QByteArray(2, '\0')) {
    return QByteArray(id, 4) + Big(static_cast<quint32>(content.size()), 4, 7) + flags + content;
}

QByteArray Frame2(const char* id, const QByteArray& content) {
    return QByteArray(id, 3) + Big(static_cast<quint32>(content.size()), 3) + content;
}

QByteArray Tag(int version, const QByteArray& body, char flags = '\0') {
    return "ID3" + QByteArray(1, static_cast<char>(version)) + '\0' + flags +
           Big(static_cast<quint32>(body.size()), 4, 7) + body;
}

QByteArray Latin1Text(const char* text) {
    return QByteArray(1, '\0') + text;
}

// A picture with the bytes that sound begins with.
QByteArray Picture() {
    return QByteArray("\0image/jpeg\0\3\0\xFF\xD8\xFF\xE0\xFF\x00\xFF", 22);
}

class Id3Keeping : public testing::Test {
protected:
    static void SetUpTestSuite() {
        MadeFiles made;
        sound_ = new QByteArray(ContentOf(
            made.Encode(QStringLiteral("a.mp3"),
                        QStringLiteral("-t 1 -id3v2_version 0 -map_metadata -1").split(QLatin1Char(' ')))));
        ASSERT_FALSE(sound_->isEmpty());
    }
    static void TearDownTestSuite() { delete std::exchange(sound_, nullptr); }

    static QByteArray Sound() { return *sound_; }
    QString Write(const QByteArray& bytes) { return made_.Write(QStringLiteral("a.mp3"), bytes); }
    // The file after its title was set.
    QByteArray Titled(const QByteArray& bytes, TagKind kind = TagKind::Id3v2) {
        const QString path = Write(bytes);
        TagFields fields = FieldsOf(path, kind);
        fields.title = QStringLiteral("Song");
        EXPECT_EQ(SaveFields(path, fields, kind), Outcome::Ok);
        EXPECT_EQ(FieldsOf(path, kind).title, QStringLiteral("Song"));
        return ContentOf(path);
    }

    static QByteArray* sound_;
    MadeFiles made_;
};

QByteArray* Id3Keeping::sound_ = nullptr;

TEST_F(Id3Keeping, EachTagIsLeftAloneByASaveOfTheOther) {
    MadeFiles made;
    const QString path = Write(Sound());
    TagFields second = UnicodeFields();
    ASSERT_EQ(SaveFields(path, second, TagKind::Id3v2), Outcome::Ok);
    const QByteArray withSecond = ContentOf(path);
    ASSERT_TRUE(withSecond.endsWith(Sound()));
    ASSERT_EQ(SaveFields(path, PlainFields(), TagKind::Id3v1), Outcome::Ok);
    const QByteArray withBoth = ContentOf(path);
    EXPECT_EQ(withBoth.left(withSecond.size()), withSecond);
    EXPECT_EQ(withBoth.size(), withSecond.size() + 128);
    second.title = QStringLiteral("Another");
    ASSERT_EQ(SaveFields(path, second, TagKind::Id3v2), Outcome::Ok);
    EXPECT_EQ(ContentOf(path).right(128), withBoth.right(128));
    EXPECT_EQ(FieldsOf(path, TagKind::Id3v1).title, QStringLiteral("Song"));
    ASSERT_EQ(SaveFields(path, TagFields(), TagKind::Id3v1), Outcome::Ok);
    ASSERT_EQ(SaveFields(path, TagFields(), TagKind::Id3v2), Outcome::Ok);
    EXPECT_EQ(ContentOf(path), Sound());
}

TEST_F(Id3Keeping, UnknownFramesStayByteForByte) {
    const QByteArray before = Frame3("APIC", Picture()) + Frame3("PRIV", QByteArray("me\0\xFF\xFB\x90", 6));
    // Compressed, with the length before that; in a group; encrypted.
    const QByteArray behind = Frame3("TXXX", Big(9) + "not deflated", QByteArray("\0\x80", 2)) +
                              Frame3("GEOB", "\x01 grouped", QByteArray("\x40\x20", 2)) +
                              Frame3("XYZ9", "\x05 crypted", QByteArray("\0\x40", 2)) +
                              Frame3("COMM", QByteArray("\0engiTunNORM\0 0000", 18)) +
                              Frame3("WXXX", QByteArray("\0Shop\0http://example.org/shop", 29));
    const QByteArray padding(200, '\0');
    const QByteArray old = Tag(3, before + Frame3("TIT2", Latin1Text("Gong")) + behind + padding) + Sound();
    EXPECT_EQ(Titled(old), Tag(3, before + Frame3("TIT2", Latin1Text("Song")) + behind + padding) + Sound());
}

TEST_F(Id3Keeping, VersionAndRoomStay) {
    const QByteArray picture = Frame4("APIC", Picture());
    const QByteArray old = Tag(4, Frame4("TIT2", QByteArray("\3A longer title\0", 16)) + picture) + Sound();
    const QByteArray wanted = Tag(4, Frame4("TIT2", "\3Song") + picture + QByteArray(11, '\0')) + Sound();
    EXPECT_EQ(Titled(old), wanted);
    const QByteArray second = Tag(2, Frame2("TT2", Latin1Text("Gong")) + Frame2("PIC", "\0JPG\3")) + Sound();
    EXPECT_EQ(Titled(second), Tag(2, Frame2("TT2", Latin1Text("Song")) + Frame2("PIC", "\0JPG\3")) + Sound());
}

TEST_F(Id3Keeping, AllFieldsPassThroughEachVersion) {
    for (const int version : {2, 3, 4}) {
        SCOPED_TRACE(version);
        const QByteArray frame = version == 2   ? Frame2("TT2", Latin1Text("Old"))
                                 : version == 3 ? Frame3("TIT2", Latin1Text("Old"))
                                                : Frame4("TIT2", Latin1Text("Old"));
        const QString path = Write(Tag(version, frame) + Sound());
        for (const TagFields& fields : {PlainFields(), UnicodeFields()}) {
            ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
            ExpectFields(FieldsOf(path, TagKind::Id3v2), fields);
            EXPECT_EQ(ContentOf(path)[3], static_cast<char>(version));
            EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("title")), fields.title);
        }
    }
}

TEST_F(Id3Keeping, AnUnsynchronisedTagStaysSo) {
    // A zero follows each 0xFF that would look like a frame of sound.
    const QByteArray safePicture = Frame3("APIC", Picture())
                                       .replace(QByteArray("\xFF\xE0", 2), QByteArray("\xFF\0\xE0", 3))
                                       .replace(QByteArray("\xFF\0\xFF", 3), QByteArray("\xFF\0\0\xFF", 4)) +
                                   '\0';
    const QByteArray old = Tag(3, Frame3("TIT2", Latin1Text("Gong")) + safePicture, '\x80') + Sound();
    EXPECT_EQ(FieldsOf(Write(old), TagKind::Id3v2).title, QStringLiteral("Gong"));
    EXPECT_EQ(Titled(old), Tag(3, Frame3("TIT2", Latin1Text("Song")) + safePicture, '\x80') + Sound());

    const QByteArray picture = Frame4("APIC", Big(23, 4, 7) + "\xFF\0\xE0", QByteArray("\0\3", 2));
    const QByteArray old4 =
        Tag(4, picture + Frame4("TIT2", "\3Gong", QByteArray("\0\2", 2)), '\x80') + Sound();
    EXPECT_EQ(Titled(old4),
              Tag(4, picture + Frame4("TIT2", "\3Song", QByteArray("\0\2", 2)), '\x80') + Sound());
}

TEST_F(Id3Keeping, ExtendedHeadersAndFootersGo) {
    const QByteArray extended = Big(6) + QByteArray(6, '\0');
    const QByteArray title = Frame3("TIT2", Latin1Text("Gong"));
    EXPECT_EQ(Titled(Tag(3, extended + title, '\x40') + Sound()),
              Tag(3, Frame3("TIT2", Latin1Text("Song")) + QByteArray(10, '\0')) + Sound());
    const QByteArray body = Frame4("TIT2", "\3Gong");
    const QByteArray footer = "3DI" + Tag(4, body, '\x10').mid(3, 7);
    EXPECT_EQ(Titled(Tag(4, body, '\x10') + footer + Sound()),
              Tag(4, Frame4("TIT2", "\3Song") + QByteArray(10, '\0')) + Sound());
}

TEST_F(Id3Keeping, BytesThatAreNoFramesStay) {
    const QByteArray strange = "~no frame~\xFF\x01";
    const QByteArray old = Tag(3, Frame3("TIT2", Latin1Text("Gong")) + strange) + Sound();
    EXPECT_EQ(Titled(old), Tag(3, Frame3("TIT2", Latin1Text("Song")) + strange) + Sound());
}

TEST_F(Id3Keeping, NumberOfTracksAndOtherCommentsStay) {
    const QByteArray described = Frame3("COMM", QByteArray("\0gerMood\0calm", 13));
    const QString path = Write(
        Tag(3, Frame3("TRCK", Latin1Text("3/12")) + described + Frame3("COMM", QByteArray("\0ger\0alt", 8))) +
        Sound());
    TagFields fields = FieldsOf(path, TagKind::Id3v2);
    EXPECT_EQ(fields.comment, QStringLiteral("alt"));
    fields.track = 4;
    fields.comment = QStringLiteral("neu");
    ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
    EXPECT_EQ(ContentOf(path), Tag(3, Frame3("TRCK", Latin1Text("4/12")) + described +
                                          Frame3("COMM", QByteArray("\0ger\0neu", 8))) +
                                   Sound());
}

TEST_F(Id3Keeping, GenreNumberAndTextPassThroughEachVersion) {
    TagFields fields;
    fields.title = QStringLiteral("x");
    const std::pair<qint16, QString> genres[] = {{17, {}},
                                                 {132, {}},
                                                 {17, QStringLiteral("Rock")},
                                                 {9, QStringLiteral("Iron")},
                                                 {255, QStringLiteral("Lift Music")},
                                                 {255, {}}};
    for (const QByteArray& old : {Sound(), Tag(4, Frame4("TIT2", "\3y")) + Sound()}) {
        for (const auto& [number, text] : genres) {
            SCOPED_TRACE(testing::Message() << number << ' ' << text.toStdString());
            const QString path = Write(old);
            fields.genre = number;
            fields.genreText = text;
            ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
            ExpectFields(FieldsOf(path, TagKind::Id3v2), fields);
        }
    }
}

TEST_F(Id3Keeping, TheOtherHalfOfTheGenreFollows) {
    const QString path = Write(Tag(3, Frame3("TCON", Latin1Text("Rock"))) + Sound());
    TagFields fields = FieldsOf(path, TagKind::Id3v2);
    ASSERT_EQ(fields.genre, 17);
    fields.genre = 9;
    ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
    fields = FieldsOf(path, TagKind::Id3v2);
    EXPECT_EQ(fields.genreText, QStringLiteral("Metal"));
    fields.genreText = QStringLiteral("Blues");
    ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
    EXPECT_EQ(FieldsOf(path, TagKind::Id3v2).genre, 0);
}

TEST_F(Id3Keeping, MutagenReadsAllThirteen) {
    const QString path = Write(Sound());
    for (const TagFields& fields : {PlainFields(), UnicodeFields()}) {
        ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
        const QHash<QString, QString> frames = FramesByMutagen(path);
        EXPECT_EQ(frames.value(QStringLiteral("TIT2")), fields.title);
        EXPECT_EQ(frames.value(QStringLiteral("TPE1")), fields.artist);
        EXPECT_EQ(frames.value(QStringLiteral("TALB")), fields.album);
        EXPECT_EQ(frames.value(QStringLiteral("TCOP")), fields.copyright);
        EXPECT_EQ(frames.value(QStringLiteral("TCON")), fields.genreText);
        EXPECT_EQ(frames.value(QStringLiteral("TYER")), QString::number(fields.year));
        EXPECT_EQ(frames.value(QStringLiteral("TRCK")), QString::number(fields.track));
        EXPECT_EQ(frames.value(QStringLiteral("TCOM")), fields.composer);
        EXPECT_EQ(frames.value(QStringLiteral("TENC")), fields.encodedBy);
        EXPECT_EQ(frames.value(QStringLiteral("TOPE")), fields.originalArtist);
        EXPECT_TRUE(frames.value(QStringLiteral("COMM")).endsWith(fields.comment));
        EXPECT_TRUE(frames.value(QStringLiteral("WXXX")).endsWith(fields.url));
    }
}

TEST_F(Id3Keeping, MutagensTagIsReadAndChanged) {
    const QString path = Write(Sound());
    ASSERT_TRUE(OutputOf(QStringLiteral("mid3v2"),
                         {QStringLiteral("-t"), QStringLiteral("Theirs"), QStringLiteral("-a"),
                          QString::fromUtf8("Кино"), QStringLiteral("--TBPM"), QStringLiteral("120"),
                          QStringLiteral("-T"), QStringLiteral("2/9"), QStringLiteral("-g"),
                          QStringLiteral("Jazz"), path}));
    TagFields fields = FieldsOf(path, TagKind::Id3v2);
    EXPECT_EQ(fields.title, QStringLiteral("Theirs"));
    EXPECT_EQ(fields.artist, QString::fromUtf8("Кино"));
    EXPECT_EQ(fields.track, 2);
    EXPECT_EQ(fields.genre, 8);
    fields.track = 3;
    fields.album = QStringLiteral("Ours");
    ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
    const QHash<QString, QString> frames = FramesByMutagen(path);
    EXPECT_EQ(frames.value(QStringLiteral("TIT2")), QStringLiteral("Theirs"));
    EXPECT_EQ(frames.value(QStringLiteral("TBPM")), QStringLiteral("120"));
    EXPECT_EQ(frames.value(QStringLiteral("TRCK")), QStringLiteral("3/9"));
    EXPECT_EQ(frames.value(QStringLiteral("TALB")), QStringLiteral("Ours"));
    ASSERT_TRUE(OutputOf(QStringLiteral("mid3v2"), {QStringLiteral("-A"), QStringLiteral("Again"), path}));
    EXPECT_EQ(FieldsOf(path, TagKind::Id3v2).album, QStringLiteral("Again"));
}

// Damage at any place is met with a save that keeps the sound, or a refusal that keeps the file.
TEST_F(Id3Keeping, BrokenTagsAreSafe) {
    const QByteArray good =
        Tag(4, Frame4("TIT2", "\3Gong") + Frame4("APIC", Picture()) + QByteArray(40, '\0'));
    for (qsizetype at = 3; at < 60; ++at) {
        for (const char byte : {'\0', '\x20', '\x7F', '\xFF'}) {
            QByteArray broken = good + Sound();
            broken[at] = byte;
            const QString path = Write(broken);
            if (SaveBlindly(path, TagKind::Id3v2) == Outcome::Ok) {
                EXPECT_TRUE(ContentOf(path).endsWith(Sound())) << at;
                EXPECT_EQ(FieldsOf(path, TagKind::Id3v2).title, QStringLiteral("Song")) << at;
            } else {
                EXPECT_EQ(ContentOf(path), broken) << at;
            }
        }
    }
}

} // namespace

} // namespace kestrune
