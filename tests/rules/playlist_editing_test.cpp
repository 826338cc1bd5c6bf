// Deleting and moving rows.
#include "playlist/playlist_editing.h"

#include "playlist/ksl_format.h"
#include "playlist/playlist_order.h"
#include "rules/rule_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Column;
using rules::MakeRow;
using rules::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

class EditingTest : public testing::Test {
protected:
    EditingTest() {
        QObject::connect(&editing, &PlaylistEditing::RowShown, &editing,
                         [this](int row) { Note(QStringLiteral("Row %1").arg(row)); });
        QObject::connect(&editing, &PlaylistEditing::ThumbRepaint, &editing,
                         [this] { Note(QStringLiteral("Thumb")); });
        QObject::connect(&editing, &PlaylistEditing::TotalsChanged, &editing,
                         [this] { Note(QStringLiteral("Totals %1").arg(list.rows.Count())); });
        QObject::connect(&editing, &PlaylistEditing::NeighboursChanged, &editing,
                         [this] { Note(QStringLiteral("Neighbours")); });
    }
    // Rows "1.a", "2.b", ... of files "/m/a.mp3", ...
    void Fill(int count) {
        for (int i = 0; i < count; ++i) {
            const QString name(QChar(u'a' + i));
            list.rows.Append(MakeRow(i + 1, name, QStringLiteral("01:00"), QStringLiteral("1.0m"),
                                     QStringLiteral("/m/"), name + QStringLiteral(".mp3")));
        }
    }
    void Select(std::initializer_list<int> selected) {
        list.rows.SelectOnly(0, 0);
        for (const int row : selected) {
            list.rows.SetSelected(row, true);
        }
    }
    QList<int> Selected() const {
        QList<int> selected;
        for (int row = 1; row <= list.rows.Count(); ++row) {
            if (list.rows.IsSelected(row)) {
                selected.append(row);
            }
        }
        return selected;
    }
    Texts RowTexts() const { return Column(list.rows, RowText); }
    // The titles of all rows, one letter each.
    std::string Titles() const {
        QString titles;
        for (int row = 1; row <= list.rows.Count(); ++row) {
            titles.append(list.rows.Title(row));
        }
        return Utf8(titles);
    }
    int RowsInDefaultFile() const {
        QFile file(list.DefaultFile());
        return file.open(QIODevice::ReadOnly) ? KslCount(file.read(2)) : -1;
    }
    // The value of a field after its row was moved.
    std::string Moved(RowField field, const QString& value) {
        list.rows.Clear();
        Fill(2);
        list.rows.SetField(1, field, value);
        editing.SwapListViewItem(1, 2);
        return Utf8(list.rows.Field(2, field));
    }
    void Note(const QString& entry) { log.append(entry); }

    rules::Playlist list;
    QStringList log;
    QString playFile;
    PlaylistEditing editing{list.state,
                            list.rows,
                            list.files,
                            list.prompts,
                            {[this] { return playFile; },
                             [this] { Note(QStringLiteral("StopPlay of %1").arg(list.rows.Count())); }}};
};

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
    EXPECT_THAT(log, ElementsAre("Totals 3", "Thumb"));
}

TEST_F(DeletingTest, NoOnlySavesAndRepaintsTheThumb) {
    Fill(3);
    Select({1, 2});
    list.state.CurIndex = 9;
    list.prompts.answers = {false};
    playFile = QStringLiteral("/m/a.mp3");
    editing.DelFilefromList();
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.b", "3.c"}));
    EXPECT_EQ(list.state.CurIndex, 9);
    EXPECT_EQ(RowsInDefaultFile(), 3);
    EXPECT_THAT(log, ElementsAre("Thumb"));
}

TEST_F(DeletingTest, WithoutASelectionItStillAsksNumbersAndSaves) {
    Fill(3);
    list.rows.SetField(2, RowText, QStringLiteral("77.b"));
    editing.DelFilefromList();
    EXPECT_EQ(list.prompts.questions.size(), 1);
    EXPECT_EQ(RowTexts(), (Texts{"1.a", "2.b", "3.c"}));
    EXPECT_EQ(RowsInDefaultFile(), 3);
    EXPECT_THAT(log, ElementsAre("Totals 3", "Thumb"));
}

