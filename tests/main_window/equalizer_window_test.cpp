// The equalizer's panel under mouse, wheel and keys.
#include "playback/equalizer_panel.h"

#include <QAccessible>
#include <QtTest/QtTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace kestrune {
namespace {

class EqualizerWindowTest : public testing::Test {
protected:
    EqualizerWindowTest() {
        window.resize(393, 145);
        panel->setGeometry(16, 13, 360, 119);
        QObject::connect(panel, &EqualizerPanel::GainsChanged, panel,
                         [this](const EqualizerGains& gainsDb) { told.push_back(gainsDb); });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    BandFaderWidget* Fader(int band) {
        auto* fader = panel->findChild<BandFaderWidget*>(QStringLiteral("Band(%1)").arg(band));
        EXPECT_NE(fader, nullptr) << band;
        return fader;
    }
    static QPoint Cap(const BandFaderWidget* fader) {
        return {fader->width() / 2, static_cast<int>(std::lround(fader->CapY()))};
    }
    void Wheel(QWidget* target, int eighths) {
        const QPointF at(target->rect().center());
        QWheelEvent event(at, target->mapToGlobal(at), {}, {0, eighths}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(target, &event);
    }
    float Gain(int band) { return panel->Control().Property(equalizerFirstBand + band); }

    QWidget window;
    EqualizerPanel* panel = new EqualizerPanel(&window);
    std::vector<EqualizerGains> told;
};

TEST_F(EqualizerWindowTest, TheCapFollowsTheHand) {
    BandFaderWidget* fader = Fader(4);
    const QPoint from = Cap(fader);
    QTest::mousePress(fader, Qt::LeftButton, {}, from);
    EXPECT_TRUE(told.empty()) << "only taken";
    QTest::mouseMove(fader, from - QPoint(0, 14));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_FLOAT_EQ(told[0][4], 5);
    EXPECT_FLOAT_EQ(told[0][3], 0);
    QTest::mouseMove(fader, from + QPoint(0, 500));
    QTest::mouseRelease(fader, Qt::LeftButton, {}, from + QPoint(0, 500));
    EXPECT_FLOAT_EQ(Gain(4), -15);
    QTest::mouseMove(fader, from);
    EXPECT_FLOAT_EQ(Gain(4), -15) << "let go";
}

TEST_F(EqualizerWindowTest, AClickBesideTheCapFetchesItAndADoubleClickIsZero) {
    BandFaderWidget* fader = Fader(0);
    QTest::mouseClick(fader, Qt::LeftButton, {}, {13, 12});
    EXPECT_FLOAT_EQ(Gain(0), 15);
    QTest::mouseDClick(fader, Qt::LeftButton, {}, {13, 12});
    EXPECT_FLOAT_EQ(Gain(0), 0);
    QTest::mouseClick(fader, Qt::RightButton, {}, {13, 12});
    EXPECT_FLOAT_EQ(Gain(0), 0);
}

TEST_F(EqualizerWindowTest, TheBubbleTellsTheValueWhileTheHandIsThereAndSomeTimeLonger) {
    auto* bubble = panel->findChild<ValueBubbleWidget*>();
    ASSERT_NE(bubble, nullptr);
    EXPECT_FALSE(bubble->isVisible());
    for (const int band : {0, 6, 11}) {
        BandFaderWidget* fader = Fader(band);
        QTest::mousePress(fader, Qt::LeftButton, {}, {13, 20});
        EXPECT_TRUE(bubble->isVisible());
        EXPECT_EQ(bubble->Text(), GainText(Gain(band)));
        EXPECT_TRUE(panel->rect().contains(bubble->geometry())) << band;
        QTest::mouseRelease(fader, Qt::LeftButton, {}, {13, 20});
        EXPECT_TRUE(bubble->isVisible());
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bubble->isVisible(); }, 5000));
}

TEST_F(EqualizerWindowTest, TheWheelStepsByWholeNotches) {
    Wheel(Fader(2), 120);
    EXPECT_FLOAT_EQ(Gain(2), 1);
    Wheel(Fader(2), -60);
    EXPECT_FLOAT_EQ(Gain(2), 1);
    Wheel(Fader(2), -60);
    EXPECT_FLOAT_EQ(Gain(2), 0);
    Wheel(Fader(2), -120 * 40);
    EXPECT_FLOAT_EQ(Gain(2), -15);
}

TEST_F(EqualizerWindowTest, KeysMoveTheBandThatHasTheFocus) {
    BandFaderWidget* fader = Fader(7);
    fader->setFocus();
    const std::vector<std::pair<Qt::Key, float>> presses = {
        {Qt::Key_Up, 1},     {Qt::Key_PageUp, 4}, {Qt::Key_Down, 3}, {Qt::Key_PageDown, 0},
        {Qt::Key_Home, 15},  {Qt::Key_Up, 15},    {Qt::Key_0, 0},    {Qt::Key_End, -15},
        {Qt::Key_Down, -15}, {Qt::Key_Delete, 0}};
    for (const auto& [key, gainDb] : presses) {
        QTest::keyClick(fader, key);
        EXPECT_FLOAT_EQ(Gain(7), gainDb) << key;
    }
    EXPECT_EQ(told.size(), presses.size() - 2) << "a band at its end has not changed";
}

TEST_F(EqualizerWindowTest, LeftAndRightGoFromBandToBandAndTabThroughAll) {
    panel->setFocus();
    EXPECT_TRUE(Fader(0)->hasFocus());
    QTest::keyClick(Fader(0), Qt::Key_Left);
    EXPECT_TRUE(Fader(0)->hasFocus());
    QTest::keyClick(Fader(0), Qt::Key_Right);
    EXPECT_TRUE(Fader(1)->hasFocus());
    for (int band = 1; band < equalizerBands; ++band) {
        EXPECT_TRUE(Fader(band)->hasFocus()) << band;
        QTest::keyClick(Fader(band), Qt::Key_Tab);
    }
}

TEST_F(EqualizerWindowTest, AnOtherKeyGoesToTheWindow) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier);
    QCoreApplication::sendEvent(Fader(0), &event);
    EXPECT_FALSE(event.isAccepted());
}

