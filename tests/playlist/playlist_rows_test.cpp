#include "playlist/playlist_rows.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Column;
using rules::MakeRow;
using rules::Utf8;

PlaylistRow Numbered(int number, const QString& title) {
    return MakeRow(number, title, QStringLiteral("01:00"), QStringLiteral("1.0m"), QStringLiteral("/m/"),
                   title + QStringLiteral(".mp3"));
}

// Rows 1 to `count` with titles "t1", "t2", ...
void Fill(PlaylistRows& rows, int count) {
    for (int number = 1; number <= count; ++number) {
        rows.Append(Numbered(number, QStringLiteral("t%1").arg(number)));
    }
}

TEST(PlaylistRows, ThePathIsTheFolderFollowedByTheFileName) {
    PlaylistRows rows;
    rows.Append(MakeRow(1, QStringLiteral("a"), QStringLiteral("00:01"), QStringLiteral("0.1m"),
                        QStringLiteral("/music/"), QStringLiteral("song.mp3")));
    EXPECT_EQ(Utf8(rows.FullPath(1)), "/music/song.mp3");
    EXPECT_EQ(Utf8(rows.Title(1)), "a");
}

TEST(PlaylistRows, NumbersBeyondTheListReadEmptyAndAreNotWritten) {
    PlaylistRows rows;
    Fill(rows, 2);
    for (const int row : {-1, 0, 3}) {
        EXPECT_EQ(Utf8(rows.Field(row, RowText)), "");
        EXPECT_EQ(Utf8(rows.FullPath(row)), "");
        EXPECT_FALSE(rows.IsSelected(row));
        rows.SetField(row, RowText, QStringLiteral("x"));
        rows.SetSelected(row, true);
        rows.SetBold(row, true);
        rows.Remove(row);
        rows.SetRow(row, {});
    }
    EXPECT_EQ(Column(rows, RowText), (std::vector<std::string>{"1.t1", "2.t2"}));
    EXPECT_EQ(rows.SelectedCount(), 0);
}

TEST(PlaylistRows, ClearAllBoldClearsItOnEveryRow) {
    PlaylistRows rows;
    Fill(rows, 4);
    rows.SetBold(1, true);
    rows.SetBold(3, true);
    rows.ClearAllBold();
    for (int row = 1; row <= 4; ++row) {
        EXPECT_FALSE(rows.IsBold(row));
    }
}

TEST(PlaylistRows, BoldAndSelectionMoveWithTheirRow) {
    PlaylistRows rows;
    Fill(rows, 3);
    rows.SetBold(1, true);
    rows.SetSelected(2, true);
    rows.SortByIndex();
    rows.SetAscending(false);
    EXPECT_EQ(Column(rows, RowText), (std::vector<std::string>{"3.t3", "2.t2", "1.t1"}));
    EXPECT_TRUE(rows.IsBold(3));
    EXPECT_FALSE(rows.IsBold(1));
    EXPECT_TRUE(rows.IsSelected(2));
    EXPECT_EQ(rows.SelectedCount(), 1);
}

TEST(PlaylistRows, SelectOnlySelectsARangeAndNothingElse) {
    PlaylistRows rows;
    Fill(rows, 5);
    rows.SetSelected(1, true);
    rows.SelectOnly(2, 4);
    EXPECT_FALSE(rows.IsSelected(1));
    EXPECT_TRUE(rows.IsSelected(2));
    EXPECT_TRUE(rows.IsSelected(4));
    EXPECT_FALSE(rows.IsSelected(5));
    EXPECT_EQ(rows.SelectedCount(), 3);
}

