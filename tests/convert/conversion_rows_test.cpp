#include "convert/conversion_rows.h"
#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune::convert {
namespace {

using rules::Folder;
using rules::Utf8;

TEST(SizeText, IsWholeKilobytesToElevenCharacters) {
    EXPECT_EQ(Utf8(SizeText(1024)), "       1 KB");
    EXPECT_EQ(Utf8(SizeText(2047)), "       1 KB");
    EXPECT_EQ(Utf8(SizeText(1023 * 1024)), "   1,023 KB");
    EXPECT_EQ(Utf8(SizeText(1000 * 1024)), "   1,000 KB");
    EXPECT_EQ(Utf8(SizeText(999 * 1024)), "     999 KB");
    EXPECT_EQ(Utf8(SizeText(qint64{1234567} * 1024)), "1,234,567 KB");
    EXPECT_EQ(Utf8(SizeText(qint64{12345678} * 1024)), "12,345,678 KB");
    EXPECT_EQ(Utf8(SizeText(qint64{1234567890} * 1024)), "1,234,567,890 KB");
}

TEST(SizeText, OfAnEmptyFileHasAZero) {
    EXPECT_EQ(Utf8(SizeText(0)), "       0 KB");
}

TEST(SizeText, BelowAKilobyteHasNoDigit) {
    EXPECT_EQ(Utf8(SizeText(1)), std::string(8, ' ') + " KB");
    EXPECT_EQ(Utf8(SizeText(1023)), std::string(8, ' ') + " KB");
}

TEST(FileSizeText, IsReadFromTheFile) {
    const Folder folder;
    const QString path = folder.Write(QStringLiteral("a.wav"), QByteArray(5000, 'x'));
    EXPECT_EQ(Utf8(FileSizeText(path)), "       4 KB");
    EXPECT_EQ(Utf8(FileSizeText(folder.Path(QStringLiteral("gone.wav")))), "       0 KB");
    EXPECT_EQ(Utf8(FileSizeText(folder.Path())), "       0 KB");
}

class RowsTest : public testing::Test {
protected:
    RowsTest() {
        rows.Append({{QStringLiteral("a.wav"), QStringLiteral("       1 KB"), QStringLiteral("/m"), false},
                     {QStringLiteral("b.wav"), QStringLiteral("       2 KB"), QStringLiteral("/m/"), true}});
        QObject::connect(&rows, &ConversionRows::RowCheckChanged, [this](int row) { byUser.append(row); });
    }
    ConversionRows rows;
    QList<int> byUser;
};

TEST_F(RowsTest, ShowNameSizeAndFolder) {
    const auto text = [this](int row, int column) {
        return Utf8(rows.data(rows.index(row, column), Qt::DisplayRole).toString());
    };
    EXPECT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows.columnCount(), 3);
    EXPECT_EQ(text(0, ColumnName), "a.wav");
    EXPECT_EQ(text(0, ColumnLong), "       1 KB");
    EXPECT_EQ(text(0, ColumnPlaylistIndex), "/m");
    const auto caption = [this](int column) {
        return Utf8(rows.headerData(column, Qt::Horizontal).toString());
    };
    EXPECT_EQ(caption(0), "Name");
    EXPECT_EQ(caption(1), "Long");
    EXPECT_EQ(caption(2), "PlaylistIndex");
}

TEST_F(RowsTest, FullPathJoinsWithOneSeparator) {
    EXPECT_EQ(Utf8(rows.FullPath(1)), "/m/a.wav");
    EXPECT_EQ(Utf8(rows.FullPath(2)), "/m/b.wav");
    EXPECT_TRUE(rows.FullPath(3).isEmpty());
}

TEST_F(RowsTest, OnlyTheFirstColumnHasABox) {
    const auto state = [this](int row, int column) {
        return rows.data(rows.index(row, column), Qt::CheckStateRole);
    };
    EXPECT_EQ(state(0, ColumnName).toInt(), Qt::Unchecked);
    EXPECT_EQ(state(1, ColumnName).toInt(), Qt::Checked);
    EXPECT_FALSE(state(1, ColumnLong).isValid());
    EXPECT_TRUE(rows.flags(rows.index(0, ColumnName)) & Qt::ItemIsUserCheckable);
    EXPECT_FALSE(rows.flags(rows.index(0, ColumnLong)) & Qt::ItemIsUserCheckable);
}

TEST_F(RowsTest, BoxChangedInTheViewIsTheUsersDoing) {
    EXPECT_TRUE(rows.setData(rows.index(0, ColumnName), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(rows.IsChecked(1));
    EXPECT_EQ(rows.CheckedCount(), 2);
    EXPECT_EQ(byUser, QList<int>{1});
    EXPECT_FALSE(rows.setData(rows.index(0, ColumnLong), Qt::Checked, Qt::CheckStateRole));
    EXPECT_FALSE(rows.setData(rows.index(0, ColumnName), QStringLiteral("x"), Qt::EditRole));
}

TEST_F(RowsTest, BoxesThatTheProgramChangesRaiseNothing) {
    rows.SetChecked(1, true);
    rows.SetAllChecked(false);
    EXPECT_EQ(rows.CheckedCount(), 0);
    EXPECT_TRUE(byUser.isEmpty());
}

TEST_F(RowsTest, CountFollowsRowsThatComeAndGo) {
    rows.SetAllChecked(true);
    EXPECT_EQ(rows.CheckedCount(), 2);
    rows.Append({{QStringLiteral("c.wav"), {}, {}, true}});
    EXPECT_EQ(rows.CheckedCount(), 3);
    rows.Replace({{QStringLiteral("d.wav"), {}, {}, false}});
    EXPECT_EQ(rows.CheckedCount(), 0);
    rows.Clear();
    EXPECT_EQ(rows.Count(), 0);
}

TEST_F(RowsTest, ARowOutsideTheListIsPassedOver) {
    rows.SetChecked(0, true);
    rows.SetChecked(3, true);
    EXPECT_EQ(rows.CheckedCount(), 1);
    EXPECT_FALSE(rows.IsChecked(0));
    EXPECT_TRUE(rows.Row(3).name.isEmpty());
}

TEST(ConversionRows, CountsNoMoreThanSixteenBitsHold) {
    ConversionRows rows;
    std::vector<ConversionRow> many(40000);
    rows.Append(std::move(many));
    rows.SetAllChecked(true);
    EXPECT_EQ(rows.CheckedCount(), 32767);
}

} // namespace
} // namespace kestrune::convert
