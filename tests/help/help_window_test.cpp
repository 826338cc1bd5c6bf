// The help window over the pages that come with the program.
#include "help/help_window.h"

#include "help/help_page_view.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QScrollBar>
#include <QSplitter>
#include <QTabBar>
#include <QTextBlock>
#include <QTextFrame>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

class HelpWindowTest : public testing::Test {
protected:
    void Open(const QString& topic = helpStartPage) {
        window.ShowTopic(topic);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    template <typename Control>
    Control* Find(const char* name) {
        auto* control = window.findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    HelpPageView* Page() { return Find<HelpPageView>("HelpPage"); }
    std::string Shown() { return Page()->CurrentTarget().toStdString(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = window.focusWidget();
        QTest::keyClick(focus != nullptr ? focus : &window, key, modifiers);
    }
    void Type(const QString& text) { QTest::keyClicks(window.focusWidget(), text); }

    QStringList PlacesOfDocument() {
        QStringList places;
        const QTextDocument* document = Page()->document();
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                places.append(part.fragment().charFormat().anchorNames());
            }
        }
        return places;
    }

    HelpWindow window;
};

TEST_F(HelpWindowTest, ShowsATopicWithoutBlockingOtherWindows) {
    Open(QStringLiteral("volume.htm"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isModal());
    EXPECT_EQ(Shown(), "volume.htm");
    EXPECT_TRUE(Page()->toPlainText().startsWith(QLatin1String("Volume\n")));
    EXPECT_EQ(window.size(), QSize(720, 520));
}

TEST_F(HelpWindowTest, AnUnknownTopicShowsTheStartPage) {
    Open(QStringLiteral("no-such-page.htm"));
    EXPECT_EQ(Shown(), "overview.htm");
}

TEST_F(HelpWindowTest, ASecondTopicReplacesTheFirstInTheSameWindow) {
    Open(QStringLiteral("volume.htm"));
    Open(QStringLiteral("modes.htm"));
    EXPECT_EQ(Shown(), "modes.htm");
    EXPECT_EQ(Find<QTreeWidget>("HelpContents")->currentItem()->text(0), QStringLiteral("Play modes"));
}

TEST_F(HelpWindowTest, EachPlaceOfEachPageIsOneInTheShownDocument) {
    Open();
    for (const HelpPage& page : window.Book().Pages()) {
        Page()->ShowTarget(page.name);
        const QStringList places = PlacesOfDocument();
        for (const QString& anchor : page.anchors) {
            EXPECT_TRUE(places.contains(anchor)) << page.name.toStdString() << "#" << anchor.toStdString();
        }
    }
}

TEST_F(HelpWindowTest, APlaceIsScrolledTo) {
    Open(QStringLiteral("keyboard.htm"));
    EXPECT_EQ(Page()->verticalScrollBar()->value(), 0);
    Open(QStringLiteral("keyboard.htm#help"));
    EXPECT_GT(Page()->verticalScrollBar()->value(), 200);
    Open(QStringLiteral("formats.htm"));
    EXPECT_EQ(Page()->verticalScrollBar()->value(), 0);
}

TEST_F(HelpWindowTest, NothingOutsideTheBookIsFollowed) {
    Open(QStringLiteral("modes.htm"));
    for (const char* address : {"https://example.org/", "http://example.org/volume.htm",
                                "file:///etc/hostname", "mailto:a@example.org", "//example.org/volume.htm",
                                "/etc/hostname", "../volume.htm", "nowhere.htm"}) {
        Page()->setSource(QUrl(QString::fromLatin1(address)));
        EXPECT_EQ(Shown(), "modes.htm") << address;
    }
}

TEST_F(HelpWindowTest, ALinkIsFollowedFromTheKeyboard) {
    Open();
    Page()->setFocus();
    Press(Qt::Key_Tab);
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "whatit.htm");
}

TEST_F(HelpWindowTest, GoesBackForwardAndHome) {
    Open(QStringLiteral("volume.htm"));
    EXPECT_FALSE(Find<QToolButton>("HelpBack")->isEnabled());
    Open(QStringLiteral("modes.htm"));
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "volume.htm");
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "modes.htm");
    EXPECT_FALSE(Find<QToolButton>("HelpForward")->isEnabled());
    Press(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(Shown(), "overview.htm");
    QTest::mouseClick(Find<QToolButton>("HelpBack"), Qt::LeftButton);
    EXPECT_EQ(Shown(), "modes.htm");
}