TEST(PlaylistRows, TheSumsFollowEveryChange) {
    PlaylistRows rows;
    rows.Append(MakeRow(1, QStringLiteral("a"), QStringLiteral("01:30"), QStringLiteral("1.5m"),
                        QStringLiteral("/"), QStringLiteral("a")));
    rows.Append(MakeRow(2, QStringLiteral("b"), QStringLiteral("100:05"), QStringLiteral("0.2m"),
                        QStringLiteral("/"), QStringLiteral("b")));
    EXPECT_EQ(rows.TotalSums().seconds, 90 + 6005);
    EXPECT_EQ(rows.TotalSums().milliMegabytes, 1700);
    rows.SetSelected(2, true);
    EXPECT_EQ(rows.SelectedSums().seconds, 6005);
    rows.SetField(2, SubTime, QStringLiteral("00:10"));
    EXPECT_EQ(rows.TotalSums().seconds, 100);
    EXPECT_EQ(rows.SelectedSums().seconds, 10);
    rows.SetRow(1, rows.Row(2));
    EXPECT_EQ(rows.SelectedSums().seconds, 20);
    EXPECT_EQ(rows.SelectedSums().rows, 2);
    rows.Remove(1);
    EXPECT_EQ(rows.TotalSums().seconds, 10);
    EXPECT_EQ(rows.TotalSums().milliMegabytes, 200);
    rows.Clear();
    EXPECT_EQ(rows.TotalSums().seconds, 0);
    EXPECT_EQ(rows.TotalSums().milliMegabytes, 0);
    EXPECT_EQ(rows.SelectedSums().rows, 0);
}

TEST(PlaylistRows, SumsOfManyTenthsLeaveNoRest) {
    PlaylistRows rows;
    for (int i = 1; i <= 1000; ++i) {
        rows.Append(MakeRow(i, QStringLiteral("a"), QStringLiteral("00:01"), QStringLiteral("0.1m"),
                            QStringLiteral("/"), QStringLiteral("a")));
    }
    EXPECT_EQ(rows.TotalSums().milliMegabytes, 100000);
    while (rows.Count() > 0) {
        rows.Remove(1);
    }
    EXPECT_EQ(rows.TotalSums().milliMegabytes, 0);
}

TEST(PlaylistRows, ATimeOrSizeThatIsNoNumberCountsAsNothing) {
    PlaylistRows rows;
    rows.Append(MakeRow(1, QStringLiteral("a"), QStringLiteral("no time"), QStringLiteral("big"),
                        QStringLiteral("/"), QStringLiteral("a")));
    EXPECT_EQ(rows.TotalSums().seconds, 0);
    EXPECT_EQ(rows.TotalSums().milliMegabytes, 0);
}

TEST(PlaylistRows, TheIndexKeyHasThreeDigitsAtLeast) {
    PlaylistRows rows;
    rows.Append(Numbered(7, QStringLiteral("a")));
    rows.Append(Numbered(1000, QStringLiteral("b")));
    rows.SortByIndex();
    EXPECT_EQ(Column(rows, SubSortKey), (std::vector<std::string>{"007", "1000"}));
}

TEST(PlaylistRows, FromAThousandOnTheIndexSortsAsText) {
    PlaylistRows rows;
    Fill(rows, 1001);
    rows.SortByIndex();
    EXPECT_EQ(Utf8(rows.Field(100, RowText)), "100.t100");
    EXPECT_EQ(Utf8(rows.Field(101, RowText)), "1000.t1000");
    EXPECT_EQ(Utf8(rows.Field(102, RowText)), "1001.t1001");
    EXPECT_EQ(Utf8(rows.Field(103, RowText)), "101.t101");
    EXPECT_EQ(Utf8(rows.Field(1001, RowText)), "999.t999");
}

TEST(PlaylistRows, RowsAppendedOneByOneEndInTheOrderOfASortOfAll) {
    for (const bool ascending : {true, false}) {
        PlaylistRows oneByOne;
        oneByOne.SetAscending(ascending);
        for (int number = 1; number <= 1205; ++number) {
            oneByOne.Append(Numbered(number, QStringLiteral("t%1").arg(number)));
            oneByOne.SortByIndex();
        }
        PlaylistRows atOnce;
        atOnce.SetAscending(ascending);
        Fill(atOnce, 1205);
        atOnce.SortByIndex();
        EXPECT_EQ(Column(oneByOne, RowText), Column(atOnce, RowText)) << "ascending " << ascending;
    }
}