TEST_F(EqualizerWindowTest, ShownGainsAreNotTold) {
    panel->ShowGains({3, -4.5F, 99});
    EXPECT_TRUE(told.empty());
    EXPECT_FLOAT_EQ(Gain(1), -4.5F);
    EXPECT_FLOAT_EQ(Fader(1)->GainDb(), -4.5F);
    EXPECT_FLOAT_EQ(Gain(2), 15);
    QTest::keyClick(Fader(0), Qt::Key_Up);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_FLOAT_EQ(told[0][0], 4);
    EXPECT_FLOAT_EQ(told[0][1], -4.5F) << "the half stays";
}

TEST_F(EqualizerWindowTest, TheControlReachesTheFadersAndTellsTheChange) {
    panel->Control().SetProperty(19, -7);
    EXPECT_FLOAT_EQ(Fader(2)->GainDb(), -7);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_FLOAT_EQ(told[0][2], -7);
    panel->Control().SetProperty(equalizerRange, 12);
    EXPECT_FLOAT_EQ(Fader(2)->GainDb(), -6);
    EXPECT_EQ(Fader(2)->minimum(), -6);
    QTest::keyClick(Fader(2), Qt::Key_Home);
    EXPECT_FLOAT_EQ(Gain(2), 6);
}

TEST_F(EqualizerWindowTest, EachBandIsASliderInDecibelsToAReader) {
    QTest::keyClick(Fader(7), Qt::Key_PageDown);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(Fader(7));
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->role(), QAccessible::Slider);
    EXPECT_EQ(reader->text(QAccessible::Name), QStringLiteral("1,600 Hz, gain in dB"));
    QAccessibleValueInterface* value = reader->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toInt(), -3);
    EXPECT_EQ(value->minimumValue().toInt(), -15);
    EXPECT_EQ(value->maximumValue().toInt(), 15);
    value->setCurrentValue(9);
    EXPECT_FLOAT_EQ(Gain(7), 9);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_FLOAT_EQ(told[1][7], 9);
}

TEST_F(EqualizerWindowTest, ThePictureShowsGainFocusAndHand) {
    const auto picture = [&] { return panel->grab().toImage(); };
    window.setFocus();
    const QImage flat = picture();
    panel->ShowGains({0, 0, 0, 9});
    const QImage raised = picture();
    EXPECT_NE(raised, flat);
    panel->ShowGains({});
    EXPECT_EQ(picture(), flat);
    Fader(3)->setFocus(Qt::TabFocusReason);
    const QImage focused = picture();
    EXPECT_NE(focused, flat);
    // The curve passes beside the faders, too: between two columns something is drawn at the height of 9 dB.
    const QPoint between(29 + 4 * 27, 40);
    EXPECT_NE(raised.pixelColor(between), flat.pixelColor(between));
}

} // namespace
} // namespace kestrune
