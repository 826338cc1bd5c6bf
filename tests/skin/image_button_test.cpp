#include "skin/hover_keeper.h"
#include "skin/image_button.h"
#include "skin/made_strip.h"

#include <QAccessible>
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

using namespace kestrune;

namespace {

constexpr QColor red(255, 0, 0);
constexpr QColor green(0, 255, 0);
constexpr QColor blue(0, 0, 255);
constexpr QColor magenta(255, 0, 255);
constexpr QColor yellow(255, 255, 0);
constexpr QColor black(0, 0, 0);

// A window of 100 x 60 with two buttons of one group, side by side, and one of another group below.
class ImageButtonTest : public testing::Test {
protected:
    ImageButtonTest() {
        window.resize(100, 60);
        for (ImageButton* button : {&first, &second, &other}) {
            button->SetHoverFades(false);
        }
        first.setGeometry(10, 10, 20, 20);
        second.setGeometry(30, 10, 20, 20);
        other.setGeometry(10, 30, 20, 20);
        const int group = keeper.AddGroup();
        keeper.Add(group, 0, &first);
        keeper.Add(group, 1, &second);
        keeper.Add(keeper.AddGroup(), 0, &other);
        keeper.Watch(&window);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        // The place of the mouse outlives a test, and a move to the same place is none.
        MoveTo({99, 59});
    }

    void MoveTo(const QPoint& place) { QTest::mouseMove(window.windowHandle(), place); }
    QColor At(const QPoint& place) { return ColourAt(window, place); }
    QColor OfFirst() { return At({20, 20}); }

    MadeStrip made;
    SkinPicture strip{made.StripFile()};
    SkinPicture off{made.OffFile()};
    QWidget window;
    HoverKeeper keeper;
    ButtonLooks looks{{0, 0}, QPoint(20, 0)};
    ImageButton first{strip, looks, &window};
    ImageButton second{strip, looks, &window};
    ImageButton other{strip, looks, &window};
};

} // namespace

TEST_F(ImageButtonTest, TransparentInItsNormalState) {
    EXPECT_EQ(OfFirst(), black);
    EXPECT_EQ(first.ShownPiece(), std::nullopt);
}

TEST_F(ImageButtonTest, TheMouseLightsItAndTheWindowTakesTheLookOff) {
    MoveTo({20, 20});
    EXPECT_EQ(OfFirst(), red);
    EXPECT_EQ(keeper.HoverIndex(0), 1);
    MoveTo({80, 50});
    EXPECT_EQ(OfFirst(), black);
    EXPECT_EQ(keeper.HoverIndex(0), 0);
}

TEST_F(ImageButtonTest, StraightToTheNeighbourClearsTheFirstAtOnce) {
    MoveTo({20, 20});
    MoveTo({40, 20});
    EXPECT_EQ(OfFirst(), black);
    EXPECT_EQ(At({40, 20}), red);
    EXPECT_EQ(keeper.HoverIndex(0), 2);
}

TEST_F(ImageButtonTest, AButtonOfAnotherGroupLeavesTheFirstLitUntilTheWindowIsTouched) {
    MoveTo({20, 20});
    MoveTo({20, 40});
    EXPECT_EQ(OfFirst(), red);
    EXPECT_EQ(At({20, 40}), red);
    MoveTo({80, 50});
    EXPECT_EQ(OfFirst(), black);
    EXPECT_EQ(At({20, 40}), black);
}

TEST_F(ImageButtonTest, LeavingTheWindowKeepsTheLookUntilTheNextMove) {
    MoveTo({20, 20});
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&first, &leave);
    QCoreApplication::sendEvent(&window, &leave);
    EXPECT_EQ(OfFirst(), red);
    MoveTo({80, 50});
    EXPECT_EQ(OfFirst(), black);
}

TEST_F(ImageButtonTest, LetGoOverTheWindowItGoesOut) {
    MoveTo({20, 20});
    QTest::mousePress(&first, Qt::LeftButton);
    QTest::mouseRelease(&first, Qt::LeftButton, {}, QPoint(70, 40));
    EXPECT_EQ(OfFirst(), black);
    EXPECT_EQ(keeper.HoverIndex(0), 0);
}

TEST_F(ImageButtonTest, LetGoBesideTheWindowItStaysLit) {
    MoveTo({20, 20});
    QTest::mousePress(&first, Qt::LeftButton);
    QTest::mouseRelease(&first, Qt::LeftButton, {}, QPoint(300, 40));
    EXPECT_EQ(OfFirst(), red);
}

TEST_F(ImageButtonTest, ALargeControlInTheWindowTakesTheLookOff) {
    auto* list = new QListWidget(&window);
    list->setGeometry(50, 30, 50, 30);
    list->show();
    QCoreApplication::processEvents();
    MoveTo({20, 20});
    ASSERT_EQ(OfFirst(), red);
    MoveTo({75, 45});
    EXPECT_EQ(OfFirst(), black);
}

TEST_F(ImageButtonTest, ADisabledButtonShowsNoHoverAndLetsTheMouseThrough) {
    second.setEnabled(false);
    MoveTo({20, 20});
    MoveTo({40, 20});
    EXPECT_EQ(At({40, 20}), black);
    EXPECT_EQ(keeper.HoverIndex(0), 0);
    EXPECT_EQ(OfFirst(), black);
}

