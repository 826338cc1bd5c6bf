// A list with ticks as the mouse, the keyboard and a screen reader use it.
#include "tool_window/ticked_list_view.h"
#include "tool_window/ticked_tracks.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QtTest/QtTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace kestrune {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

// No assistive program listens to a test: what it would be told is noted.
class NotingList : public TickedListView {
public:
    std::vector<int> told; // rows, 0-based

protected:
    void TellTick(int row) override {
        told.push_back(row);
        TickedListView::TellTick(row);
    }
};

class TickedListTest : public testing::Test {
protected:
    void SetUp() override {
        rows.tracks = {{QStringLiteral("One"), QStringLiteral("3:00"), false},
                       {QStringLiteral("Two"), QStringLiteral("4:00"), false},
                       {QStringLiteral("Three"), QStringLiteral("5:00"), false}};
        QObject::connect(&rows, &TickedRows::RowCheckChanged, [this](int row) { byUser.push_back(row); });
        view.setModel(&rows);
        view.resize(300, 160);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        view.setFocus();
    }

    QRect Cell(int row, int column = 0) { return view.visualRect(rows.index(row, column)); }
    void ClickBox(int row) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          {Cell(row).left() + 9, Cell(row).center().y()});
    }
    void ClickCell(int row, int column) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, Cell(row, column).center());
    }
    QAccessibleInterface* Root() { return QAccessible::queryAccessibleInterface(&view); }
    QAccessibleInterface* Box(int row) { return Root()->tableInterface()->cellAt(row, 0); }
    QAccessibleInterface* Length(int row) { return Root()->tableInterface()->cellAt(row, 1); }
    static void Do(QAccessibleInterface* cell, const QString& action) {
        cell->actionInterface()->doAction(action);
    }
    static QString Toggle() { return QAccessibleActionInterface::toggleAction(); }
    static QString Press() { return QAccessibleActionInterface::pressAction(); }
    static QString Focus() { return QAccessibleActionInterface::setFocusAction(); }

    TickedTracks rows;
    NotingList view;
    std::vector<int> byUser;
};

TEST_F(TickedListTest, AClickOnTheBoxTurnsTheTickOver) {
    ClickBox(1);
    EXPECT_TRUE(rows.IsChecked(2));
    EXPECT_THAT(byUser, ElementsAre(2));
    ClickBox(1);
    EXPECT_FALSE(rows.IsChecked(2));
    EXPECT_THAT(byUser, ElementsAre(2, 2));
}

TEST_F(TickedListTest, AClickBesideTheBoxOnlyChoosesTheRow) {
    ClickCell(1, 1);
    EXPECT_THAT(byUser, IsEmpty());
    EXPECT_EQ(view.currentIndex().row(), 1);
}

TEST_F(TickedListTest, SpaceTurnsTheTickOfTheRowOverInWhicheverColumnItIs) {
    view.setCurrentIndex(rows.index(2, 0));
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(rows.IsChecked(3));
    ClickCell(0, 1);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(rows.IsChecked(1));
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_FALSE(rows.IsChecked(1));
    EXPECT_THAT(byUser, ElementsAre(3, 1, 1));
}

TEST_F(TickedListTest, SpaceWithoutARowDoesNothing) {
    view.setCurrentIndex({});
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_THAT(byUser, IsEmpty());
}

TEST_F(TickedListTest, ATextThatIsEditedTakesSpaces) {
    view.setEditTriggers(QAbstractItemView::EditKeyPressed);
    view.setCurrentIndex(rows.index(0, 0));
    QTest::keyClick(&view, Qt::Key_F2);
    auto* editor = view.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("A b"));
    QTest::keyClick(editor, Qt::Key_Return);
    // The editor's text is taken in a turn of its own.
    EXPECT_TRUE(QTest::qWaitFor([this] { return rows.tracks[0].name == QLatin1String("A b"); }));
    EXPECT_THAT(byUser, IsEmpty());
}

TEST_F(TickedListTest, ToggleAndPressOfAScreenReaderTurnTheTickOver) {
    Do(Box(1), Toggle());
    EXPECT_TRUE(rows.IsChecked(2));
    Do(Box(1), Press());
    EXPECT_FALSE(rows.IsChecked(2));
    EXPECT_THAT(byUser, ElementsAre(2, 2));
    EXPECT_TRUE(view.selectionModel()->selectedRows().isEmpty()) << "and leave the selection alone";
    EXPECT_THAT(Length(1)->actionInterface()->actionNames(), Not(Contains(Toggle())));
    Do(Length(1), Toggle());
    EXPECT_FALSE(rows.IsChecked(2));
}