TEST_F(HelpWindowTest, TheContentsFollowTheArrowKeys) {
    Open(QStringLiteral("whatit.htm"));
    Press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(window.focusWidget(), Find<QTreeWidget>("HelpContents"));
    Press(Qt::Key_Down);
    EXPECT_EQ(Shown(), "firststeps.htm");
}

TEST_F(HelpWindowTest, TheIndexFindsWhileOneTypes) {
    Open();
    Press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(Find<QTabWidget>("HelpSides")->currentIndex(), 1);
    Type(QStringLiteral("seek"));
    auto* list = Find<QListWidget>("HelpIndex");
    ASSERT_NE(list->currentItem(), nullptr);
    EXPECT_EQ(list->currentItem()->text(), QStringLiteral("seeking"));
    for (int i = 0; i < list->count(); ++i) {
        EXPECT_EQ(list->item(i)->isHidden(), !list->item(i)->text().contains(QLatin1String("seek")));
    }
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "position.htm#seek");
}

TEST_F(HelpWindowTest, TheIndexShowsWordsThatBeginWithTheTextAndGoesToTheFirstEntryThatDoes) {
    Open();
    Press(Qt::Key_2, Qt::ControlModifier);
    Type(QStringLiteral("PLAY"));
    auto* list = Find<QListWidget>("HelpIndex");
    EXPECT_EQ(list->currentItem()->text(), QStringLiteral("play modes"));
    const auto isShown = [list](const char* entry) {
        const auto found = list->findItems(QString::fromLatin1(entry), Qt::MatchExactly);
        return found.size() == 1 && !found.first()->isHidden();
    };
    EXPECT_TRUE(isShown("opening a playlist"));
    EXPECT_FALSE(isShown("display"));
    EXPECT_FALSE(isShown("volume"));
}

TEST_F(HelpWindowTest, SignsInTheIndexFieldStandForThemselves) {
    Open();
    Press(Qt::Key_2, Qt::ControlModifier);
    Type(QStringLiteral("file!"));
    EXPECT_EQ(Find<QListWidget>("HelpIndex")->currentItem()->text(), QStringLiteral("Invalid audio file!"));
    Find<QLineEdit>("HelpIndexText")->setText(QStringLiteral("(["));
    EXPECT_EQ(Find<QListWidget>("HelpIndex")->currentItem(), nullptr);
}

TEST_F(HelpWindowTest, ASearchShowsItsFirstPageAndMarksTheWords) {
    Open();
    Press(Qt::Key_3, Qt::ControlModifier);
    Type(QStringLiteral("dead zone"));
    auto* hits = Find<QListWidget>("HelpHits");
    ASSERT_EQ(hits->count(), 1);
    EXPECT_EQ(Find<QLabel>("HelpSearchNote")->text(), QStringLiteral("1 page"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "volume.htm");
    EXPECT_EQ(Page()->extraSelections().size(), 2);
    Open(QStringLiteral("volume.htm"));
    EXPECT_TRUE(Page()->extraSelections().isEmpty());
}

TEST_F(HelpWindowTest, ASearchInVainSaysSo) {
    Open();
    Press(Qt::Key_3, Qt::ControlModifier);
    Type(QStringLiteral("xylophone"));
    EXPECT_EQ(Find<QListWidget>("HelpHits")->count(), 0);
    EXPECT_EQ(Find<QLabel>("HelpSearchNote")->text(), QStringLiteral("No page holds all of these words."));
}

TEST_F(HelpWindowTest, DownLeadsFromTheFieldIntoItsList) {
    Open();
    Press(Qt::Key_3, Qt::ControlModifier);
    Type(QStringLiteral("list"));
    Press(Qt::Key_Down);
    EXPECT_EQ(window.focusWidget(), Find<QListWidget>("HelpHits"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), window.Book().Search(QStringLiteral("list"))[1].page.toStdString());
}

TEST_F(HelpWindowTest, F6GoesBetweenTheSideAndThePage) {
    Open();
    Press(Qt::Key_3, Qt::ControlModifier);
    Press(Qt::Key_F6);
    EXPECT_EQ(window.focusWidget(), Page());
    Press(Qt::Key_F6);
    EXPECT_EQ(window.focusWidget(), Find<QLineEdit>("HelpSearchText"));
}

TEST_F(HelpWindowTest, FindInPageGoesFromPlaceToPlaceAndRound) {
    Open(QStringLiteral("modes.htm"));
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Find<QWidget>("HelpFindBar")->isVisible());
    Type(QStringLiteral("shuffle"));
    const int first = Page()->textCursor().selectionStart();
    EXPECT_EQ(Page()->textCursor().selectedText().toLower(), QStringLiteral("shuffle"));
    Press(Qt::Key_F3);
    const int second = Page()->textCursor().selectionStart();
    EXPECT_GT(second, first);
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Page()->textCursor().selectionStart(), first);
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_GE(Page()->textCursor().selectionStart(), second);
    Press(Qt::Key_Return);
    EXPECT_EQ(Page()->textCursor().selectionStart(), first);
}