TEST_F(ImageButtonTest, DisablingTakesTheHoverLookOff) {
    MoveTo({20, 20});
    first.setEnabled(false);
    EXPECT_EQ(OfFirst(), black);
    first.setEnabled(true);
    EXPECT_EQ(OfFirst(), black);
}

TEST_F(ImageButtonTest, ADisabledButtonShowsItsOwnPlaceOfTheOffPicture) {
    first.SetOffPicture(&off);
    first.setEnabled(false);
    EXPECT_EQ(OfFirst(), yellow);
    other.SetOffPicture(&off);
    other.setEnabled(false);
    EXPECT_EQ(At({20, 40}), QColor(0x80, 0x80, 0x80));
}

TEST_F(ImageButtonTest, PressedWhileHeldThenHoverAgain) {
    QSignalSpy clicks(&first, &QAbstractButton::clicked);
    MoveTo({20, 20});
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(OfFirst(), green);
    EXPECT_EQ(clicks.count(), 0);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(OfFirst(), red);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(ImageButtonTest, WithoutAPressedLookTheHoverLookStandsIn) {
    first.SetLooks({{0, 0}});
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(OfFirst(), red);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
}

TEST_F(ImageButtonTest, ReleasedElsewhereIsNoClick) {
    QSignalSpy clicks(&first, &QAbstractButton::clicked);
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
    QTest::mouseMove(window.windowHandle(), {80, 50});
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {80, 50});
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_NE(OfFirst(), green);
}

TEST_F(ImageButtonTest, TheRightButtonDoesNothing) {
    QSignalSpy clicks(&first, &QAbstractButton::clicked);
    QTest::mouseClick(window.windowHandle(), Qt::RightButton, {}, {20, 20});
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(ImageButtonTest, ThePressedLookHeldByProgram) {
    first.SetPressedLook(true);
    EXPECT_EQ(OfFirst(), green);
    MoveTo({20, 20});
    EXPECT_EQ(OfFirst(), green);
    first.SetPressedLook(false);
    EXPECT_EQ(OfFirst(), red);
}

TEST_F(ImageButtonTest, ACheckedButtonIsLit) {
    first.setCheckable(true);
    first.SetLooks({{0, 0}, QPoint(20, 0), QPoint(40, 0), QPoint(60, 0)});
    first.setChecked(true);
    EXPECT_EQ(OfFirst(), blue);
    MoveTo({20, 20});
    EXPECT_EQ(OfFirst(), magenta);
    MoveTo({80, 50});
    EXPECT_EQ(OfFirst(), blue);
    first.setChecked(false);
    EXPECT_EQ(OfFirst(), black);
}

TEST_F(ImageButtonTest, SpaceAndEnterPressAndClickOnce) {
    QSignalSpy clicks(&first, &QAbstractButton::clicked);
    first.setFocus(Qt::TabFocusReason);
    int expected = 0;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyPress(&first, key);
        EXPECT_EQ(OfFirst(), green) << key;
        EXPECT_EQ(clicks.count(), expected) << key;
        QTest::keyRelease(&first, key);
        EXPECT_EQ(OfFirst(), black) << key;
        EXPECT_EQ(clicks.count(), ++expected) << key;
    }
}

TEST_F(ImageButtonTest, AnEnterThatWasPressedElsewhereDoesNotClick) {
    QSignalSpy clicks(&first, &QAbstractButton::clicked);
    first.setFocus(Qt::TabFocusReason);
    QTest::keyRelease(&first, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(ImageButtonTest, TheFocusRingComesWithTheKeyboardOnly) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    other.setFocus(Qt::TabFocusReason);
    first.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(At({20, 10}), QColor(128, 128, 255));
    second.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(At({20, 10}), black);
    EXPECT_EQ(At({40, 10}), black);
}

TEST_F(ImageButtonTest, AFadeEndsAtTheFullLook) {
    first.SetHoverFades(true);
    MoveTo({20, 20});
    EXPECT_TRUE(QTest::qWaitFor([this] { return OfFirst() == red; }, 2000));
    MoveTo({80, 50});
    EXPECT_FALSE(first.IsLit());
    EXPECT_TRUE(QTest::qWaitFor([this] { return OfFirst() == black; }, 2000));
}

TEST_F(ImageButtonTest, AButtonThatIsGoneIsPassedOver) {
    auto* brief = new ImageButton(strip, looks, &window);
    brief->setGeometry(50, 10, 20, 20);
    brief->show();
    keeper.Add(0, 2, brief);
    MoveTo({60, 20});
    ASSERT_EQ(keeper.HoverIndex(0), 3);
    delete brief;
    MoveTo({20, 20});
    EXPECT_EQ(OfFirst(), red);
}

TEST_F(ImageButtonTest, AScreenReaderSeesAButton) {
    first.setAccessibleName(QStringLiteral("Play"));
    QSignalSpy clicks(&first, &QAbstractButton::clicked);
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&first);
    ASSERT_NE(access, nullptr);
    EXPECT_EQ(access->role(), QAccessible::Button);
    EXPECT_EQ(access->text(QAccessible::Name), QStringLiteral("Play"));
    ASSERT_NE(access->actionInterface(), nullptr);
    access->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    // Later, since a dialog that it opens must not hold up the screen reader.
    EXPECT_TRUE(QTest::qWaitFor([&clicks] { return clicks.count() == 1; }));
    first.setCheckable(true);
    first.setChecked(true);
    EXPECT_TRUE(access->state().checked);
}