TEST(PlaylistRows, AnotherSortOrEditInBetweenDoesNotMisleadTheIndexOrder) {
    PlaylistRows rows;
    Fill(rows, 5);
    rows.SortByIndex();
    rows.SetField(1, RowText, QStringLiteral("9.moved"));
    rows.Append(Numbered(6, QStringLiteral("t6")));
    rows.SortByIndex();
    EXPECT_EQ(Column(rows, RowText),
              (std::vector<std::string>{"2.t2", "3.t3", "4.t4", "5.t5", "6.t6", "9.moved"}));
    rows.SortBy(SubFileName);
    rows.Append(Numbered(1, QStringLiteral("t1")));
    rows.SortByIndex();
    EXPECT_EQ(Column(rows, RowText),
              (std::vector<std::string>{"1.t1", "2.t2", "3.t3", "4.t4", "5.t5", "6.t6", "9.moved"}));
    rows.Remove(1);
    rows.Append(Numbered(8, QStringLiteral("t8")));
    rows.SortByIndex();
    EXPECT_EQ(Column(rows, RowText),
              (std::vector<std::string>{"2.t2", "3.t3", "4.t4", "5.t5", "6.t6", "8.t8", "9.moved"}));
}

TEST(PlaylistRows, EqualKeysKeepTheirOrder) {
    PlaylistRows rows;
    rows.Append(Numbered(1, QStringLiteral("first")));
    rows.Append(Numbered(1, QStringLiteral("second")));
    rows.Append(Numbered(1, QStringLiteral("third")));
    rows.SortBy(SubTime);
    EXPECT_EQ(Column(rows, RowText), (std::vector<std::string>{"1.first", "1.second", "1.third"}));
}

TEST(PlaylistRows, AnAppendedRowComesBehindThoseOfItsNumber) {
    for (const bool ascending : {true, false}) {
        PlaylistRows rows;
        rows.SetAscending(ascending);
        Fill(rows, 2);
        rows.SortByIndex();
        rows.Append(Numbered(1, QStringLiteral("later")));
        rows.SortByIndex();
        const std::vector<std::string> upwards = {"1.t1", "1.later", "2.t2"};
        const std::vector<std::string> downwards = {"2.t2", "1.t1", "1.later"};
        EXPECT_EQ(Column(rows, RowText), ascending ? upwards : downwards);
    }
}

TEST(PlaylistRows, ANumberTooLongToCountSortsAsZero) {
    PlaylistRows rows;
    PlaylistRow row = Numbered(1, QStringLiteral("t"));
    row.fields[RowText] = QStringLiteral("99999999999999999999999999.t");
    rows.Append(row);
    rows.Append(Numbered(2, QStringLiteral("u")));
    rows.SortByIndex();
    EXPECT_EQ(Column(rows, SubSortKey), (std::vector<std::string>{"000", "002"}));
}

TEST(PlaylistRows, AViewSeesEachRowWithItsEightColumns) {
    PlaylistRows rows;
    Fill(rows, 2);
    rows.SetSelected(2, true);
    rows.SetBold(1, true);
    EXPECT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows.columnCount(), 8);
    EXPECT_EQ(rows.data(rows.index(1, RowText)).toString(), QStringLiteral("2.t2"));
    EXPECT_FALSE(rows.data(rows.index(0, 0), PlaylistRows::SelectedRole).toBool());
    EXPECT_TRUE(rows.data(rows.index(1, 0), PlaylistRows::SelectedRole).toBool());
    EXPECT_TRUE(rows.data(rows.index(0, 0), PlaylistRows::BoldRole).toBool());
    EXPECT_FALSE(rows.data({}).isValid());
}

TEST(PlaylistRows, TheToolTipOfARowIsItsFormatString) {
    PlaylistRows rows;
    PlaylistRow row = Numbered(1, QStringLiteral("t"));
    row.fields[SubFormats] = QStringLiteral("44,100 Hz");
    rows.Append(row);
    EXPECT_EQ(rows.data(rows.index(0, 0), Qt::ToolTipRole).toString(), QStringLiteral("44,100 Hz"));
}

