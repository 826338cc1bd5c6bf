// The list's own scroll bar.
#include "playlist/playlist_view_fixture.h"

#include <QAbstractButton>
#include <QAccessible>

namespace kestrune {
namespace {

class PlaylistScrollBarTest : public PlaylistViewTest {
protected:
    static constexpr int trackTop = PlaylistScrollBar::arrowHeight;
    static constexpr int trackEnd = listHeight - PlaylistScrollBar::arrowHeight;
    static constexpr int lowestTop = trackEnd - PlaylistScrollBar::thumbHeight;

    QWidget* Thumb() { return bar.findChild<QWidget*>(QStringLiteral("PictureListBut")); }
    QWidget* Track() { return bar.findChild<QWidget*>(QStringLiteral("PictureScroll")); }
    QAbstractButton* Arrow(int index) {
        return bar.findChild<QAbstractButton*>(QStringLiteral("ImageListUpDn(%1)").arg(index));
    }
    QImage BarPicture() { return bar.grab().toImage(); }
    void Drag(int byPixels, bool release = true) {
        const QPoint grip = Thumb()->rect().center();
        QTest::mousePress(Thumb(), Qt::LeftButton, {}, grip);
        QMouseEvent move(QEvent::MouseMove, QPointF(grip + QPoint(0, byPixels)),
                         Thumb()->mapToGlobal(QPointF(grip + QPoint(0, byPixels))), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Thumb(), &move);
        if (release) {
            QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, grip);
        }
    }
};

TEST_F(PlaylistScrollBarTest, ItsPartsHaveTheirNamesAndPlaces) {
    Fill(100);
    Show();
    ASSERT_NE(Thumb(), nullptr);
    ASSERT_NE(Track(), nullptr);
    ASSERT_NE(Arrow(0), nullptr);
    ASSERT_NE(Arrow(1), nullptr);
    EXPECT_EQ(Arrow(0)->y(), 0);
    EXPECT_EQ(Track()->geometry(), QRect(0, trackTop, PlaylistScrollBar::barWidth, trackEnd - trackTop));
    EXPECT_EQ(Arrow(1)->geometry().bottom(), listHeight - 1);
    EXPECT_EQ(Thumb()->y(), trackTop + 1);
    EXPECT_FALSE(Arrow(0)->accessibleName().isEmpty());
    EXPECT_FALSE(Arrow(1)->accessibleName().isEmpty());
}

TEST_F(PlaylistScrollBarTest, TheThumbFollowsTheList) {
    Fill(107);
    Show();
    list.SetFirstVisible(50);
    EXPECT_NEAR(Thumb()->y(), (trackTop + lowestTop) / 2.0, 0.5);
    list.SetFirstVisible(101);
    EXPECT_EQ(Thumb()->y(), lowestTop);
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_EQ(Thumb()->y(), trackTop + 1);
}

TEST_F(PlaylistScrollBarTest, TheThumbFollowsTheNumberOfRows) {
    Fill(20);
    Show();
    list.SetFirstVisible(14);
    ASSERT_EQ(Thumb()->y(), lowestTop);
    Fill(200);
    EXPECT_LT(Thumb()->y(), lowestTop);
    rows.Clear();
    EXPECT_EQ(Thumb()->y(), trackTop);
}

TEST_F(PlaylistScrollBarTest, AShortListCannotBeScrolled) {
    Fill(7);
    Show();
    EXPECT_EQ(Thumb()->y(), trackTop);
    EXPECT_FALSE(Arrow(0)->isEnabled());
    EXPECT_FALSE(Arrow(1)->isEnabled());
    const QImage dim = BarPicture();
    Drag(30);
    EXPECT_EQ(list.FirstVisible(), 1);
    EXPECT_EQ(Thumb()->y(), trackTop);
    Fill(1);
    EXPECT_TRUE(Arrow(1)->isEnabled());
    EXPECT_NE(BarPicture(), dim);
}

TEST_F(PlaylistScrollBarTest, TheLowerArrowBringsTheRowEightFurtherIntoSight) {
    Fill(100);
    Show();
    QTest::mouseClick(Arrow(1), Qt::LeftButton);
    EXPECT_EQ(list.FirstVisible(), 3);
    list.SetFirstVisible(93);
    QTest::mouseClick(Arrow(1), Qt::LeftButton);
    EXPECT_EQ(list.FirstVisible(), 94);
    QTest::mouseClick(Arrow(1), Qt::LeftButton);
    EXPECT_EQ(list.FirstVisible(), 94);
}

TEST_F(PlaylistScrollBarTest, TheUpperArrowGoesOneRowUp) {
    Fill(100);
    Show();
    list.SetFirstVisible(3);
    QTest::mouseClick(Arrow(0), Qt::LeftButton);
    EXPECT_EQ(list.FirstVisible(), 2);
    QTest::mouseClick(Arrow(0), Qt::LeftButton);
    QTest::mouseClick(Arrow(0), Qt::LeftButton);
    EXPECT_EQ(list.FirstVisible(), 1);
}

TEST_F(PlaylistScrollBarTest, DraggingTheThumbScrollsInProportion) {
    Fill(1007);
    Show();
    Drag((lowestTop - trackTop) / 2);
    EXPECT_NEAR(list.FirstVisible(), 500, 25);
    Drag(500);
    EXPECT_EQ(list.FirstVisible(), 1001);
    EXPECT_EQ(Thumb()->y(), lowestTop);
    Drag(-500);
    EXPECT_EQ(list.FirstVisible(), 1);
}

TEST_F(PlaylistScrollBarTest, AThumbThatIsOnlyPressedStays) {
    Fill(1007);
    Show();
    list.SetFirstVisible(333);
    const int top = Thumb()->y();
    QTest::mousePress(Thumb(), Qt::LeftButton, {}, QPoint(3, 4));
    QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, QPoint(3, 4));
    EXPECT_EQ(Thumb()->y(), top);
    EXPECT_EQ(list.FirstVisible(), 333);
}