TEST_F(TickedListTest, AScreenReaderIsToldTheState) {
    rows.SetChecked(2, true);
    EXPECT_TRUE(Box(0)->state().checkable);
    EXPECT_FALSE(Box(0)->state().checked);
    EXPECT_TRUE(Box(1)->state().checked);
    EXPECT_FALSE(Length(1)->state().checkable);
    EXPECT_TRUE(Box(0)->state().editable);
    EXPECT_TRUE(Length(0)->state().readOnly);
    Do(Box(2), Focus());
    EXPECT_EQ(view.currentIndex().row(), 2);
    EXPECT_EQ(Root()->focusChild(), Box(2));
    EXPECT_TRUE(Box(2)->state().focused);
    EXPECT_TRUE(Box(2)->state().selected);
}

TEST_F(TickedListTest, AScreenReaderFindsItsCellsAndCaptions) {
    ASSERT_EQ(Root()->childCount(), 8);
    EXPECT_EQ(Root()->child(0)->text(QAccessible::Name), "Title");
    EXPECT_EQ(Root()->child(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(Root()->child(0)->rect().height(), view.header()->height());
    EXPECT_EQ(Root()->child(7)->text(QAccessible::Name), "5:00");
    EXPECT_EQ(Root()->child(8), nullptr);
    EXPECT_EQ(Root()->child(-1), nullptr);
    EXPECT_EQ(Root()->indexOfChild(Box(1)), 4);
    EXPECT_EQ(Box(1)->parent(), Root());
    EXPECT_EQ(Box(1)->tableCellInterface()->columnHeaderCells().value(0), Root()->child(0));
    const QPoint middle = Length(1)->rect().center();
    EXPECT_EQ(Root()->childAt(middle.x(), middle.y()), Length(1));
    EXPECT_EQ(Root()->tableInterface()->cellAt(3, 0), nullptr);
    EXPECT_EQ(Root()->tableInterface()->columnDescription(1), "Length");
    EXPECT_TRUE(Root()->tableInterface()->selectRow(1));
    EXPECT_THAT(Root()->tableInterface()->selectedRows(), ElementsAre(1));
    EXPECT_TRUE(Root()->tableInterface()->unselectRow(1));
    EXPECT_EQ(Root()->tableInterface()->selectedRowCount(), 0);
}

TEST_F(TickedListTest, ACellOfARowThatWentIsNotValid) {
    QAccessibleInterface* last = Box(2);
    ASSERT_TRUE(last->isValid());
    rows.tracks.pop_back();
    EXPECT_FALSE(last->isValid());
    EXPECT_EQ(last->text(QAccessible::Name), "");
    Do(last, Toggle());
    EXPECT_THAT(byUser, IsEmpty());
}

TEST_F(TickedListTest, CellsOutliveTheirRowsAndTheirList) {
    auto list = std::make_unique<TickedListView>();
    auto tracks = std::make_unique<TickedTracks>();
    tracks->tracks = {{QStringLiteral("One"), QStringLiteral("3:00"), false}};
    list->setModel(tracks.get());
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(list.get());
    QAccessibleInterface* box = root->tableInterface()->cellAt(0, 0);
    const QAccessible::Id id = QAccessible::uniqueId(box);
    ASSERT_TRUE(box->isValid());
    tracks.reset();
    EXPECT_FALSE(box->isValid());
    EXPECT_TRUE(box->state().invalid);
    EXPECT_EQ(root->childCount(), 0);
    EXPECT_TRUE(box->tableCellInterface()->columnHeaderCells().isEmpty());
    list.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr) << "they go with the list";
}

TEST_F(TickedListTest, AScreenReaderHearsOfTheTickOfTheRowThatItIsOn) {
    view.setCurrentIndex(rows.index(1, 1));
    rows.SetChecked(1, true);
    EXPECT_THAT(view.told, IsEmpty());
    rows.SetChecked(2, true);
    rows.SetAllChecked(false);
    EXPECT_THAT(view.told, ElementsAre(1, 1));
    rows.setData(rows.index(1, 0), QStringLiteral("New"));
    EXPECT_EQ(view.told.size(), 2U) << "of a text it is told elsewhere";
}

} // namespace
} // namespace kestrune