// How often a view is told, and of which rows.
struct Told {
    explicit Told(PlaylistRows& rows) {
        QObject::connect(&rows, &PlaylistRows::dataChanged, &rows,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             changed.emplace_back(first.row() + 1, last.row() + 1);
                         });
        QObject::connect(&rows, &PlaylistRows::rowsRemoved, &rows,
                         [this](const QModelIndex& /*parent*/, int first, int last) {
                             removed.emplace_back(first + 1, last + 1);
                         });
        QObject::connect(&rows, &PlaylistRows::modelReset, &rows, [this] { ++resets; });
    }
    using Spans = std::vector<std::pair<int, int>>;
    Spans changed;
    Spans removed;
    int resets = 0;
};

TEST(PlaylistRows, HeldChangesAreToldOnceForAllRows) {
    PlaylistRows rows;
    Fill(rows, 9);
    const Told told(rows);
    {
        const PlaylistRows::HeldChanges outer(rows);
        rows.SetSelected(7, true);
        {
            const PlaylistRows::HeldChanges inner(rows);
            rows.SetBold(3, true);
        }
        rows.SetField(5, SubFormats, QStringLiteral("x"));
        EXPECT_TRUE(told.changed.empty());
    }
    EXPECT_EQ(told.changed, (Told::Spans{{3, 7}}));
    rows.SetBold(9, true);
    EXPECT_EQ(told.changed.back(), (std::pair{9, 9}));
}

TEST(PlaylistRows, HeldChangesWithoutAChangeTellNothing) {
    PlaylistRows rows;
    Fill(rows, 2);
    const Told told(rows);
    { const PlaylistRows::HeldChanges held(rows); }
    rows.SelectOnly(0, 0);
    rows.ClearAllBold();
    rows.Renumber();
    EXPECT_TRUE(told.changed.empty());
}

TEST(PlaylistRows, SelectingARangeIsToldOnce) {
    PlaylistRows rows;
    Fill(rows, 9);
    const Told told(rows);
    rows.SelectOnly(2, 8);
    EXPECT_EQ(told.changed, (Told::Spans{{2, 8}}));
}

TEST(PlaylistRows, ASelectedBlockIsRemovedAsOne) {
    PlaylistRows rows;
    Fill(rows, 6);
    rows.SelectOnly(3, 5);
    rows.SetBold(4, true);
    const Told told(rows);
    rows.RemoveSelected();
    EXPECT_EQ(told.removed, (Told::Spans{{3, 5}}));
    EXPECT_EQ(told.resets, 0);
    EXPECT_EQ(Column(rows, RowText), (std::vector<std::string>{"1.t1", "2.t2", "6.t6"}));
    EXPECT_EQ(rows.TotalSums().rows, 3);
    EXPECT_EQ(rows.SelectedSums().rows, 0);
    EXPECT_EQ(rows.SelectedSums().seconds, 0);
}

TEST(PlaylistRows, ScatteredSelectedRowsAreRemovedByOneReset) {
    PlaylistRows rows;
    Fill(rows, 6);
    for (const int row : {1, 4, 6}) {
        rows.SetSelected(row, true);
    }
    const Told told(rows);
    rows.RemoveSelected();
    EXPECT_TRUE(told.removed.empty());
    EXPECT_EQ(told.resets, 1);
    EXPECT_EQ(Column(rows, RowText), (std::vector<std::string>{"2.t2", "3.t3", "5.t5"}));
    EXPECT_EQ(rows.SelectedCount(), 0);
}

TEST(PlaylistRows, WithoutASelectionNothingIsRemoved) {
    PlaylistRows rows;
    Fill(rows, 2);
    const Told told(rows);
    rows.RemoveSelected();
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(told.resets, 0);
}

TEST(PlaylistRows, AnAppendedRowFindsItsPlaceAfterSelectedRowsWereRemoved) {
    PlaylistRows rows;
    Fill(rows, 5);
    rows.SortByIndex();
    rows.Append(Numbered(6, QStringLiteral("t6")));
    for (const int row : {2, 4, 6}) {
        rows.SetSelected(row, true);
    }
    rows.RemoveSelected();
    rows.Append(Numbered(2, QStringLiteral("new")));
    rows.SortByIndex();
    EXPECT_EQ(Column(rows, RowText), (std::vector<std::string>{"1.t1", "2.new", "3.t3", "5.t5"}));
}

} // namespace
} // namespace kestrune
