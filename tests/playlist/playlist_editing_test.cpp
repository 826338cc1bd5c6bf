// Deleting rows, long lists, and the other buttons under the list.
#include "playlist/playlist_editing_fixture.h"

#include "playlist/playlist_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune::rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Deleting ---

class DeletingTest : public EditingTest {};

TEST_F(DeletingTest, AsksFirst) {
    Fill(2);
    editing.DelFilefromList();
    ASSERT_EQ(list.prompts.questions.size(), 1);
    EXPECT_EQ(Utf8(list.prompts.questions.first().text), "Delete selected files from Playlist?");
    EXPECT_EQ(list.prompts.questions.first().icon, PromptIcon::Question);
}

TEST_F(DeletingTest, YesRemovesTheSelectedRowsAndNumbersTheOthers) {
    Fill(6);
    Select({1, 3, 4});
    editing.DelFilefromList();
    EXPECT_EQ(RowTexts(), (Texts{"1.b", "2.e", "3.f"}));
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(list.rows.SelectedCount(), 0);
    EXPECT_EQ(list.rows.TotalSums().seconds, 180);
    EXPECT_EQ(RowsInDefaultFile(), 3);
    EXPECT_THAT(log, ElementsAre("Totals 3"));
}

TEST_F(DeletingTest, NoOnlySaves) {
    Fill(3);
    Select({1, 2});
    list.state.CurIndex = 9;
    list.prompts.answers = {false};
    playFile = QStringLiteral("/m/a.mp3");
    editing.DelFilefromList();
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.b", "3.c"}));
    EXPECT_EQ(list.state.CurIndex, 9);
    EXPECT_EQ(RowsInDefaultFile(), 3);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(DeletingTest, WithoutASelectionItStillAsksNumbersAndSaves) {
    Fill(3);
    list.rows.SetField(2, RowText, QStringLiteral("77.b"));
    editing.DelFilefromList();
    EXPECT_EQ(list.prompts.questions.size(), 1);
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.b", "3.c"}));
    EXPECT_EQ(RowsInDefaultFile(), 3);
    EXPECT_THAT(log, ElementsAre("Totals 3"));
}

TEST_F(DeletingTest, TheRowThatPlaysStopsPlayback) {
    Fill(3);
    Select({2});
    playFile = QStringLiteral("/m/b.mp3");
    editing.DelFilefromList();
    EXPECT_THAT(log, ElementsAre("StopPlay of 3", "Totals 2"));
}

TEST_F(DeletingTest, OtherRowsKeepPlaying) {
    Fill(3);
    Select({1, 3});
    playFile = QStringLiteral("/m/b.mp3");
    editing.DelFilefromList();
    EXPECT_THAT(log, ElementsAre("Totals 1"));
}

TEST_F(DeletingTest, AnotherRowOfTheFileThatPlaysStopsPlaybackToo) {
    Fill(2);
    list.rows.Append(list.rows.Row(1));
    Select({3});
    playFile = QStringLiteral("/m/a.mp3");
    editing.DelFilefromList();
    EXPECT_THAT(log, ElementsAre("StopPlay of 3", "Totals 2"));
}

TEST_F(DeletingTest, CurIndexBehindTheListBecomesItsLastRow) {
    Fill(4);
    Select({3, 4});
    list.state.CurIndex = 4;
    list.state.LastIndex = 4;
    editing.DelFilefromList();
    EXPECT_EQ(list.state.CurIndex, 2);
    EXPECT_EQ(list.state.LastIndex, 4);
}

TEST_F(DeletingTest, CurIndexInsideTheListStays) {
    Fill(4);
    Select({1});
    list.state.CurIndex = 2;
    editing.DelFilefromList();
    EXPECT_EQ(list.state.CurIndex, 2);
}

TEST_F(DeletingTest, DeletingAllLeavesNoCurrentRow) {
    Fill(3);
    Select({1, 2, 3});
    list.state.CurIndex = 2;
    editing.DelFilefromList();
    EXPECT_EQ(list.rows.Count(), 0);
    EXPECT_EQ(list.state.CurIndex, 0);
    EXPECT_EQ(RowsInDefaultFile(), 0);
}

TEST_F(DeletingTest, ARowWithoutAPointKeepsItsTextBehindTheNumber) {
    Fill(2);
    list.rows.SetField(2, RowText, QStringLiteral("hand-made"));
    Select({1});
    editing.DelFilefromList();
    EXPECT_EQ(RowTexts(), (Texts{"1.hand-made"}));
}

TEST_F(DeletingTest, TheNumbersFollowThePlacesOfASortedList) {
    Fill(4);
    OrderList(list.rows, 1);
    OrderList(list.rows, 1);
    const std::string before = Titles();
    Select({1});
    editing.DelFilefromList();
    EXPECT_EQ(Titles(), before.substr(1));
    EXPECT_THAT(Utf8(list.rows.Field(1, RowText)), testing::StartsWith("1."));
    EXPECT_THAT(Utf8(list.rows.Field(3, RowText)), testing::StartsWith("3."));
}

TEST_F(DeletingTest, RowsAddedAfterADeletionStandBehindTheOthers) {
    Fill(5);
    RestoreIndexOrder(list.rows);
    Select({2, 4});
    editing.DelFilefromList();
    list.rows.Append(MakeRow(4, QStringLiteral("z"), QStringLiteral("01:00"), QStringLiteral("1.0m"),
                             QStringLiteral("/m/"), QStringLiteral("z.mp3")));
    RestoreIndexOrder(list.rows);
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.c", "3.e", "4.z"}));
}

TEST_F(DeletingTest, TheButtonAlsoSetsTheNeighboursAndSavesOnceMore) {
    Fill(2);
    Select({1});
    bool savedBefore = false;
    QObject::connect(&editing, &PlaylistEditing::NeighboursChanged, &editing, [&] {
        savedBefore = RowsInDefaultFile() == 1;
        QFile::remove(list.DefaultFile());
    });
    editing.ImageListCmd_Click(1);
    EXPECT_THAT(log, ElementsAre("Totals 1", "Neighbours"));
    EXPECT_TRUE(savedBefore);
    EXPECT_EQ(RowsInDefaultFile(), 1);
}

TEST_F(DeletingTest, TheButtonDoesNothingWithAnEmptyList) {
    editing.ImageListCmd_Click(1);
    EXPECT_THAT(list.prompts.questions, IsEmpty());
    EXPECT_EQ(RowsInDefaultFile(), -1);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(DeletingTest, TheKeyDeletesAndSavesWithoutTheNeighbours) {
    Fill(2);
    Select({2});
    editing.DeleteKey();
    EXPECT_EQ(RowTexts(), (Texts{"1.a"}));
    EXPECT_EQ(RowsInDefaultFile(), 1);
    EXPECT_THAT(log, ElementsAre("Totals 1"));
}

// --- Long lists ---

class LongListEditingTest : public EditingTest {
protected:
    static constexpr int rowCount = 10000;

    LongListEditingTest() {
        for (int number = 1; number <= rowCount; ++number) {
            PlaylistRow row = MakeRow(number, QString::number(number), QStringLiteral("01:00"),
                                      QStringLiteral("1.0m"), QStringLiteral("/m/"), QStringLiteral("x.mp3"));
            row.selected = number % 2 == 0;
            list.rows.Append(std::move(row));
        }
        const auto count = [this] { ++told; };
        QObject::connect(&list.rows, &PlaylistRows::dataChanged, &editing, count);
        QObject::connect(&list.rows, &PlaylistRows::rowsRemoved, &editing, count);
        QObject::connect(&list.rows, &PlaylistRows::rowsMoved, &editing, count);
        QObject::connect(&list.rows, &PlaylistRows::modelReset, &editing, count);
        QObject::connect(&list.rows, &PlaylistRows::layoutChanged, &editing, count);
    }

    int told = 0;
};

TEST_F(LongListEditingTest, DeletingEveryOtherRowIsToldAFewTimes) {
    editing.DelFilefromList();
    EXPECT_EQ(list.rows.Count(), rowCount / 2);
    EXPECT_EQ(Utf8(list.rows.Field(5000, RowText)), "5000.9999");
    EXPECT_EQ(RowsInDefaultFile(), rowCount / 2);
    EXPECT_LE(told, 3);
}

TEST_F(LongListEditingTest, MovingEveryOtherRowIsToldAFewTimes) {
    editing.ListUpDown(true);
    EXPECT_EQ(Utf8(list.rows.Field(1, RowText)), "1.2");
    EXPECT_EQ(Utf8(list.rows.Field(rowCount, RowText)), "10000.9999");
    EXPECT_EQ(list.rows.SelectedCount(), rowCount / 2);
    EXPECT_LE(told, 3);
}

// --- The other buttons ---

TEST_F(EditingTest, TheFirstButtonAddsFiles) {
    list.prompts.filesToChoose = {{list.AddMusic(QStringLiteral("x.mp3"))}};
    editing.ImageListCmd_Click(0);
    EXPECT_EQ(list.rows.Count(), 1);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(EditingTest, SaveWantsARowAndOpenDoesNot) {
    editing.ImageListCmd_Click(3);
    EXPECT_THAT(list.prompts.choices, IsEmpty());
    editing.ImageListCmd_Click(2);
    ASSERT_EQ(list.prompts.choices.size(), 1);
    EXPECT_EQ(Utf8(list.prompts.choices.first().title), "Open playlist");
    Fill(1);
    editing.ImageListCmd_Click(3);
    ASSERT_EQ(list.prompts.choices.size(), 2);
    EXPECT_EQ(Utf8(list.prompts.choices.last().title), "Save playlist");
}

TEST_F(EditingTest, AButtonThatIsNotThereDoesNothing) {
    Fill(1);
    editing.ImageListCmd_Click(6);
    editing.ImageListCmd_Click(-1);
    EXPECT_THAT(log, IsEmpty());
}

} // namespace
} // namespace kestrune::rules
