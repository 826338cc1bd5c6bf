#include "skin/skin_icons.h"
#include "skin/skin_style.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyleOption>
#include <QTest>
#include <cmath>
#include <gmock/gmock.h>

using namespace kestrune;

namespace {

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

class SkinStyleTest : public testing::Test {
protected:
    template <class Option>
    QImage Draw(QStyle::PrimitiveElement element, Option option) {
        QImage image(40, 24, QImage::Format_RGB32);
        image.fill(QColor(0x2A, 0x2E, 0x35));
        QPainter painter(&image);
        option.rect = QRect(4, 4, 32, 16);
        if (element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorRadioButton) {
            option.rect = QRect(4, 4, 14, 14);
        }
        option.palette = SkinPalette();
        style.drawPrimitive(element, &option, &painter, nullptr);
        return image;
    }

    SkinStyle style;
};

// States that a person tells apart at a glance: few equal pixels are not enough, none may be equal as
// pictures.
void ExpectAllDiffer(const std::vector<QImage>& pictures) {
    for (size_t i = 0; i < pictures.size(); ++i) {
        for (size_t j = i + 1; j < pictures.size(); ++j) {
            EXPECT_NE(pictures[i], pictures[j]) << i << " and " << j;
        }
    }
}

} // namespace

TEST_F(SkinStyleTest, TextsCanBeReadOnTheirGrounds) {
    const QPalette palette = SkinPalette();
    const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
        {QPalette::WindowText, QPalette::Window},         {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},        {QPalette::ButtonText, QPalette::Button},
        {QPalette::HighlightedText, QPalette::Highlight}, {QPalette::Text, QPalette::Highlight},
        {QPalette::PlaceholderText, QPalette::Base},      {QPalette::Link, QPalette::Base},
        {QPalette::LinkVisited, QPalette::Base},          {QPalette::Link, QPalette::Window},
        {QPalette::ToolTipText, QPalette::ToolTipBase}};
    for (const auto& [text, ground] : pairs) {
        EXPECT_GE(Contrast(palette.color(text), palette.color(ground)), 4.5) << text << " on " << ground;
    }
}

TEST_F(SkinStyleTest, AButtonLooksDifferentInEveryState) {
    std::vector<QImage> pictures;
    const QStyle::State usable = QStyle::State_Enabled | QStyle::State_Raised;
    for (const QStyle::State state :
         {usable, usable | QStyle::State_MouseOver, QStyle::State_Enabled | QStyle::State_Sunken,
          QStyle::State(QStyle::State_None),
          usable | QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange}) {
        QStyleOptionButton option;
        option.state = state;
        pictures.push_back(Draw(QStyle::PE_PanelButtonCommand, option));
    }
    QStyleOptionButton standard;
    standard.state = usable;
    standard.features = QStyleOptionButton::DefaultButton;
    pictures.push_back(Draw(QStyle::PE_PanelButtonCommand, standard));
    ExpectAllDiffer(pictures);
}

TEST_F(SkinStyleTest, SwitchesLookDifferentInEveryState) {
    for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
        std::vector<QImage> pictures;
        for (const QStyle::State on : {QStyle::State_Off, QStyle::State_On}) {
            for (const QStyle::State state :
                 {QStyle::State(QStyle::State_Enabled), QStyle::State_Enabled | QStyle::State_MouseOver,
                  QStyle::State_Enabled | QStyle::State_Sunken, QStyle::State(QStyle::State_None)}) {
                QStyleOptionButton option;
                option.state = state | on;
                pictures.push_back(Draw(element, option));
            }
        }
        ExpectAllDiffer(pictures);
    }
}

TEST_F(SkinStyleTest, ARealButtonShowsTheMouse) {
    QWidget window;
    window.resize(200, 60);
    QPushButton button(QStringLiteral("Play"), &window);
    button.setStyle(&style);
    button.setGeometry(10, 10, 90, 30);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseMove(window.windowHandle(), {180, 50});
    ASSERT_FALSE(button.underMouse());
    const QImage normal = button.grab().toImage();
    QTest::mouseMove(window.windowHandle(), {40, 20});
    QTest::mouseMove(window.windowHandle(), {45, 22});
    ASSERT_TRUE(button.underMouse());
    EXPECT_NE(button.grab().toImage(), normal);
}