TEST_F(HelpWindowTest, FindInPageSaysWhenThereIsNothing) {
    Open(QStringLiteral("modes.htm"));
    Press(Qt::Key_F, Qt::ControlModifier);
    Type(QStringLiteral("shufflex"));
    EXPECT_EQ(Find<QLabel>("HelpFindNote")->text(), QStringLiteral("Not in this page"));
    Press(Qt::Key_Backspace);
    EXPECT_TRUE(Find<QLabel>("HelpFindNote")->text().isEmpty());
}

TEST_F(HelpWindowTest, EscapeClosesTheFindBarFirstAndThenTheWindow) {
    Open();
    Press(Qt::Key_F, Qt::ControlModifier);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Find<QWidget>("HelpFindBar")->isVisible());
    EXPECT_TRUE(window.isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    Open(QStringLiteral("volume.htm"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(HelpWindowTest, LettersGrowAndShrinkAndKeepWithinBounds) {
    Open(QStringLiteral("volume.htm"));
    const double usual = Page()->document()->size().height();
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Page()->LetterSize(), 110);
    EXPECT_GT(Page()->document()->size().height(), usual);
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Page()->LetterSize(), 100);
    EXPECT_EQ(Page()->document()->size().height(), usual);
    for (int i = 0; i < 30; ++i) {
        Press(Qt::Key_Minus, Qt::ControlModifier);
    }
    EXPECT_EQ(Page()->LetterSize(), 70);
    Page()->SetLetterSize(10000);
    EXPECT_EQ(Page()->LetterSize(), 250);
}

TEST_F(HelpWindowTest, LinesStayReadableInAWideWindow) {
    Open(QStringLiteral("volume.htm"));
    window.resize(1600, 700);
    const QTextFrameFormat frame = Page()->document()->rootFrame()->frameFormat();
    EXPECT_EQ(Page()->viewport()->width() - frame.leftMargin() - frame.rightMargin(), 620);
    window.resize(500, 400);
    EXPECT_LE(Page()->document()->rootFrame()->frameFormat().rightMargin(), 30);
    EXPECT_FALSE(Page()->horizontalScrollBar()->isVisible());
}

TEST_F(HelpWindowTest, ThePictureOfTheMainWindowIsDrawn) {
    Open(QStringLiteral("window.htm"));
    const auto picture =
        Page()->loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("window.svg")));
    const auto image = picture.value<QImage>();
    ASSERT_EQ(image.size(), QSize(393, 385) * Page()->devicePixelRatioF());
    EXPECT_EQ(qAlpha(image.pixel(image.width() / 2, image.height() / 2)), 255);
}

TEST_F(HelpWindowTest, EachControlThatTakesTheFocusHasAName) {
    Open();
    int controls = 0;
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        const bool own = !control->objectName().startsWith(QLatin1String("qt_"));
        if (own && control->focusPolicy() != Qt::NoFocus && control->focusProxy() == nullptr) {
            const QAccessibleInterface* face =
                QAccessible::queryAccessibleInterface(const_cast<QWidget*>(control));
            ASSERT_NE(face, nullptr);
            const bool bar = qobject_cast<const QTabBar*>(control) != nullptr ||
                             qobject_cast<const QScrollBar*>(control) != nullptr ||
                             qobject_cast<const QSplitter*>(control) != nullptr;
            EXPECT_TRUE(bar || !face->text(QAccessible::Name).isEmpty())
                << control->metaObject()->className() << " " << control->objectName().toStdString();
            ++controls;
        }
    }
    EXPECT_GT(controls, 10);
}

} // namespace
} // namespace kestrune
