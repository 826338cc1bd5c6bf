// Texts that are longer in bytes than their field in the record of a native playlist, and what stands behind
// the records for them.
#include "playlist/ksl_format.h"
#include "playlist/ksl_long_texts.h"

#include "support/earlier_ksl_reader.h"
#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::MakeRow;
using rules::Raw;
using rules::Utf8;

constexpr std::array<RowField, 7> storedFields = {RowText,   SubTime,     SubType,   SubSize,
                                                  SubFolder, SubFileName, SubFormats};

// So many Japanese letters, of three bytes each, that differ from one another.
QString Letters(int count, int first = 0) {
    QString text;
    for (int i = 0; i < count; ++i) {
        text.append(QChar(0x3042 + (first + i) % 80));
    }
    return text;
}

// A row as a program's user in Japan has it: folder of 72 characters and 212 bytes, name of 64 and 184.
PlaylistRow LongRow(int number) {
    PlaylistRow row =
        MakeRow(number, Letters(200, number), QStringLiteral("03:45"), QStringLiteral("3.5m"),
                u'/' + Letters(70, number) + u'/', Letters(60, number) + QStringLiteral(".mp3"));
    row.fields[SubFormats] = QStringLiteral("44,100 Hz");
    return row;
}

PlaylistRow ShortRow(int number) {
    return MakeRow(number, QStringLiteral("Song %1").arg(number), QStringLiteral("03:45"),
                   QStringLiteral("3.5m"), QStringLiteral("/music/"), QStringLiteral("%1.mp3").arg(number));
}

QByteArray FileOf(std::initializer_list<PlaylistRow> rows) {
    PlaylistRows list;
    for (const PlaylistRow& row : rows) {
        list.Append(row);
    }
    return EncodeKsl(list);
}

// The text as a reader gives it, without number and point.
QString Given(const PlaylistRow& row, RowField field) {
    return field == RowText ? KillTitleHead(row.fields[field]) : row.fields[field];
}

std::string StoredField(RowField field, const QString& value) {
    PlaylistRow row = ShortRow(1);
    row.fields[field] = field == RowText ? QStringLiteral("1.") + value : value;
    const std::vector<PlaylistRow> read = DecodeKsl(FileOf({row}));
    return read.size() == 1 ? Utf8(read[0].fields[field]) : std::string("(no row)");
}

// Every text is the row's own or, where the record could not hold it, empty; the type may be its beginning.
void ExpectNothingLost(const std::vector<PlaylistRow>& read, const QByteArray& whole) {
    const std::vector<PlaylistRow> held = earlier::DecodeKsl(whole);
    const std::vector<PlaylistRow> full = DecodeKsl(whole);
    ASSERT_GE(read.size(), held.size());
    for (size_t i = 0; i < held.size(); ++i) {
        for (const RowField field : storedFields) {
            const QString& text = read[i].fields[field];
            EXPECT_TRUE(text == held[i].fields[field] || text == full[i].fields[field])
                << "row " << i + 1 << " field " << field << ": " << Utf8(text);
        }
        EXPECT_EQ(read[i].selected, held[i].selected);
    }
}

TEST(KslLongTexts, ARowOfJapaneseLettersComesBackWhole) {
    const PlaylistRow row = LongRow(1);
    const std::vector<PlaylistRow> read = DecodeKsl(FileOf({row}));
    ASSERT_EQ(read.size(), 1U);
    for (const RowField field : storedFields) {
        EXPECT_EQ(Utf8(read[0].fields[field]), Utf8(Given(row, field))) << field;
    }
}

TEST(KslLongTexts, EachRowOfManyGetsItsOwn) {
    PlaylistRows rows;
    for (int number = 1; number <= 40; ++number) {
        rows.Append(number % 3 == 0 ? ShortRow(number) : LongRow(number));
    }
    const std::vector<PlaylistRow> read = DecodeKsl(EncodeKsl(rows));
    ASSERT_EQ(read.size(), 40U);
    for (int number = 1; number <= 40; ++number) {
        for (const RowField field : storedFields) {
            EXPECT_EQ(Utf8(read[static_cast<size_t>(number - 1)].fields[field]),
                      Utf8(Given(rows.Row(number), field)))
                << number << ' ' << field;
        }
    }
}

