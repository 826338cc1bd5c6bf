// The 128 bytes of ID3v1: widths, characters, and what a save leaves as it was.
#include "backends/tag_writing/tag_judges.h"
#include "backends/tags/id3v1_block.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

QString Repeated(const char* text, int times) {
    return QString::fromUtf8(text).repeated(times);
}

TEST(Id3v1Widths, TextIsCutAtTheWidthOfItsField) {
    TagFields fields;
    fields.title = Repeated("t", 31);
    fields.artist = Repeated("a", 40);
    fields.album = Repeated("b", 30);
    fields.comment = Repeated("c", 30);
    fields.year = 1999;
    fields.track = 255;
    fields.genre = 147;
    const QByteArray block = RenderId3v1({}, fields);
    EXPECT_EQ(block, "TAG" + QByteArray(30, 't') + QByteArray(30, 'a') + QByteArray(30, 'b') + "1999" +
                         QByteArray(28, 'c') + QByteArray(1, '\0') + '\xFF' + static_cast<char>(147));
}

TEST(Id3v1Widths, CharactersOutsideWindows1252BecomeQuestionMarks) {
    TagFields fields;
    fields.title = QString::fromUtf8("Żółw €𝄞ß");
    const QByteArray title = RenderId3v1({}, fields).mid(3, 30);
    EXPECT_EQ(title, QByteArray("?\xF3?w \x80?\xDF").leftJustified(30, '\0'));
}

QByteArray BlockOf(const QByteArray& title, const QByteArray& artist) {
    return "TAG" + title.leftJustified(30, '\0') + artist.leftJustified(30, '\0') + QByteArray(64, '\0') +
           '\xFF';
}

TEST(Id3v1Widths, AChangedTextKeepsTheCodingOfTheOldOne) {
    const QString title = QString::fromUtf8("Don’t €5");
    const QString longer = QString::fromUtf8("Don’t €55");
    for (const QByteArray& artist : {QByteArray("Band"), QByteArray("Caf\xE9"), QByteArray("Caf\xC3\xA9")}) {
        const QByteArray windows = BlockOf("Don\x92t \x80"
                                           "5",
                                           artist);
        TagFields fields = *ParseId3v1(windows);
        ASSERT_EQ(fields.title, title);
        fields.title = longer;
        EXPECT_EQ(RenderId3v1(windows, fields), BlockOf("Don\x92t \x80"
                                                        "55",
                                                        artist));
        const QByteArray utf8 = BlockOf(title.toUtf8(), artist);
        fields = *ParseId3v1(utf8);
        ASSERT_EQ(fields.title, title);
        fields.title = longer;
        EXPECT_EQ(RenderId3v1(utf8, fields), BlockOf(longer.toUtf8(), artist));
    }
}

TEST(Id3v1Widths, ATextThatTellsNoCodingTakesThatOfTheOthers) {
    const QString title = QString::fromUtf8("Ωδή στη χαρά λαλά");
    const QByteArray utf8 = BlockOf("Ode", QString::fromUtf8("Кино").toUtf8());
    TagFields fields = *ParseId3v1(utf8);
    fields.title = title;
    // 30 bytes end inside of a letter here.
    EXPECT_EQ(RenderId3v1(utf8, fields), BlockOf(title.left(16).toUtf8(), utf8.mid(33, 30)));
    const QByteArray windows = BlockOf("Ode", "\x93q\x94");
    fields = *ParseId3v1(windows);
    fields.title = QString::fromUtf8("“Ode”");
    EXPECT_EQ(RenderId3v1(windows, fields), BlockOf("\x93Ode\x94", "\x93q\x94"));
}

// In Windows-1252 it would be the bytes of another text in UTF-8.
TEST(Id3v1Widths, ATextThatWouldBeMisreadIsWrittenInUtf8) {
    TagFields fields;
    fields.title = QString::fromUtf8("Ã©");
    EXPECT_EQ(ParseId3v1(RenderId3v1({}, fields))->title, fields.title);
}

TEST(Id3v1Widths, ACommentWithoutATrackHasThirtyBytes) {
    TagFields fields;
    fields.comment = Repeated("c", 31);
    QByteArray block = RenderId3v1({}, fields);
    EXPECT_EQ(ParseId3v1(block)->comment, Repeated("c", 30));
    fields.track = 9;
    block = RenderId3v1(block, fields);
    EXPECT_EQ(ParseId3v1(block)->comment, Repeated("c", 28));
    EXPECT_EQ(ParseId3v1(block)->track, 9);
    fields.track = 0;
    block = RenderId3v1(block, fields);
    EXPECT_EQ(ParseId3v1(block)->comment, Repeated("c", 30));
}