TEST_F(PlaylistScrollBarTest, AClickOnTheTrackTakesTheThumbThere) {
    Fill(1007);
    Show();
    const int middle = Track()->height() / 2;
    QTest::mouseClick(Track(), Qt::LeftButton, {}, QPoint(5, middle));
    EXPECT_NEAR(list.FirstVisible(), 500, 20);
    EXPECT_NEAR(Thumb()->geometry().center().y(), trackTop + middle, 2);
    QTest::mouseClick(Track(), Qt::LeftButton, {}, QPoint(5, Track()->height() - 1));
    EXPECT_EQ(list.FirstVisible(), 1001);
    QTest::mouseClick(Track(), Qt::LeftButton, {}, QPoint(5, 0));
    EXPECT_EQ(list.FirstVisible(), 1);
}

TEST_F(PlaylistScrollBarTest, TheOtherButtonsOfTheMouseDoNotScroll) {
    Fill(100);
    Show();
    QTest::mouseClick(Track(), Qt::RightButton, {}, QPoint(5, 60));
    QTest::mouseClick(Track(), Qt::MiddleButton, {}, QPoint(5, 60));
    EXPECT_EQ(list.FirstVisible(), 1);
}

TEST_F(PlaylistScrollBarTest, TheWheelScrolls) {
    Fill(100);
    Show();
    Wheel(&bar, {0, -120});
    EXPECT_EQ(list.FirstVisible(), 4);
    Wheel(Track(), {0, -120});
    EXPECT_EQ(list.FirstVisible(), 7);
    Wheel(Thumb(), {0, 120});
    EXPECT_EQ(list.FirstVisible(), 4);
}

TEST_F(PlaylistScrollBarTest, TheKeysScroll) {
    Fill(100);
    Show();
    bar.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&bar, Qt::Key_Down);
    EXPECT_EQ(list.FirstVisible(), 2);
    QTest::keyClick(&bar, Qt::Key_PageDown);
    EXPECT_EQ(list.FirstVisible(), 9);
    QTest::keyClick(&bar, Qt::Key_End);
    EXPECT_EQ(list.FirstVisible(), 94);
    QTest::keyClick(&bar, Qt::Key_Up);
    EXPECT_EQ(list.FirstVisible(), 93);
    QTest::keyClick(&bar, Qt::Key_Home);
    EXPECT_EQ(list.FirstVisible(), 1);
    EXPECT_TRUE(rows.SelectedCount() == 0);
}

TEST_F(PlaylistScrollBarTest, FocusAndPressAreSeen) {
    Fill(100);
    Show();
    other.setFocus();
    const QImage before = BarPicture();
    bar.setFocus(Qt::TabFocusReason);
    EXPECT_NE(BarPicture(), before);
    other.setFocus();
    EXPECT_EQ(BarPicture(), before);
    QTest::mousePress(Thumb(), Qt::LeftButton, {}, Thumb()->rect().center());
    EXPECT_NE(BarPicture(), before);
    QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, Thumb()->rect().center());
    EXPECT_EQ(BarPicture(), before);
    QTest::mousePress(Arrow(0), Qt::LeftButton);
    EXPECT_NE(BarPicture(), before);
    QTest::mouseRelease(Arrow(0), Qt::LeftButton);
}

TEST_F(PlaylistScrollBarTest, AScreenReaderFindsAScrollBarWithTwoButtons) {
    Fill(100);
    Show();
    list.SetFirstVisible(5);
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->role(), QAccessible::ScrollBar);
    EXPECT_FALSE(found->text(QAccessible::Name).isEmpty());
    ASSERT_NE(found->valueInterface(), nullptr);
    EXPECT_EQ(found->valueInterface()->currentValue().toInt(), 4);
    EXPECT_EQ(found->valueInterface()->maximumValue().toInt(), 93);
    found->valueInterface()->setCurrentValue(10);
    EXPECT_EQ(list.FirstVisible(), 11);
    for (const int index : {0, 1}) {
        QAccessibleInterface* arrow = QAccessible::queryAccessibleInterface(Arrow(index));
        ASSERT_NE(arrow, nullptr);
        EXPECT_EQ(arrow->role(), QAccessible::Button);
        ASSERT_NE(arrow->actionInterface(), nullptr);
        arrow->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    EXPECT_EQ(list.FirstVisible(), 12);
}

} // namespace
} // namespace kestrune