TEST(KslLongTexts, AFieldHoldsAsManyCharactersAsTheRecordHasBytes) {
    const QList<std::pair<RowField, int>> largest = {
        {RowText, 378}, {SubTime, 18}, {SubFormats, 195}, {SubSize, 18}, {SubFileName, 170}};
    for (const auto& [field, characters] : largest) {
        EXPECT_EQ(StoredField(field, Letters(characters)), Utf8(Letters(characters))) << field;
        EXPECT_EQ(StoredField(field, Letters(characters + 1)), "") << field;
    }
    const QString folder = u'/' + Letters(196) + u'/';
    EXPECT_EQ(StoredField(SubFolder, folder), Utf8(folder));
    EXPECT_EQ(StoredField(SubFolder, u'/' + Letters(197) + u'/'), "");
    EXPECT_EQ(StoredField(SubType, Letters(3)), Utf8(Letters(3)));
}

TEST(KslLongTexts, ACharacterOfTwoUnitsIsOne) {
    const QString clef = QString::fromUcs4(U"\U0001D11E");
    EXPECT_EQ(StoredField(RowText, clef.repeated(378)), Utf8(clef.repeated(378)));
    EXPECT_EQ(StoredField(RowText, clef.repeated(379)), "");
}

TEST(KslLongTexts, FoldersOfAnyLengthComeBackWholeOrEmpty) {
    for (int letters = 1; letters <= 200; ++letters) {
        for (const QString& first : {QStringLiteral("/"), QStringLiteral("/a"), QStringLiteral("/ab")}) {
            const QString folder = first + Letters(letters) + u'/';
            EXPECT_EQ(StoredField(SubFolder, folder), folder.size() <= 198 ? Utf8(folder) : "") << letters;
        }
    }
}

TEST(KslLongTexts, AFolderWithoutItsSeparatorComesBackToo) {
    const QString folder = QStringLiteral("C:") + Letters(130);
    EXPECT_EQ(StoredField(SubFolder, folder), Utf8(folder));
}

TEST(KslLongTexts, ALongTitleIsStillCutBeforeTheEndMarkInIt) {
    EXPECT_EQ(StoredField(RowText, Letters(150) + QStringLiteral("//rest")), Utf8(Letters(150)));
    EXPECT_EQ(StoredField(RowText, QStringLiteral("a//") + Letters(200)), "a");
}

TEST(KslLongTexts, AListWithoutLongTextsHasNothingBehindItsRecords) {
    EXPECT_EQ(FileOf({ShortRow(1), ShortRow(2)}).size(), 2994);
}

TEST(KslLongTexts, StandBehindTheRecordsAsDocumented) {
    PlaylistRow row = ShortRow(2);
    row.fields[SubFileName] = Letters(60);
    const QByteArray bytes = FileOf({ShortRow(1), row});
    EXPECT_EQ(Raw(bytes.mid(2994, 6)), std::string(6, '\0'));
    const QByteArray text = Letters(60).toUtf8();
    QByteArray expected("\xFFKSLTEXT\x02\0\x07\0\xB4\0", 14);
    const quint16 sum = qChecksum(bytes.mid(2000, 992) + text);
    expected.append(static_cast<char>(sum & 0xFFU));
    expected.append(static_cast<char>(sum >> 8U));
    EXPECT_EQ(Raw(bytes.mid(3000)), Raw(expected + text));
}

// --- A program that knows nothing of them ---