TEST(Id3v1Widths, AccentsThatStandApartAreComposed) {
    TagFields fields;
    fields.title = QString::fromUtf8("Cafe\u0301");
    EXPECT_EQ(RenderId3v1({}, fields).mid(3, 5), QByteArray("Caf\xE9\0", 5));
}

TEST(Id3v1Widths, NumbersWithoutRoomAreLeftOut) {
    TagFields fields;
    fields.title = QStringLiteral("x");
    fields.year = 10000;
    fields.track = 256;
    const QByteArray block = RenderId3v1({}, fields);
    EXPECT_EQ(block.mid(93, 4), QByteArray(4, '\0'));
    EXPECT_EQ(block[126], '\0');
}

TEST(Id3v1Widths, UntouchedFieldsKeepTheirBytes) {
    // Padded with blanks, a title in UTF-8, words of another program behind a zero byte, no track, and a
    // genre beyond the list.
    QByteArray block = "TAG" + QByteArray("\xD0\x9A\xD0\xB8\xD0\xBD\xD0\xBE").leftJustified(30, ' ') +
                       QByteArray("Band\0hidden", 11).leftJustified(30, '\0') + QByteArray(30, ' ') + "1987" +
                       QByteArray("A comment of thirty characters") + static_cast<char>(180);
    ASSERT_EQ(block.size(), id3v1Bytes);
    TagFields fields = *ParseId3v1(block);
    EXPECT_EQ(RenderId3v1(block, fields), block);
    fields.year = 1988;
    block[96] = '8';
    EXPECT_EQ(RenderId3v1(block, fields), block);
    fields.track = 3;
    block[125] = '\0';
    block[126] = '\x03';
    EXPECT_EQ(RenderId3v1(block, fields), block);
}

TEST(Id3v1Widths, ABlockWithoutFieldsGoes) {
    TagFields fields;
    fields.artist = QStringLiteral("Band");
    const QByteArray block = RenderId3v1({}, fields);
    EXPECT_TRUE(RenderId3v1(block, TagFields()).isEmpty());
    EXPECT_TRUE(RenderId3v1({}, TagFields()).isEmpty());
}

TEST(Id3v1Widths, OtherProgramsReadTheBlock) {
    MadeFiles made;
    const QString path =
        made.Encode(QStringLiteral("a.mp3"),
                    QStringLiteral("-t 1 -id3v2_version 0 -map_metadata -1").split(QLatin1Char(' ')));
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    const auto listed = OutputOf(QStringLiteral("id3v2"), {QStringLiteral("-l"), path});
    ASSERT_TRUE(listed);
    EXPECT_TRUE(listed->contains("id3v1 tag info"));
    EXPECT_TRUE(listed->contains("Title  : Song")) << listed->constData();
    EXPECT_TRUE(listed->contains("Year: 1998, Genre: Rock (17)")) << listed->constData();
    EXPECT_TRUE(listed->contains("Track: 7")) << listed->constData();
    EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("artist")).left(3), QStringLiteral("Caf"));
}

TEST(Id3v1Widths, OtherProgramsBlockIsReadAndChanged) {
    MadeFiles made;
    const QString path =
        made.Encode(QStringLiteral("a.mp3"),
                    QStringLiteral("-t 1 -id3v2_version 0 -map_metadata -1").split(QLatin1Char(' ')));
    ASSERT_TRUE(
        OutputOf(QStringLiteral("id3v2"),
                 QStringLiteral("-1 -t Their_Song -a Their_Band -A Their_Album -c Theirs -g 9 -y 2001 -T 4")
                         .split(QLatin1Char(' ')) +
                     QStringList(path)));
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Their_Song"));
    EXPECT_EQ(fields.genre, 9);
    EXPECT_EQ(fields.track, 4);
    fields.album = QStringLiteral("Mine");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    const auto listed =
        OutputOf(QStringLiteral("id3v2"), {QStringLiteral("-l"), path}).value_or(QByteArray());
    EXPECT_TRUE(listed.contains("Album  : Mine")) << listed.constData();
    EXPECT_TRUE(listed.contains("Title  : Their_Song")) << listed.constData();
}

} // namespace

} // namespace kestrune
