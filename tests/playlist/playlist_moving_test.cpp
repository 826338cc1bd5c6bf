// Moving rows up and down, and what a row loses on its way.
#include "playlist/playlist_editing_fixture.h"

#include "playlist/playlist_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune::rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Moving ---

class MovingTest : public EditingTest {};

TEST_F(MovingTest, AnEmptyListDoesNothing) {
    editing.ListUpDown(true);
    editing.ListUpDown(false);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MovingTest, UpSwapsWithTheRowAboveAndTheNumbersStay) {
    Fill(3);
    Select({3});
    editing.ListUpDown(true);
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.c", "3.b"}));
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_EQ(Utf8(list.rows.FullPath(2)), "/m/c.mp3");
}

TEST_F(MovingTest, DownSwapsWithTheRowBelowAndTheNumbersStay) {
    Fill(3);
    Select({1});
    editing.ListUpDown(false);
    EXPECT_EQ(RowTexts(), (Texts{"1.b", "2.a", "3.c"}));
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(MovingTest, RowOneStaysWhenMovedUp) {
    Fill(3);
    Select({1});
    editing.ListUpDown(true);
    EXPECT_EQ(Titles(), "abc");
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(MovingTest, TheLastRowStaysWhenMovedDown) {
    Fill(3);
    Select({3});
    editing.ListUpDown(false);
    EXPECT_EQ(Titles(), "abc");
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(MovingTest, ABlockMovesAsABlock) {
    Fill(6);
    Select({3, 4, 5});
    editing.ListUpDown(true);
    EXPECT_EQ(Titles(), "acdebf");
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
    editing.ListUpDown(false);
    editing.ListUpDown(false);
    EXPECT_EQ(Titles(), "abfcde");
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6));
}

// A selected row changes places with its neighbour whatever that is, so a block that has no room turns.
TEST_F(MovingTest, ABlockAtTheEdgeChangesItsOrder) {
    Fill(5);
    Select({1, 2, 5});
    editing.ListUpDown(true);
    EXPECT_EQ(Titles(), "baced");
    EXPECT_THAT(Selected(), ElementsAre(1, 2, 4));
    Select({2, 4, 5});
    editing.ListUpDown(false);
    EXPECT_EQ(Titles(), "bcade");
    EXPECT_THAT(Selected(), ElementsAre(3, 4, 5));
}

TEST_F(MovingTest, TheFirstRowThatMovesUpSaysWhichRowToShow) {
    Fill(6);
    const auto shown = [this](std::initializer_list<int> selected) {
        Select(selected);
        log.clear();
        editing.ListUpDown(true);
        return log;
    };
    EXPECT_THAT(shown({2}), ElementsAre("Row 1"));
    EXPECT_THAT(shown({3}), ElementsAre("Row 1"));
    EXPECT_THAT(shown({4}), ElementsAre("Row 2"));
    EXPECT_THAT(shown({5, 6}), ElementsAre("Row 3"));
    EXPECT_THAT(shown({1}), IsEmpty());
}

TEST_F(MovingTest, TheFirstRowThatMovesDownSaysWhichRowToShow) {
    Fill(6);
    const auto shown = [this](std::initializer_list<int> selected) {
        Select(selected);
        log.clear();
        editing.ListUpDown(false);
        return log;
    };
    EXPECT_THAT(shown({5}), ElementsAre("Row 6"));
    EXPECT_THAT(shown({4}), ElementsAre("Row 5"));
    EXPECT_THAT(shown({3}), ElementsAre("Row 5"));
    EXPECT_THAT(shown({1, 2}), ElementsAre("Row 4"));
    EXPECT_THAT(shown({6}), IsEmpty());
}

TEST_F(MovingTest, TheBoldMarkFollowsItsRowAndTheIndicesDoNot) {
    Fill(4);
    list.rows.SetBold(3, true);
    Select({3});
    list.state.CurIndex = 3;
    list.state.LastIndex = 3;
    editing.ListUpDown(true);
    EXPECT_TRUE(list.rows.IsBold(2));
    EXPECT_FALSE(list.rows.IsBold(3));
    EXPECT_EQ(list.state.CurIndex, 3);
    EXPECT_EQ(list.state.LastIndex, 3);
}

TEST_F(MovingTest, TheSelectedSumsStayRight) {
    Fill(3);
    list.rows.SetField(2, SubTime, QStringLiteral("05:00"));
    Select({2});
    editing.ListUpDown(true);
    EXPECT_EQ(list.rows.SelectedCount(), 1);
    EXPECT_EQ(list.rows.SelectedSums().seconds, 300);
    EXPECT_EQ(list.rows.TotalSums().seconds, 420);
}

TEST_F(MovingTest, TheButtonsMove) {
    Fill(3);
    Select({2});
    editing.ImageListCmd_Click(4);
    EXPECT_EQ(Titles(), "bac");
    EXPECT_THAT(log, ElementsAre("Row 1"));
    editing.ImageListCmd_Click(5);
    EXPECT_EQ(Titles(), "abc");
}

TEST_F(MovingTest, IndexBringsBackTheOrderAfterTheMove) {
    Fill(4);
    RestoreIndexOrder(list.rows);
    Select({4});
    editing.ListUpDown(true);
    RestoreIndexOrder(list.rows);
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.b", "3.d", "4.c"}));
}

// --- What a move costs a row ---

class SwappingTest : public EditingTest {};

TEST_F(SwappingTest, AllFieldsButTheSortKeyChangePlaces) {
    Fill(2);
    list.rows.SetField(1, SubFormats, QStringLiteral("first"));
    list.rows.SetField(1, SubSortKey, QStringLiteral("001"));
    list.rows.SetField(2, SubSortKey, QStringLiteral("002"));
    list.rows.SetSelected(1, true);
    list.rows.SetBold(2, true);
    editing.SwapListViewItem(1, 2);
    EXPECT_EQ(RowTexts(), (Texts{"1.b", "2.a"}));
    EXPECT_EQ(Column(list.rows, SubFormats), (Texts{"", "first"}));
    EXPECT_EQ(Column(list.rows, SubFileName), (Texts{"b.mp3", "a.mp3"}));
    EXPECT_EQ(Column(list.rows, SubSortKey), (Texts{"001", "002"}));
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_TRUE(list.rows.IsBold(1));
}

TEST_F(SwappingTest, RowsOutsideTheListAreNotTouched) {
    Fill(2);
    for (const int row : {-1, 0, 3}) {
        editing.SwapListViewItem(1, row);
        editing.SwapListViewItem(row, 2);
    }
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.b"}));
}

TEST_F(SwappingTest, ALongValueLosesItsTail) {
    const auto keeps = [this](RowField field, int letters) {
        return static_cast<int>(Moved(field, QString(letters, u'x')).size());
    };
    EXPECT_EQ(keeps(SubTime, 20), 20);
    EXPECT_EQ(keeps(SubTime, 21), 20);
    EXPECT_EQ(keeps(SubType, 3), 3);
    EXPECT_EQ(keeps(SubType, 4), 3);
    EXPECT_EQ(keeps(SubSize, 21), 20);
    EXPECT_EQ(keeps(SubFolder, 200), 200);
    EXPECT_EQ(keeps(SubFolder, 201), 200);
    EXPECT_EQ(keeps(SubFileName, 172), 172);
    EXPECT_EQ(keeps(SubFileName, 173), 172);
    EXPECT_EQ(keeps(SubFormats, 197), 197);
    EXPECT_EQ(keeps(SubFormats, 198), 197);
}

TEST_F(SwappingTest, ATitleOf381CharactersLosesItsEnd) {
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.") + QString(380, u'x')), std::string("2.").append(380, 'x'));
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.") + QString(380, u'x') + u'y'),
              std::string("2.").append(380, 'x'));
}