TEST(KslLongTexts, AnEarlierReaderGetsEveryRowAndEveryTextThatItsRecordHolds) {
    PlaylistRow selected = LongRow(2);
    selected.selected = true;
    const QByteArray bytes = FileOf({ShortRow(1), selected, ShortRow(3)});
    const std::vector<PlaylistRow> read = earlier::DecodeKsl(bytes);
    ASSERT_EQ(read.size(), 3U);
    for (const RowField field : storedFields) {
        EXPECT_EQ(Utf8(read[0].fields[field]), Utf8(Given(ShortRow(1), field))) << field;
        EXPECT_EQ(Utf8(read[2].fields[field]), Utf8(Given(ShortRow(3), field))) << field;
    }
    EXPECT_EQ(Utf8(read[1].fields[SubTime]), "03:45");
    EXPECT_EQ(Utf8(read[1].fields[SubFormats]), "44,100 Hz");
    EXPECT_EQ(Utf8(read[1].fields[SubFolder]), "") << "as it was for it before";
    EXPECT_TRUE(read[1].selected);
}

TEST(KslLongTexts, TheRecordsThemselvesAreThoseOfBefore) {
    const QByteArray bytes = FileOf({LongRow(1)});
    const QByteArray title = Letters(200, 1).toUtf8();
    EXPECT_EQ(Raw(bytes.mid(1000, 380)), Raw(title.left(378) + "  ")) << "cut behind a whole character";
    EXPECT_EQ(Raw(bytes.mid(1380, 20)), Raw(QByteArray("03:45//").leftJustified(20)));
    EXPECT_EQ(Raw(bytes.mid(1994, 6)), std::string(6, '\0'));
}

// --- Damage ---

class KslDamage : public testing::Test {
protected:
    const QByteArray whole_ = FileOf({LongRow(1), ShortRow(2), LongRow(3), LongRow(4)});
    const qsizetype behindRecords_ = 5000;
};

TEST_F(KslDamage, ACutFileKeepsWhatItHas) {
    for (qsizetype size = behindRecords_ - 6; size < whole_.size(); ++size) {
        const std::vector<PlaylistRow> read = DecodeKsl(whole_.left(size));
        ASSERT_EQ(read.size(), 4U) << size;
        ExpectNothingLost(read, whole_);
    }
}

TEST_F(KslDamage, ATextInFrontOfTheCutIsStillThere) {
    const std::vector<PlaylistRow> read = DecodeKsl(whole_.chopped(1));
    EXPECT_EQ(Utf8(read[0].fields[SubFolder]), Utf8(LongRow(1).fields[SubFolder]));
    EXPECT_EQ(Utf8(read[3].fields[SubFileName]), "") << "the one that was cut";
}

TEST_F(KslDamage, AChangedByteCostsAtMostTheTextsFromThereOn) {
    for (qsizetype at = behindRecords_; at < whole_.size(); ++at) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            QByteArray damaged = whole_;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            const std::vector<PlaylistRow> read = DecodeKsl(damaged);
            ASSERT_EQ(read.size(), 4U);
            ExpectNothingLost(read, whole_);
        }
    }
}

TEST_F(KslDamage, GarbageBehindTheRecordsIsPassedOver) {
    const QByteArray records = whole_.left(behindRecords_);
    for (const QByteArray& garbage :
         {QByteArray(3000, '\xFF'), QByteArray(3000, '\0'), QByteArray("\xFFKSLTEXT"),
          QByteArray("\xFFKSLTEXT") + QByteArray(500, '\xFF'),
          QByteArray("\xFFKSLTEXT") + QByteArray(500, '\0'),
          QByteArray("\xFFKSLTEXT\x01\0\x06\0\x05\0\0\0/abc/", 21)}) {
        const std::vector<PlaylistRow> read = DecodeKsl(records + garbage);
        ASSERT_EQ(read.size(), 4U);
        ExpectNothingLost(read, whole_);
        EXPECT_EQ(Utf8(read[1].fields[SubFolder]), "/music/");
    }
}

TEST_F(KslDamage, TheTextsOfAnotherListAreNotTaken) {
    const QByteArray other = FileOf({LongRow(11), LongRow(12), LongRow(13), LongRow(14)});
    const std::vector<PlaylistRow> read = DecodeKsl(whole_.left(behindRecords_) + other.mid(behindRecords_));
    const std::vector<PlaylistRow> held = earlier::DecodeKsl(whole_);
    for (size_t i = 0; i < held.size(); ++i) {
        EXPECT_TRUE(read[i].fields == held[i].fields) << i + 1;
    }
}