TEST_F(DeletingTest, TheRowThatPlaysStopsPlayback) {
    Fill(3);
    Select({2});
    playFile = QStringLiteral("/m/b.mp3");
    editing.DelFilefromList();
    EXPECT_THAT(log, ElementsAre("StopPlay of 3", "Totals 2", "Thumb"));
}

TEST_F(DeletingTest, OtherRowsKeepPlaying) {
    Fill(3);
    Select({1, 3});
    playFile = QStringLiteral("/m/b.mp3");
    editing.DelFilefromList();
    EXPECT_THAT(log, ElementsAre("Totals 1", "Thumb"));
}

TEST_F(DeletingTest, AnotherRowOfTheFileThatPlaysStopsPlaybackToo) {
    Fill(2);
    list.rows.Append(list.rows.Row(1));
    Select({3});
    playFile = QStringLiteral("/m/a.mp3");
    editing.DelFilefromList();
    EXPECT_THAT(log, ElementsAre("StopPlay of 3", "Totals 2", "Thumb"));
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
    EXPECT_THAT(log, ElementsAre("Totals 1", "Thumb", "Neighbours", "Thumb"));
    EXPECT_TRUE(savedBefore);
    EXPECT_EQ(RowsInDefaultFile(), 1);
}

TEST_F(DeletingTest, TheButtonDoesNothingWithAnEmptyList) {
    editing.ImageListCmd_Click(1);
    EXPECT_THAT(list.prompts.questions, IsEmpty());
    EXPECT_EQ(RowsInDefaultFile(), -1);
    EXPECT_THAT(log, ElementsAre("Thumb"));
}

TEST_F(DeletingTest, TheKeyDeletesAndSavesWithoutTheNeighbours) {
    Fill(2);
    Select({2});
    editing.DeleteKey();
    EXPECT_EQ(RowTexts(), (Texts{"1.a"}));
    EXPECT_EQ(RowsInDefaultFile(), 1);
    EXPECT_THAT(log, ElementsAre("Totals 1", "Thumb"));
}

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
    EXPECT_THAT(shown({2}), ElementsAre("Row 1", "Thumb"));
    EXPECT_THAT(shown({3}), ElementsAre("Row 1", "Thumb"));
    EXPECT_THAT(shown({4}), ElementsAre("Row 2", "Thumb"));
    EXPECT_THAT(shown({5, 6}), ElementsAre("Row 3", "Thumb"));
    EXPECT_THAT(shown({1}), ElementsAre("Thumb"));
}

TEST_F(MovingTest, TheFirstRowThatMovesDownSaysWhichRowToShow) {
    Fill(6);
    const auto shown = [this](std::initializer_list<int> selected) {
        Select(selected);
        log.clear();
        editing.ListUpDown(false);
        return log;
    };
    EXPECT_THAT(shown({5}), ElementsAre("Row 6", "Thumb"));
    EXPECT_THAT(shown({4}), ElementsAre("Row 5", "Thumb"));
    EXPECT_THAT(shown({3}), ElementsAre("Row 5", "Thumb"));
    EXPECT_THAT(shown({1, 2}), ElementsAre("Row 4", "Thumb"));
    EXPECT_THAT(shown({6}), ElementsAre("Thumb"));
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
    EXPECT_THAT(log, ElementsAre("Row 1", "Thumb", "Thumb"));
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
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.") + QString(380, u'x')), "2." + std::string(380, 'x'));
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.") + QString(380, u'x') + u'y'), "2." + std::string(380, 'x'));
}

TEST_F(SwappingTest, WidthsAreBytesAndNoCharacterIsCut) {
    // Two bytes each: 190 fill the title, the 191st goes.
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.") + QString(191, QChar(0xE9))),
              "2." + Utf8(QString(190, QChar(0xE9))));
    // One byte and then pairs: the character on the border goes as a whole.
    EXPECT_EQ(Moved(RowText, QStringLiteral("1.x") + QString(190, QChar(0xE9))),
              "2.x" + Utf8(QString(189, QChar(0xE9))));
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
    EXPECT_THAT(log, ElementsAre("Thumb"));
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
} // namespace kestrune
