#include "playlist/ksl_format.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::MakeRow;
using rules::Raw;
using rules::Utf8;

// One field: the text and blanks behind it.
QByteArray Field(const QByteArray& text, int width) {
    return text.leftJustified(width, ' ', true);
}

// The first 59 bytes.
QByteArray Header(int count, const QByteArray& text = "Kestrune Playlist V5.4 50410") {
    QByteArray bytes;
    bytes += static_cast<char>(count & 0xFF);
    bytes += static_cast<char>(count >> 8);
    bytes += QByteArray(7, '\0');
    bytes += Field(text, 50);
    return bytes;
}

// The texts of a record, as they stand in it, with their end marks.
struct RecordTexts {
    QByteArray title = "Song title//";
    QByteArray time = "03:45//";
    QByteArray formats = "44,100 Hz//";
    QByteArray type = "mp3";
    QByteArray size = "3.5m//";
    QByteArray folder = "/music///";
    QByteArray fileName = "song.mp3//";
    bool selected = false;
};

QByteArray Record(const RecordTexts& texts) {
    return Field(texts.title, 380) + Field(texts.time, 20) + Field(texts.formats, 197) +
           Field(texts.type, 3) + Field(texts.size, 20) + Field(texts.folder, 200) +
           Field(texts.fileName, 172) + (texts.selected ? QByteArray("\xFF\xFF") : QByteArray(2, '\0'));
}

// Before the type had a field, the format text had three bytes more.
QByteArray OlderRecord(const RecordTexts& texts) {
    return Field(texts.title, 380) + Field(texts.time, 20) + Field(texts.formats, 200) +
           Field(texts.size, 20) + Field(texts.folder, 200) + Field(texts.fileName, 172) +
           (texts.selected ? QByteArray("\xFF\xFF") : QByteArray(2, '\0'));
}

// A file of records, each at a thousand times its number.
QByteArray File(const QByteArray& header, const QList<QByteArray>& records) {
    QByteArray bytes = header;
    for (const QByteArray& record : records) {
        const qsizetype next = (bytes.size() / 1000 + 1) * 1000;
        bytes += QByteArray(next - bytes.size(), '\0') + record;
    }
    return bytes;
}

PlaylistRow OneRow() {
    PlaylistRow row = MakeRow(1, QStringLiteral("Song title"), QStringLiteral("03:45"),
                              QStringLiteral("3.5m"), QStringLiteral("/music/"), QStringLiteral("song.mp3"));
    row.fields[SubFormats] = QStringLiteral("44,100 Hz");
    return row;
}

// What a row is after it was stored and read.
PlaylistRow Stored(const PlaylistRow& row) {
    PlaylistRows rows;
    rows.Append(row);
    const std::vector<PlaylistRow> read = DecodeKsl(EncodeKsl(rows));
    return read.size() == 1 ? read[0] : PlaylistRow();
}

std::string StoredTitle(const QString& title) {
    PlaylistRow row = OneRow();
    row.fields[RowText] = QStringLiteral("1.") + title;
    return Utf8(Stored(row).fields[RowText]);
}

std::string StoredField(RowField field, const QString& value) {
    PlaylistRow row = OneRow();
    row.fields[field] = value;
    return Utf8(Stored(row).fields[field]);
}

TEST(KslWriter, AnEmptyListIsTheCountZeroAndTheHeader) {
    EXPECT_EQ(Raw(EncodeKsl(PlaylistRows())), Raw(Header(0)));
    EXPECT_EQ(Header(0).size(), 59);
}

TEST(KslWriter, EveryFieldStandsAtItsOffset) {
    PlaylistRows rows;
    rows.Append(OneRow());
    PlaylistRow second = OneRow();
    second.fields[RowText] = QStringLiteral("2.Björk. Live");
    second.fields[SubFormats].clear();
    second.selected = true;
    rows.Append(second);
    RecordTexts secondTexts;
    secondTexts.title = "Bj\xC3\xB6rk. Live//";
    secondTexts.formats = "//";
    secondTexts.selected = true;
    const QByteArray expected = File(Header(2), {Record({}), Record(secondTexts)});
    EXPECT_EQ(expected.size(), 2994);
    EXPECT_EQ(Raw(EncodeKsl(rows)), Raw(expected));
}