// Two names that begin alike: the record can't tell them apart, their folders can.
TEST_F(KslDamage, NorAreThoseOfARowThatOnlyBeginsAlike) {
    PlaylistRow here = ShortRow(1);
    here.fields[SubFileName] = Letters(60) + QStringLiteral("1.mp3");
    PlaylistRow elsewhere = here;
    elsewhere.fields[SubFolder] = QStringLiteral("/elsewhere/");
    elsewhere.fields[SubFileName] = Letters(60) + QStringLiteral("2.mp3");
    const std::vector<PlaylistRow> read =
        DecodeKsl(FileOf({here}).left(2000) + FileOf({elsewhere}).mid(2000));
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(Utf8(read[0].fields[SubFileName]), "");
}

// The file of one row with a text behind it whose sum is right.
QByteArray WithText(const QByteArray& file, int field, const QByteArray& text) {
    const QByteArray records = file.left(1994);
    return records +
           EncodeKslLongTexts({{1, field, text, KslTextSum(records.mid(1000), text)}}, records.size());
}

TEST_F(KslDamage, ATextThatTheRecordHoldsIsNeverReplaced) {
    for (const char* text : {"/elsewhere/", "/music/", "/music///", "/music///elsewhere/", ""}) {
        const std::vector<PlaylistRow> read = DecodeKsl(WithText(FileOf({ShortRow(1)}), 6, text));
        ASSERT_EQ(read.size(), 1U);
        EXPECT_EQ(Utf8(read[0].fields[SubFolder]), "/music/");
    }
}

TEST_F(KslDamage, ATextOfMoreCharactersThanTheFieldIsNotTaken) {
    const QByteArray file = FileOf({LongRow(1)});
    const QString title = Letters(200, 1);
    EXPECT_EQ(Utf8(DecodeKsl(WithText(file, 1, title.toUtf8()))[0].fields[RowText]), Utf8(title));
    const QString tooLong = title + QString(179, u'x');
    EXPECT_EQ(Utf8(DecodeKsl(WithText(file, 1, tooLong.toUtf8()))[0].fields[RowText]), "");
    EXPECT_EQ(Utf8(DecodeKsl(WithText(file, 1, tooLong.chopped(1).toUtf8()))[0].fields[RowText]),
              Utf8(tooLong.chopped(1)));
}

TEST_F(KslDamage, ATextForNoRowAndNoFieldIsPassedOver) {
    const QByteArray records = FileOf({LongRow(1)}).left(1994);
    for (const auto& [row, field] : QList<std::pair<int, int>>{{0, 1}, {2, 1}, {65535, 1}, {1, 0}, {1, 8}}) {
        const QByteArray title = Letters(200, 1).toUtf8();
        const KslLongText text{row, field, title, KslTextSum(records.mid(1000), title)};
        const std::vector<PlaylistRow> read = DecodeKsl(records + EncodeKslLongTexts({text}, records.size()));
        ASSERT_EQ(read.size(), 1U);
        EXPECT_EQ(Utf8(read[0].fields[RowText]), "");
    }
}

TEST_F(KslDamage, ACountThatIsTooLargeMakesNoRowsOfTheTexts) {
    QByteArray damaged = whole_;
    damaged[0] = '\xFF';
    const std::vector<PlaylistRow> read = DecodeKsl(damaged);
    ASSERT_EQ(read.size(), 4U);
    EXPECT_EQ(Utf8(read[3].fields[SubFolder]), Utf8(LongRow(4).fields[SubFolder]));
}

TEST_F(KslDamage, ACountThatIsTooSmallKeepsTheTextsOfItsRows) {
    QByteArray damaged = whole_;
    damaged[0] = 1;
    const std::vector<PlaylistRow> read = DecodeKsl(damaged);
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(Utf8(read[0].fields[SubFolder]), Utf8(LongRow(1).fields[SubFolder]));
}

} // namespace
} // namespace kestrune