TEST_F(SkinStyleTest, FieldsAndBarsAreDrawnByTheSkin) {
    QLineEdit line;
    QComboBox combo;
    QSpinBox spin;
    QSlider slider(Qt::Horizontal);
    QProgressBar progress;
    slider.setValue(50);
    progress.setValue(50);
    for (QWidget* widget : std::initializer_list<QWidget*>{&line, &combo, &spin, &slider, &progress}) {
        widget->setStyle(&style);
        widget->setPalette(SkinPalette());
        widget->resize(120, 26);
        const QImage usable = widget->grab().toImage();
        widget->setEnabled(false);
        EXPECT_NE(widget->grab().toImage(), usable) << widget->metaObject()->className();
    }
}

TEST_F(SkinStyleTest, AScrollBarIsSlimAndAllTrack) {
    QScrollBar bar(Qt::Vertical);
    bar.setStyle(&style);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.resize(bar.sizeHint().width(), 200);
    EXPECT_EQ(bar.width(), 11);
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = Qt::Vertical;
    option.maximum = 100;
    option.pageStep = 10;
    option.sliderPosition = 100;
    const QRect thumb = style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar);
    EXPECT_EQ(thumb.bottom(), 199);
    EXPECT_EQ(thumb.height(), 24);
    EXPECT_TRUE(
        style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarAddLine, &bar).isEmpty());
    option.maximum = 0;
    option.sliderPosition = 0;
    EXPECT_EQ(style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar).height(),
              200);
    option.maximum = std::numeric_limits<int>::max();
    option.pageStep = std::numeric_limits<int>::max();
    EXPECT_LE(style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar).height(),
              200);
}

TEST_F(SkinStyleTest, MenuRowsAre22PixelsAndShowTheirLetters) {
    QMenu menu;
    menu.setStyle(&style);
    QAction* first = menu.addAction(QStringLiteral("&Start"));
    QAction* separator = menu.addSeparator();
    menu.addAction(QStringLiteral("S&top"));
    menu.ensurePolished();
    EXPECT_EQ(menu.actionGeometry(first).height(), 22);
    EXPECT_EQ(menu.actionGeometry(separator).height(), 7);
    EXPECT_EQ(style.styleHint(QStyle::SH_UnderlineShortcut, nullptr, &menu, nullptr), 1);
    EXPECT_TRUE(menu.testAttribute(Qt::WA_TranslucentBackground));
    menu.resize(menu.sizeHint());
    const QImage panel = menu.grab().toImage();
    EXPECT_EQ(panel.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(panel.pixelColor(panel.width() / 2, panel.height() / 2).alpha(), 255);
}

TEST_F(SkinStyleTest, MessageIconsAreOursAndSharp) {
    for (const auto icon : {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxQuestion,
                            QStyle::SP_MessageBoxWarning, QStyle::SP_MessageBoxCritical}) {
        const QPixmap picture = style.standardPixmap(icon, nullptr, nullptr);
        EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(40, 40)) << icon;
        EXPECT_EQ(SkinIcon(icon).pixmap(QSize(40, 40), 2.0).size(), QSize(80, 80)) << icon;
    }
    const QColor warning = SkinIcon(QStyle::SP_MessageBoxWarning).pixmap(40, 40).toImage().pixelColor(20, 18);
    EXPECT_GT(warning.red(), 200);
    EXPECT_LT(warning.blue(), 110);
}

TEST_F(SkinStyleTest, EveryIconCanBeDrawn) {
    for (const auto icon :
         {QStyle::SP_DirIcon, QStyle::SP_DirOpenIcon, QStyle::SP_DirHomeIcon, QStyle::SP_FileIcon,
          QStyle::SP_DriveHDIcon, QStyle::SP_DriveCDIcon, QStyle::SP_ComputerIcon, QStyle::SP_TrashIcon,
          QStyle::SP_FileDialogNewFolder, QStyle::SP_FileDialogToParent, QStyle::SP_FileDialogBack,
          QStyle::SP_ArrowForward, QStyle::SP_FileDialogDetailedView, QStyle::SP_FileDialogListView,
          QStyle::SP_LineEditClearButton}) {
        const QImage picture = SkinIcon(icon).pixmap(16, 16).toImage();
        ASSERT_FALSE(picture.isNull()) << icon;
        int drawn = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                drawn += picture.pixelColor(x, y).alpha() > 100 ? 1 : 0;
            }
        }
        EXPECT_GT(drawn, 8) << icon;
    }
    EXPECT_TRUE(SkinIcon(QStyle::SP_MediaPlay).isNull());
}

TEST_F(SkinStyleTest, ABarWithoutAnEndKeepsMoving) {
    QProgressBar bar;
    bar.setStyle(&style);
    bar.setRange(0, 0);
    bar.setTextVisible(false);
    bar.resize(120, 16);
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    const QImage first = bar.grab().toImage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.grab().toImage() != first; }, 3000));
}
