// What the list shows, and how mouse and keys work on it.
#include "playlist/playlist_view_fixture.h"

#include "support/fake_clock.h"

#include <QMimeData>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// How many pixels of a row two pictures of the list do not share.
int Difference(const QImage& before, const QImage& after, const QRect& area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += before.pixel(x, y) != after.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

TEST_F(PlaylistViewTest, AnEmptyListSaysWhatToDo) {
    Show();
    const QImage empty = Picture();
    Fill(1);
    const QImage filled = Picture();
    const QRect middle(0, 40, listWidth, 40);
    EXPECT_GT(Difference(empty, filled, middle), 100);
    rows.Clear();
    EXPECT_EQ(Difference(empty, Picture(), middle), 0);
}

TEST_F(PlaylistViewTest, TheRowUnderTheMouseIsLifted) {
    Fill(5);
    Show();
    const QImage before = Picture();
    QTest::mouseMove(list.viewport(), RowPoint(3));
    const QImage over = Picture();
    EXPECT_EQ(Difference(before, over, list.RowRect(2)), 0);
    EXPECT_GT(Difference(before, over, list.RowRect(3)), listWidth * 10);
    EXPECT_GT(over.pixelColor(350, RowPoint(3).y()).red(), before.pixelColor(350, RowPoint(3).y()).red());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(list.viewport(), &leave);
    EXPECT_EQ(Picture(), before);
}

TEST_F(PlaylistViewTest, TheBoldRowAndTheSelectedRowLookDifferent) {
    Fill(4);
    Show();
    const QImage before = Picture();
    rows.SetBold(2, true);
    rows.SetSelected(3, true);
    const QImage after = Picture();
    EXPECT_EQ(Difference(before, after, list.RowRect(1)), 0);
    EXPECT_GT(Difference(before, after, list.RowRect(2)), 100);
    EXPECT_GT(Difference(before, after, list.RowRect(3)), listWidth * 10);
}

TEST_F(PlaylistViewTest, ItIsAsSharpAsTheScreen) {
    Fill(3);
    rows.SetSelected(2, true);
    Show();
    QPixmap twice(list.viewport()->size() * 2);
    twice.setDevicePixelRatio(2);
    list.viewport()->render(&twice);
    const QImage picture = twice.toImage();
    // The selection begins at a whole row, also in the pixels of the screen.
    const int top = PlaylistView::rowHeight * 2;
    EXPECT_LT(picture.pixelColor(700, top - 1).blue(), 40);
    EXPECT_GT(picture.pixelColor(700, top).blue(), 60);
}

TEST_F(PlaylistViewTest, MovesOfTheMouseAreTold) {
    Fill(2);
    Show();
    int moves = 0;
    QObject::connect(&list, &PlaylistView::MouseMoved, &list, [&] { ++moves; });
    QTest::mouseMove(list.viewport(), RowPoint(1));
    QTest::mouseMove(list.viewport(), RowPoint(2));
    EXPECT_GE(moves, 2);
}

// --- Tool tip ---

TEST_F(PlaylistViewTest, TheHintIsTheTipForTenSecondsAndThenAClicksFormat) {
    FakeClock clock;
    ListTip tip(clock);
    list.UseTip(&tip);
    Fill(3);
    Show();
    QTest::mouseMove(list.viewport(), RowPoint(1));
    EXPECT_EQ(list.toolTip().toStdString(), "Hold CTRL to select more than 1");
    clock.monotonicMs = 10000;
    QTest::mouseMove(list.viewport(), RowPoint(2));
    EXPECT_EQ(list.toolTip().toStdString(), "");
    Click(3);
    EXPECT_EQ(list.toolTip().toStdString(), "format 3");
}

// --- Keys ---

TEST_F(PlaylistViewTest, CtrlMovesTheMarkAndCtrlSpaceSelects) {
    Fill(9);
    Show();
    Click(2);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_EQ(list.FocusRow(), 4);
    QTest::keyClick(&list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(2, 4));
    QTest::keyClick(&list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(PlaylistViewTest, KeysOfTheWindowPass) {
    Fill(2);
    Show();
    const auto passes = [this](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        event.accept();
        QCoreApplication::sendEvent(&list, &event);
        return !event.isAccepted();
    };
    EXPECT_TRUE(passes(Qt::Key_Space, Qt::NoModifier));
    EXPECT_TRUE(passes(Qt::Key_F, Qt::AltModifier));
    EXPECT_TRUE(passes(Qt::Key_Down, Qt::AltModifier));
    EXPECT_TRUE(passes(Qt::Key_A, Qt::NoModifier));
    EXPECT_FALSE(passes(Qt::Key_Down, Qt::NoModifier));
}

TEST_F(PlaylistViewTest, KeysInAnEmptyListDoNothing) {
    Show();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
                              Qt::Key_End, Qt::Key_Return}) {
        QTest::keyClick(&list, key);
        QTest::keyClick(&list, key, Qt::ControlModifier);
    }
    EXPECT_EQ(list.FocusRow(), 0);
}

// --- Columns beyond the right edge ---

class WideListTest : public PlaylistViewTest {
protected:
    WideListTest() {
        Fill(3);
        list.SetColumns({165, 38, 40, 47, 70, 200, 400, 0});
    }
    int Offset() const { return list.horizontalScrollBar()->value(); }
    int Farthest() const { return list.horizontalScrollBar()->maximum(); }
};

TEST_F(WideListTest, TheKeysScrollSideways) {
    Show();
    EXPECT_EQ(Farthest(), 960 - listWidth);
    const QImage start = Picture();
    QTest::keyClick(&list, Qt::Key_Right);
    EXPECT_GT(Offset(), 0);
    EXPECT_GT(Difference(start, Picture(), list.RowRect(1)), 100);
    QTest::keyClick(&list, Qt::Key_Left);
    EXPECT_EQ(Offset(), 0);
    EXPECT_EQ(Picture(), start);
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(WideListTest, ShiftAndTheWheelScrollSideways) {
    Show();
    Wheel(list.viewport(), {0, -120}, Qt::ShiftModifier);
    const int once = Offset();
    EXPECT_GT(once, 0);
    Wheel(list.viewport(), {-120, 0}, Qt::ShiftModifier);
    EXPECT_EQ(Offset(), 2 * once);
    for (int i = 0; i < 50; ++i) {
        Wheel(list.viewport(), {0, -120}, Qt::ShiftModifier);
    }
    EXPECT_EQ(Offset(), Farthest());
    Wheel(list.viewport(), {0, 120}, Qt::ShiftModifier);
    EXPECT_EQ(Offset(), Farthest() - once);
    EXPECT_EQ(list.FirstVisible(), 1);
}

TEST_F(WideListTest, ALineAtTheBottomShowsThePart) {
    Show();
    const auto isLit = [this](int x) { return Picture().pixelColor(x, listHeight - 1).blue() > 150; };
    EXPECT_TRUE(isLit(20));
    EXPECT_FALSE(isLit(340));
    list.horizontalScrollBar()->setValue(Farthest());
    EXPECT_FALSE(isLit(20));
    EXPECT_TRUE(isLit(340));
    list.SetColumns(startColumnWidths);
    EXPECT_FALSE(isLit(20));
    EXPECT_FALSE(isLit(340));
}

TEST_F(WideListTest, ColumnsThatFitDoNotScroll) {
    list.SetColumns(startColumnWidths);
    Show();
    EXPECT_EQ(Farthest(), 0);
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QCoreApplication::sendEvent(&list, &right);
    EXPECT_FALSE(right.isAccepted());
}

// --- The keyboard's mark ---

TEST_F(PlaylistViewTest, TheMarkIsSeenWhileTheListHasTheFocus) {
    Fill(3);
    Show();
    list.setFocus(Qt::MouseFocusReason);
    Click(2);
    const QImage with = Picture();
    other.setFocus();
    const QImage without = Picture();
    EXPECT_GT(Difference(with, without, list.RowRect(2)), listWidth);
    EXPECT_EQ(Difference(with, without, list.RowRect(3)), 0);
}

TEST_F(PlaylistViewTest, TabFramesTheListAlsoWhenItIsEmpty) {
    Show();
    other.setFocus();
    const QImage without = Picture();
    list.setFocus(Qt::TabFocusReason);
    const QImage with = Picture();
    EXPECT_NE(with.pixel(0, 60), without.pixel(0, 60));
    EXPECT_NE(with.pixel(listWidth - 1, 60), without.pixel(listWidth - 1, 60));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {50, 50});
    EXPECT_EQ(Picture(), without);
}

TEST_F(PlaylistViewTest, TheMarkStaysWithItsRowWhenRowsAboveGo) {
    Fill(9);
    Show();
    Click(6);
    rows.SelectOnly(2, 4);
    rows.RemoveSelected();
    EXPECT_EQ(list.FocusRow(), 3);
}

TEST_F(PlaylistViewTest, TheMarkOfARemovedRowGoesToTheOneThatTookItsPlace) {
    Fill(9);
    Show();
    Click(3);
    Click(5, Qt::ShiftModifier);
    rows.RemoveSelected();
    EXPECT_EQ(list.FocusRow(), 3);
    rows.SelectOnly(3, 6);
    rows.RemoveSelected();
    EXPECT_EQ(list.FocusRow(), 2);
}

TEST_F(PlaylistViewTest, TheMarkFollowsASwap) {
    Fill(3);
    Show();
    Click(2);
    list.FollowSwap(2, 1);
    EXPECT_EQ(list.FocusRow(), 1);
    list.FollowSwap(3, 2);
    EXPECT_EQ(list.FocusRow(), 1);
    list.FollowSwap(2, 1);
    EXPECT_EQ(list.FocusRow(), 2);
}

// --- Files held over the list ---

TEST_F(PlaylistViewTest, FilesHeldOverTheListFrameIt) {
    Fill(1);
    Show();
    const QImage before = Picture();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/music/x.mp3"))});
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list.viewport(), &enter);
    EXPECT_NE(Picture(), before);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(list.viewport(), &leave);
    EXPECT_EQ(Picture(), before);
}

} // namespace
} // namespace kestrune
