// The keys that the main window sees before its controls do: Alt with a letter, and Delete.
#include "main_window_fixture.h"

#include <QLineEdit>
#include <QSpinBox>

namespace kestrune {
namespace {

// Where the letters stand on a keyboard, as X11 and Wayland count its keys.
constexpr quint32 placeOfB = 56;
constexpr quint32 placeOfC = 54;
constexpr quint32 placeOfF = 41;
constexpr quint32 placeOfH = 43;
constexpr quint32 placeOfO = 32;
constexpr quint32 placeOfP = 33;
constexpr quint32 placeOfR = 27;
constexpr quint32 placeOfS = 39;
constexpr quint32 placeOfD = 40;
constexpr quint32 placeOfAlt = 64;

class KeyWindowTest : public MainWindowTest {
protected:
    QMenu* Menu(const char* name) { return Find<QMenu>(QLatin1String(name)); }
    bool AnyMenu() {
        for (const QMenu* menu : window.findChildren<QMenu*>()) {
            if (menu->isVisible()) {
                return true;
            }
        }
        return false;
    }
    // A key as a keyboard sends it: what the layout makes of it, and its place.
    void PressKey(int key, quint32 place, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, place, 0, 0);
        QCoreApplication::sendEvent(List(), &event);
    }
    void ReleaseKey(int key, quint32 place) {
        QKeyEvent event(QEvent::KeyRelease, key, Qt::NoModifier, place, 0, 0);
        QCoreApplication::sendEvent(List(), &event);
    }
    void AltWith(int key, quint32 place) {
        PressKey(Qt::Key_Alt, placeOfAlt);
        PressKey(key, place, Qt::AltModifier);
    }
    void ClosePopup() {
        QWidget* popup = QApplication::activePopupWidget();
        ASSERT_NE(popup, nullptr);
        QTest::keyClick(popup, Qt::Key_Escape);
    }
};

TEST_F(KeyWindowTest, AltIsUpWhenItsMenuWasClosedByTheMouse) {
    Start();
    QTest::keyPress(List(), Qt::Key_Alt);
    QTest::keyPress(List(), Qt::Key_F);
    QMenu* file = Menu("mnuFile");
    ASSERT_TRUE(file->isVisible());
    // The menu has the keyboard: the keys are let go there.
    QTest::keyRelease(file, Qt::Key_F);
    QTest::keyRelease(file, Qt::Key_Alt);
    QTest::mousePress(file, Qt::LeftButton, {}, {file->width() + 40, file->height() + 40});
    ASSERT_FALSE(file->isVisible());
    QTest::keyClick(List(), Qt::Key_P);
    EXPECT_FALSE(Menu("mnuPlay")->isVisible());
    QTest::keyPress(List(), Qt::Key_S);
    EXPECT_THAT(tools.shown, testing::IsEmpty());
}

struct LetterKey {
    int key;
    quint32 place;
    const char* menu;
};

class OtherLettersTest : public KeyWindowTest, public testing::WithParamInterface<LetterKey> {};

TEST_P(OtherLettersTest, TheKeyIsTakenByItsPlace) {
    Start();
    AltWith(GetParam().key, GetParam().place);
    EXPECT_TRUE(Menu(GetParam().menu)->isVisible());
}

// The Russian and the Greek layout.
INSTANTIATE_TEST_SUITE_P(
    Menus, OtherLettersTest,
    testing::Values(LetterKey{0x0418, placeOfB, "mnuBurn"}, LetterKey{0x0421, placeOfC, "mnuConvert"},
                    LetterKey{0x0410, placeOfF, "mnuFile"}, LetterKey{0x0420, placeOfH, "mnuHelp"},
                    LetterKey{0x0429, placeOfO, "mnuOptions"}, LetterKey{0x0417, placeOfP, "mnuPlay"},
                    LetterKey{0x03A6, placeOfF, "mnuFile"}, LetterKey{0x03A0, placeOfP, "mnuPlay"}));

TEST_F(KeyWindowTest, TheToolsWithoutAMenuHaveTheirPlacesToo) {
    Start();
    AltWith(0x041A, placeOfR);
    EXPECT_EQ(tools.shown.value(0), ToolWindow::RipfrmMain);
    AltWith(0x042B, placeOfS);
    EXPECT_EQ(tools.shown.value(1), ToolWindow::frmMp3site);
}

TEST_F(KeyWindowTest, OtherPlacesAndOtherKeysDoNothing) {
    Start();
    AltWith(0x0412, placeOfD);
    EXPECT_FALSE(AnyMenu());
    AltWith(Qt::Key_F5, placeOfF);
    EXPECT_FALSE(AnyMenu());
    ReleaseKey(Qt::Key_Alt, placeOfAlt);
    PressKey(0x0410, placeOfF);
    EXPECT_FALSE(AnyMenu()) << "without Alt";
}

// A layout with Latin letters in other places says itself which letter it is.
TEST_F(KeyWindowTest, ALatinLetterCountsWhereverItStands) {
    Start();
    AltWith(Qt::Key_P, placeOfR);
    EXPECT_TRUE(Menu("mnuPlay")->isVisible());
    ClosePopup();
    AltWith(0x00D6, placeOfF);
    EXPECT_FALSE(AnyMenu()) << "a Latin letter of its own";
}

// --- Delete ---

TEST_F(KeyWindowTest, DeleteInTheListAsks) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(2));
    ClickRow(1);
    QTest::keyClick(List(), Qt::Key_Delete);
    EXPECT_EQ(prompts.questions.size(), 1);
    EXPECT_EQ(rows.Count(), 1);
    EXPECT_TRUE(QFile::exists(DefaultList()));
}

TEST_F(KeyWindowTest, DeleteInAnyOtherControlIsThatControlsOwn) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(2));
    ClickRow(1);
    QStringList pressed;
    for (const char* key : {"", "ImageChgLstBnd", "ImageColour"}) {
        if (*key != '\0') {
            QTest::mouseClick(Find(QLatin1String(key)), Qt::LeftButton);
        }
        for (QWidget* control : window.findChildren<QWidget*>()) {
            if (control == List() || control->focusPolicy() == Qt::NoFocus || !control->isVisible() ||
                !control->isEnabled() || control->window() != &window) {
                continue;
            }
            control->setFocus(Qt::TabFocusReason);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
            pressed << control->objectName();
            EXPECT_EQ(prompts.questions.size(), 0) << control->objectName().toStdString();
            prompts.questions.clear();
        }
    }
    EXPECT_EQ(rows.Count(), 2);
    for (const char* name : {"Band(0)", "UpDown1", "ImageListCmd(1)", "PlaylistScrollBar", "PositionBar"}) {
        EXPECT_TRUE(pressed.contains(QLatin1String(name))) << name;
    }
}

} // namespace
} // namespace kestrune