TEST_F(SwappingTest, WidthsAreCharactersAndNoneIsCut) {
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.") + QString(381, QChar(0xE9))),
              "2." + Utf8(QString(380, QChar(0xE9))));
    // A folder of 70 letters and 212 bytes.
    const QString folder = u'/' + QString(70, QChar(0x65E5)) + u'/';
    EXPECT_EQ(Moved(SubFolder, folder), Utf8(folder));
    // Characters of two units each.
    const QString clef = QString::fromUcs4(U"\U0001D11E");
    EXPECT_EQ(Moved(SubFileName, clef.repeated(172)), Utf8(clef.repeated(172)));
    EXPECT_EQ(Moved(SubFileName, u'x' + clef.repeated(172)), Utf8(u'x' + clef.repeated(171)));
}

TEST_F(SwappingTest, OnlyTheRowThatWasTakenUpLosesItsTail) {
    Fill(2);
    list.rows.SetField(2, RowText, QStringLiteral("2.") + QString(400, u'x'));
    editing.SwapListViewItem(1, 2);
    EXPECT_EQ(list.rows.Title(1).size(), 400);
}

TEST_F(SwappingTest, AValueThatHoldsTheEndMarkIsCutThere) {
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.one//two//three")), "2.one");
    EXPECT_EQ(Moved(SubFormats, QStringLiteral("MPEG//Layer")), "MPEG");
    EXPECT_EQ(Moved(SubFormats, QStringLiteral("//")), "");
}

TEST_F(SwappingTest, AFolderKeepsItsLastSeparator) {
    EXPECT_EQ(Moved(SubFolder, QStringLiteral("/music/live/")), "/music/live/");
    EXPECT_EQ(Moved(SubFolder, QStringLiteral("/")), "/");
}

TEST_F(SwappingTest, TheTitleBeginsBehindTheFirstPoint) {
    Fill(2);
    list.rows.SetField(1, RowText, QStringLiteral("1.No. 5"));
    list.rows.SetField(2, RowText, QStringLiteral("without"));
    editing.SwapListViewItem(1, 2);
    EXPECT_EQ(RowTexts(), (Texts{"1.without", "2.No. 5"}));
}

} // namespace
} // namespace kestrune::rules