TEST(KslWriter, TheGapsHoldZeros) {
    PlaylistRows rows;
    rows.Append(OneRow());
    rows.Append(OneRow());
    const QByteArray bytes = EncodeKsl(rows);
    EXPECT_EQ(Raw(bytes.mid(2, 7)), std::string(7, '\0'));
    EXPECT_EQ(Raw(bytes.mid(59, 941)), std::string(941, '\0'));
    EXPECT_EQ(Raw(bytes.mid(1994, 6)), std::string(6, '\0'));
}

TEST(KslReader, ReadsEveryFieldFromItsOffset) {
    RecordTexts texts;
    texts.selected = true;
    const std::vector<PlaylistRow> rows = DecodeKsl(File(Header(1), {Record(texts)}));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[RowText]), "Song title");
    EXPECT_EQ(Utf8(rows[0].fields[SubTime]), "03:45");
    EXPECT_EQ(Utf8(rows[0].fields[SubType]), "mp3");
    EXPECT_EQ(Utf8(rows[0].fields[SubSize]), "3.5m");
    EXPECT_EQ(Utf8(rows[0].fields[SubFolder]), "/music/");
    EXPECT_EQ(Utf8(rows[0].fields[SubFileName]), "song.mp3");
    EXPECT_EQ(Utf8(rows[0].fields[SubFormats]), "44,100 Hz");
    EXPECT_TRUE(rows[0].selected);
    EXPECT_FALSE(rows[0].bold);
}

TEST(KslReader, TheTypeIsReadWithItsPadding) {
    RecordTexts texts;
    texts.type = "ab";
    const std::vector<PlaylistRow> rows = DecodeKsl(File(Header(1), {Record(texts)}));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[SubType]), "ab ");
}

TEST(KslReader, BytesOfAnEightBitCodePageAreRead) {
    RecordTexts texts;
    texts.title = "Bj\xF6rk//";
    const std::vector<PlaylistRow> rows = DecodeKsl(File(Header(1), {Record(texts)}));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[RowText]), "Björk");
}

TEST(KslReader, AnyNumberButZeroSelects) {
    QByteArray record = Record({});
    record[993] = 1;
    const std::vector<PlaylistRow> rows = DecodeKsl(File(Header(1), {record}));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_TRUE(rows[0].selected);
}

TEST(KslReader, RecordsBehindTheEndOfTheFileAreLeftOut) {
    EXPECT_EQ(DecodeKsl(File(Header(30000), {Record({}), Record({})})).size(), 2U);
    EXPECT_TRUE(DecodeKsl(Header(5)).empty());
}

TEST(KslReader, ARecordThatTheEndCutsShortKeepsWhatItHas) {
    const QByteArray whole = File(Header(1), {Record({})});
    const std::vector<PlaylistRow> rows = DecodeKsl(whole.left(1400));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[RowText]), "Song title");
    EXPECT_EQ(Utf8(rows[0].fields[SubTime]), "03:45");
    EXPECT_EQ(Utf8(rows[0].fields[SubFileName]), "");
}

TEST(KslReader, AFileWithoutRoomForTheCountHasNone) {
    EXPECT_EQ(KslCount({}), 0);
    EXPECT_EQ(KslCount("\x05"), 0);
    EXPECT_TRUE(DecodeKsl("\x05").empty());
}

TEST(KslFields, ATitleOfThreeHundredSeventyEightCharactersFits) {
    const QString title(378, u't');
    EXPECT_EQ(StoredTitle(title), Utf8(title));
}

