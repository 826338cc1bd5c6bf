// The panel of the display's colours, border, channels and marks.
#include "display/colour_panel.h"

#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QtTest/QtTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <utility>
#include <vector>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Choice = std::pair<int, qint32>;

class ColourPanelTest : public testing::Test {
protected:
    ColourPanelTest() {
        window.resize(393, 145);
        panel->setGeometry(16, 13, 360, 119);
        QObject::connect(panel, &ColourPanel::PropertyChosen, panel, [this](int number, qint32 value) {
            chosen.emplace_back(number, value);
            values[number] = value;
        });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    template <typename Control>
    Control* Find(const char* name) {
        auto* control = panel->findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QColor Swatch() { return Find<ColourSwatchWidget>("Picture7")->Colour(); }
    void ClickRow(int row) {
        auto* list = Find<QListWidget>("ListView1");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row)).center());
    }
    void ClickOption(const char* name) {
        auto* option = Find<QRadioButton>(name);
        QTest::mouseClick(option, Qt::LeftButton, {}, {8, option->height() / 2});
    }

    std::map<int, qint32> values = {{10, 2},        {11, 2},        {12, 0x141414}, {13, 0x101010},
                                    {14, 0xD7DAF5}, {15, 0x8A909C}, {16, 0x8080FF}, {17, 0xFFB040},
                                    {19, 80},       {20, 2},        {21, 2}};
    std::vector<Choice> chosen;
    QColor answer;
    std::vector<QColor> seeds;
    QWidget window;
    ColourPanel* panel = new ColourPanel([this](int number) { return values[number]; },
                                         [this](const QColor& seed) {
                                             seeds.push_back(seed);
                                             return answer;
                                         },
                                         &window);
};