TEST(KslFields, ALongerTitleReadsBackEmpty) {
    EXPECT_EQ(StoredTitle(QString(379, u't')), "");
    EXPECT_EQ(StoredTitle(QString(380, u't')), "");
    EXPECT_EQ(StoredTitle(QString(1000, u't')), "");
}

TEST(KslFields, TheWidthCountsCharacters) {
    const QChar umlaut(0xF6);
    for (const int letters : {189, 190, 378}) {
        EXPECT_EQ(StoredTitle(QString(letters, umlaut)), Utf8(QString(letters, umlaut)));
    }
    EXPECT_EQ(StoredTitle(QString(379, umlaut)), "");
    EXPECT_EQ(StoredTitle(QString(378, u't') + umlaut), "");
}

TEST(KslFields, ATitleWithTheEndMarkInsideReadsBackCutBeforeIt) {
    EXPECT_EQ(StoredTitle(QStringLiteral("see http://example.org")), "see http:");
    EXPECT_EQ(StoredTitle(QStringLiteral("//")), "");
}

TEST(KslFields, ATitleKeepsSingleSlashesPointsAndBlanks) {
    EXPECT_EQ(StoredTitle(QStringLiteral("AC/DC - T.N.T. ")), "AC/DC - T.N.T. ");
}

TEST(KslFields, TheLongestValuesOfTheOtherFieldsFit) {
    EXPECT_EQ(StoredField(SubTime, QString(18, u'1')), std::string(18, '1'));
    EXPECT_EQ(StoredField(SubFormats, QString(195, u'f')), std::string(195, 'f'));
    EXPECT_EQ(StoredField(SubSize, QString(18, u'2')), std::string(18, '2'));
    EXPECT_EQ(StoredField(SubFileName, QString(170, u'n')), std::string(170, 'n'));
}

TEST(KslFields, OneByteMoreReadsBackEmpty) {
    EXPECT_EQ(StoredField(SubTime, QString(19, u'1')), "");
    EXPECT_EQ(StoredField(SubFormats, QString(196, u'f')), "");
    EXPECT_EQ(StoredField(SubSize, QString(19, u'2')), "");
    EXPECT_EQ(StoredField(SubFileName, QString(171, u'n')), "");
}

TEST(KslFields, AFolderOfAnyLengthKeepsItsOwnSeparatorOrReadsBackEmpty) {
    EXPECT_EQ(StoredField(SubFolder, QStringLiteral("/")), "/");
    for (int length = 3; length <= 210; ++length) {
        const QString folder = u'/' + QString(length - 2, u'd') + u'/';
        EXPECT_EQ(StoredField(SubFolder, folder), length <= 198 ? Utf8(folder) : "") << length;
    }
}

TEST(KslFields, AFolderOfAnotherSystemKeepsItsBackslash) {
    EXPECT_EQ(StoredField(SubFolder, QStringLiteral("C:\\My Music\\")), "C:\\My Music\\");
    const QString longest = QStringLiteral("C:\\") + QString(194, u'd') + u'\\';
    EXPECT_EQ(StoredField(SubFolder, longest), Utf8(longest));
}

TEST(KslFields, TheTypeHasThreeBytes) {
    EXPECT_EQ(StoredField(SubType, QStringLiteral("mp3")), "mp3");
    EXPECT_EQ(StoredField(SubType, QStringLiteral("mp")), "mp ");
    EXPECT_EQ(StoredField(SubType, QStringLiteral("adpcm")), "adp");
}

TEST(KslFields, TheBoldMarkIsNotStored) {
    PlaylistRow row = OneRow();
    row.bold = true;
    EXPECT_FALSE(Stored(row).bold);
}

TEST(KslBuild, IsFoundFivePlacesBehindTheVersion) {
    EXPECT_EQ(KslBuildOf(Header(1)), 50410);
    EXPECT_EQ(KslBuildOf(Header(1, "Kestrune Playlist V5.1 50100")), 50100);
    EXPECT_EQ(KslBuildOf(Header(1, "V5.9 99999")), 99999);
    EXPECT_EQ(KslBuildOf(Header(1, "Kestrune Playlist V5.1 501")), 501);
}