TEST_F(ColourPanelTest, ShowsWhatTheDisplayHolds) {
    EXPECT_TRUE(Find<QRadioButton>("Option3")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>("Option11")->isChecked());
    EXPECT_EQ(Find<QSpinBox>("UpDown1")->value(), 80);
    EXPECT_EQ(Find<QSpinBox>("UpDown2")->value(), 2);
    EXPECT_EQ(Find<QListWidget>("ListView1")->currentRow(), 0);
    EXPECT_EQ(Swatch(), QColor(0x14, 0x14, 0x14));
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(ColourPanelTest, EachRowShowsItsOwnColour) {
    const std::vector<qint32> expected = {0x141414, 0x101010, 0xD7DAF5, 0x8080FF, 0xFFB040, 0x8A909C};
    ASSERT_EQ(Find<QListWidget>("ListView1")->count(), 6);
    for (int row = 5; row >= 0; --row) {
        ClickRow(row);
        EXPECT_EQ(Swatch().rgb() & 0xFFFFFF, static_cast<QRgb>(expected[static_cast<size_t>(row)])) << row;
    }
    values[12] = 0x123456;
    ClickRow(0);
    EXPECT_EQ(Swatch(), QColor(0x12, 0x34, 0x56)) << "the row was current already";
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(ColourPanelTest, TheChosenColourGoesToTheSwatchAndTheProperty) {
    const std::vector<int> properties = {12, 13, 14, 16, 17, 15};
    answer = QColor(1, 2, 3);
    for (int row = 0; row < 6; ++row) {
        ClickRow(row);
        const QColor before = Swatch();
        QTest::mouseClick(Find<QPushButton>("Command1"), Qt::LeftButton);
        EXPECT_EQ(seeds.back(), before);
        EXPECT_EQ(Swatch(), answer);
        EXPECT_EQ(chosen.back(), Choice(properties[static_cast<size_t>(row)], 0x010203)) << row;
    }
    EXPECT_EQ(chosen.size(), 6U);
}

TEST_F(ColourPanelTest, ACancelledChoiceChangesNothing) {
    answer = QColor();
    QTest::mouseClick(Find<QPushButton>("Command1"), Qt::LeftButton);
    EXPECT_EQ(seeds.size(), 1U);
    EXPECT_THAT(chosen, IsEmpty());
    EXPECT_EQ(Swatch(), QColor(0x14, 0x14, 0x14));
}

TEST_F(ColourPanelTest, NoColourIsChangedWhileAFilePlays) {
    panel->SetChangeColorEnabled(false);
    QTest::mouseClick(Find<QPushButton>("Command1"), Qt::LeftButton);
    auto* list = Find<QListWidget>("ListView1");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_TRUE(seeds.empty());
    ClickRow(4);
    EXPECT_EQ(Swatch(), QColor(0xFF, 0xB0, 0x40)) << "looking is allowed";
    panel->SetChangeColorEnabled(true);
    QTest::mouseClick(Find<QPushButton>("Command1"), Qt::LeftButton);
    EXPECT_EQ(seeds.size(), 1U);
}

TEST_F(ColourPanelTest, BordersAndChannelsAreTold) {
    for (const char* option : {"Option1", "Option2", "Option4", "Option3", "Option10", "Option11"}) {
        ClickOption(option);
    }
    EXPECT_THAT(chosen, ElementsAre(Choice(10, 0), Choice(10, 1), Choice(10, 3), Choice(10, 2), Choice(21, 1),
                                    Choice(21, 2)));
    ClickOption("Option11");
    EXPECT_EQ(chosen.size(), 6U) << "chosen already";
}

TEST_F(ColourPanelTest, OptionsMoveByArrowKeys) {
    auto* lowered = Find<QRadioButton>("Option3");
    lowered->setFocus();
    QTest::keyClick(lowered, Qt::Key_Right);
    EXPECT_TRUE(Find<QRadioButton>("Option4")->isChecked());
    EXPECT_THAT(chosen, ElementsAre(Choice(10, 3)));
}

TEST_F(ColourPanelTest, NumbersAreToldWithinTheirRange) {
    auto* maxLevel = Find<QSpinBox>("UpDown1");
    maxLevel->setFocus();
    QTest::keyClick(maxLevel, Qt::Key_Up);
    EXPECT_THAT(chosen, ElementsAre(Choice(19, 81)));
    maxLevel->setValue(1000);
    EXPECT_EQ(chosen.back(), Choice(19, 100));
    auto* height = Find<QSpinBox>("UpDown2");
    height->setFocus();
    QTest::keyClick(height, Qt::Key_Down);
    EXPECT_EQ(chosen.back(), Choice(20, 1));
    height->setValue(1000);
    EXPECT_EQ(chosen.back(), Choice(20, largestOutLinesHeight));
}

TEST_F(ColourPanelTest, ShowsWhatOthersHaveChangedMeanwhile) {
    panel->hide();
    values[10] = 0;
    values[16] = 0x00FF00;
    values[19] = 55;
    values[21] = 1;
    panel->show();
    EXPECT_TRUE(Find<QRadioButton>("Option1")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>("Option10")->isChecked());
    EXPECT_EQ(Find<QSpinBox>("UpDown1")->value(), 55);
    ClickRow(3);
    EXPECT_EQ(Swatch(), QColor(0, 255, 0));
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(ColourPanelTest, NothingIsCutOffOrLiesOverAnother) {
    QList<QWidget*> parts;
    for (QWidget* part : panel->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        EXPECT_TRUE(panel->rect().contains(part->geometry())) << part->objectName().toStdString();
        for (const QWidget* other : parts) {
            EXPECT_FALSE(part->geometry().intersects(other->geometry()))
                << part->objectName().toStdString() << ' ' << other->objectName().toStdString();
        }
        parts.append(part);
    }
    EXPECT_EQ(parts.size(), 15);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(11);
    window.setFont(font);
    for (const QWidget* option : panel->findChildren<QRadioButton*>()) {
        EXPECT_LE(option->sizeHint().width(), option->width()) << option->objectName().toStdString();
    }
    for (const QWidget* label : panel->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
        EXPECT_LE(label->sizeHint().width(), label->width())
            << static_cast<const QLabel*>(label)->text().toStdString();
    }
    auto* list = Find<QListWidget>("ListView1");
    const QRect last = list->visualItemRect(list->item(5));
    EXPECT_TRUE(list->viewport()->rect().contains(last));
    EXPECT_LE(list->sizeHintForColumn(0), list->viewport()->width());
    EXPECT_LE(Find<QPushButton>("Command1")->fontMetrics().horizontalAdvance(QStringLiteral("Change Color")) +
                  12,
              Find<QPushButton>("Command1")->width());
}

TEST_F(ColourPanelTest, EveryControlHasANameAndTakesTheFocusByTab) {
    panel->setFocus();
    QStringList visited;
    for (int step = 0; step < 6; ++step) {
        QWidget* focused = QApplication::focusWidget();
        ASSERT_NE(focused, nullptr);
        EXPECT_FALSE(focused->accessibleName().isEmpty() && focused->property("text").toString().isEmpty())
            << focused->objectName().toStdString();
        visited.append(focused->objectName());
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    EXPECT_EQ(visited.join(u' ').toStdString(), "ListView1 Command1 Option3 Option11 UpDown1 UpDown2");
}

} // namespace
} // namespace kestrune