TEST(KslBuild, WithoutTheVersionItIsZero) {
    EXPECT_EQ(KslBuildOf(Header(1, "Kestrune Playlist V4.4 50410")), 0);
    EXPECT_EQ(KslBuildOf(Header(1, "Kestrune Playlist v5.4 50410")), 0) << "the letter has its case";
    EXPECT_EQ(KslBuildOf({}), 0);
    EXPECT_EQ(KslBuildOf(Header(1, "Kestrune Playlist V5.")), 0);
}

TEST(KslForm, IsOurOwnOnlyWithThisBuildAndTextsInUtf8) {
    RecordTexts umlaut;
    umlaut.fileName = "Bj\xC3\xB6rk.mp3//";
    EXPECT_TRUE(IsOwnKsl(File(Header(2), {Record({}), Record(umlaut)})));
    EXPECT_TRUE(IsOwnKsl(Header(0)));
    umlaut.fileName = "Bj\xF6rk.mp3//";
    EXPECT_FALSE(IsOwnKsl(File(Header(2), {Record({}), Record(umlaut)})));
    EXPECT_FALSE(IsOwnKsl(File(Header(1, "Kestrune Playlist V5.1 50100"), {OlderRecord({})})));
    EXPECT_FALSE(IsOwnKsl(File(Header(1, "Kestrune Playlist V5.5 50500"), {Record({})})));
    EXPECT_FALSE(IsOwnKsl({}));
    EXPECT_FALSE(IsOwnKsl("any text"));
}

TEST(KslConversion, MapsEveryFieldOfTheOlderRecord) {
    RecordTexts first;
    first.fileName = "Some Song.MP3//";
    RecordTexts second;
    second.title = "Second//";
    second.fileName = "b.mpeg//";
    second.selected = true;
    const QByteArray older =
        File(Header(2, "Kestrune Playlist V5.1 50100"), {OlderRecord(first), OlderRecord(second)});
    second.type = "peg";
    EXPECT_EQ(Raw(ConvertOlderKsl(older)), Raw(File(Header(2), {Record(first), Record(second)})));
}

TEST(KslConversion, KeepsTheTextsAsTheyAreStored) {
    RecordTexts texts;
    texts.title = "Bj\xF6rk// left over";
    texts.formats = "44,100\xA0Hz//";
    const QByteArray older = File(Header(1, "V5.0 50000"), {OlderRecord(texts)});
    EXPECT_EQ(Raw(ConvertOlderKsl(older)), Raw(File(Header(1), {Record(texts)})));
}

TEST(KslConversion, AFormatTextThatLosesItsMarkInTheCutReadsBackEmpty) {
    RecordTexts texts;
    texts.formats = QByteArray(197, 'f') + "//";
    const QByteArray older = File(Header(1, "V5.0 50000"), {OlderRecord(texts)});
    std::vector<PlaylistRow> rows = DecodeKsl(ConvertOlderKsl(older));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[SubFormats]), "");

    texts.formats = QByteArray(195, 'f') + "//";
    rows = DecodeKsl(ConvertOlderKsl(File(Header(1, "V5.0 50000"), {OlderRecord(texts)})));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[SubFormats]), std::string(195, 'f'));
}

TEST(KslConversion, TheTypeIsTheLastThreeLettersOfTheNameInLowerCase) {
    RecordTexts texts;
    texts.fileName = "A.WAV//";
    std::vector<PlaylistRow> rows =
        DecodeKsl(ConvertOlderKsl(File(Header(1, "no version"), {OlderRecord(texts)})));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[SubType]), "wav");
    texts.fileName = "ab//";
    rows = DecodeKsl(ConvertOlderKsl(File(Header(1, "no version"), {OlderRecord(texts)})));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(Utf8(rows[0].fields[SubType]), "ab ");
}

} // namespace
} // namespace kestrune
