#include "display/audio_display_view.h"
#include "support/fake_clock.h"
#include "support/fake_spectrum.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPaintEvent>
#include <QtTest/QtTest>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace kestrune {

namespace {

// Tells what was painted anew.
class WatchedView : public AudioDisplayView {
public:
    using AudioDisplayView::AudioDisplayView;
    QRegion painted;

protected:
    void paintEvent(QPaintEvent* event) override {
        painted += event->region();
        AudioDisplayView::paintEvent(event);
    }
};

QList<qint16> Tone(double amplitude, int channels = 2) {
    QList<qint16> samples;
    for (int i = 0; i < 4096; ++i) {
        const auto sample =
            static_cast<qint16>(std::lround(amplitude * std::sin(2 * std::numbers::pi * 60.25 * i / 4096)));
        for (int channel = 0; channel < channels; ++channel) {
            samples.append(sample);
        }
    }
    return samples;
}

class AudioDisplayViewTest : public testing::Test {
protected:
    void SetUp() override {
        view.resize(150, 62);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
        view.clearFocus();
        QApplication::processEvents();
        view.painted = {};
    }
    void Draw(const QList<qint16>& samples, int steps = 1) {
        for (int i = 0; i < steps; ++i) {
            clock.monotonicMs += 40;
            display.DrawBlock(samples);
        }
        QApplication::processEvents();
    }
    QImage Picture() { return view.grab().toImage(); }
    // Pixels that differ by more than a trace.
    static int Difference(const QImage& one, const QImage& other) {
        constexpr int trace = 12;
        int count = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const QRgb a = one.pixel(x, y);
                const QRgb b = other.pixel(x, y);
                const int apart = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                            std::abs(qBlue(a) - qBlue(b))});
                count += apart > trace ? 1 : 0;
            }
        }
        return count;
    }
    // Pixels nearer to a hue than 25 degrees, and vivid.
    static int PixelsOfHue(const QImage& picture, const QColor& colour) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                const int apart = std::abs(pixel.hsvHue() - colour.hsvHue());
                const bool isNear = pixel.hsvHue() >= 0 && std::min(apart, 360 - apart) < 25;
                count += isNear && pixel.value() > 130 && pixel.hsvSaturation() > 60 ? 1 : 0;
            }
        }
        return count;
    }

    FakeSpectrum spectrum;
    FakeClock clock;
    AudioDisplay display{spectrum, clock};
    WatchedView view{display};
};

} // namespace

TEST_F(AudioDisplayViewTest, IsKnownByNameToTheWindowAndToAScreenReader) {
    EXPECT_EQ(view.objectName(), QStringLiteral("KSTAudioDisplay1"));
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Display"));
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("Level Bars"));
    display.SetProperty(DisplayKind, FftKryptonite);
    EXPECT_EQ(view.accessibleDescription(), QStringLiteral("FFT Kryptonite"));
}

TEST_F(AudioDisplayViewTest, EachTypeLooksDifferentAtRestAndInSound) {
    QList<QImage> pictures;
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        display.SetProperty(DisplayKind, type);
        pictures.append(Picture());
        Draw(Tone(20000), 10);
        pictures.append(Picture());
    }
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            EXPECT_GT(Difference(pictures[i], pictures[j]), 60) << i << " and " << j;
        }
    }
}

TEST_F(AudioDisplayViewTest, EmbersGlowBeforeAnythingWasHeard) {
    display.SetProperty(DisplayKind, FftFire);
    const QImage picture = Picture();
    int warm = 0;
    for (int x = 0; x < picture.width(); ++x) {
        const QRgb pixel = picture.pixel(x, picture.height() - 5);
        warm += qRed(pixel) > 100 && qRed(pixel) > 2 * qBlue(pixel) ? 1 : 0;
    }
    EXPECT_GT(warm, picture.width() / 2);
}

TEST_F(AudioDisplayViewTest, AnEmptyBlockShowsTheRestAgain) {
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        display.SetProperty(DisplayKind, type);
        const QImage rest = Picture();
        Draw(Tone(25000), 10);
        ASSERT_GT(Difference(Picture(), rest), 60) << type;
        Draw({});
        // The embers of the fire lie a little differently each time.
        EXPECT_LT(Difference(Picture(), rest), type == FftFire ? 800 : 1) << type;
    }
}

TEST_F(AudioDisplayViewTest, WhatIsPaintedInPartsEqualsThePictureAsAWhole) {
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        display.SetProperty(DisplayKind, type);
        QApplication::processEvents();
        for (const double amplitude : {30000.0, 300.0, 9000.0, 2.0}) {
            Draw(Tone(amplitude), 3);
        }
        // Until the second step of a spectrum is painted too.
        QTest::qWait(120);
        const QImage onScreen = view.screen()->grabWindow(view.winId()).toImage();
        EXPECT_EQ(Difference(onScreen, Picture()), 0) << type;
    }
}

TEST_F(AudioDisplayViewTest, NothingIsPaintedWhileNothingChanges) {
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        display.SetProperty(DisplayKind, type);
        Draw(QList<qint16>(8192, 0), 2);
        view.painted = {};
        Draw(QList<qint16>(8192, 0), 5);
        EXPECT_TRUE(view.painted.isEmpty()) << type;
    }
}

TEST_F(AudioDisplayViewTest, ALevelPaintsItsRowAlone) {
    QList<qint16> left = Tone(20000);
    for (qsizetype i = 1; i < left.size(); i += 2) {
        left[i] = 0;
    }
    Draw(left);
    EXPECT_FALSE(view.painted.isEmpty());
    EXPECT_LT(view.painted.boundingRect().bottom(), view.height() / 2);
}

TEST_F(AudioDisplayViewTest, ColoursComeFromTheProperties) {
    const QColor red(255, 40, 40);
    for (const qint32 type : {LevelBars, AnalogMeters, FftGlass}) {
        display.SetProperty(DisplayKind, type);
        display.SetProperty(DisplayLevelsColor, 0x8080FF);
        Draw(Tone(9000), 20);
        const int before = PixelsOfHue(Picture(), red);
        display.SetProperty(DisplayLevelsColor, 0xFF2828);
        QApplication::processEvents();
        EXPECT_GT(PixelsOfHue(Picture(), red), before + 100) << type;
    }
    display.SetProperty(DisplayKind, FftFire);
    display.SetProperty(DisplayMaxLevelColor, 0x40A0FF);
    Draw(Tone(9000), 20);
    EXPECT_GT(PixelsOfHue(Picture(), QColor(0x40, 0xA0, 0xFF)), 100);
}

TEST_F(AudioDisplayViewTest, AboveMaxLevelTheOtherColourIsUsed) {
    const QColor green(40, 255, 40);
    display.SetProperty(DisplayMaxLevelColor, 0x28FF28);
    display.SetProperty(DisplayMaxLevel, 100);
    Draw(Tone(32767));
    const int none = PixelsOfHue(Picture(), green);
    display.SetProperty(DisplayMaxLevel, 20);
    QApplication::processEvents();
    EXPECT_GT(PixelsOfHue(Picture(), green), none + 500);
}

TEST_F(AudioDisplayViewTest, MarksOfTheMaximumCanBeTurnedOff) {
    for (const qint32 type : {LevelBars, FftFire, FftGlass, FftKryptonite}) {
        display.SetProperty(DisplayKind, type);
        display.SetProperty(DisplayOutLinesHeight, 3);
        Draw(Tone(25000));
        Draw(QList<qint16>(8192, 0), 11);
        const QImage marked = Picture();
        display.SetProperty(DisplayOutLinesHeight, 0);
        QApplication::processEvents();
        EXPECT_GT(Difference(Picture(), marked), 5) << type;
    }
}

TEST_F(AudioDisplayViewTest, TheFourBordersDiffer) {
    QList<QImage> pictures;
    for (qint32 style = BorderNone; style <= BorderRaised; ++style) {
        display.SetProperty(DisplayBorderStyle, style);
        pictures.append(Picture());
    }
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            EXPECT_GT(Difference(pictures[i], pictures[j]), 100) << i << " and " << j;
        }
    }
    const auto brightness = [](const QImage& picture, int x, int y) { return qGray(picture.pixel(x, y)); };
    const QImage& lowered = pictures[BorderLowered];
    EXPECT_LT(brightness(lowered, 75, 0), brightness(lowered, 75, lowered.height() - 1));
    const QImage& raised = pictures[BorderRaised];
    EXPECT_GT(brightness(raised, 75, 0), brightness(raised, 75, raised.height() - 1));
}

TEST_F(AudioDisplayViewTest, LeftAloneItFallsToRestAndThenStandsStill) {
    const QImage rest = Picture();
    Draw(Tone(25000), 5);
    display.FallToRest();
    for (int i = 0; i < 200 && display.IsFalling(); ++i) {
        clock.monotonicMs += 200;
        QTest::qWait(40);
    }
    EXPECT_FALSE(display.IsFalling());
    QApplication::processEvents();
    EXPECT_EQ(Difference(Picture(), rest), 0);
    view.painted = {};
    QTest::qWait(120);
    EXPECT_TRUE(view.painted.isEmpty());
}

TEST_F(AudioDisplayViewTest, ABlockOfASpectrumIsShownInTwoSteps) {
    for (const qint32 type : {FftFire, FftGlass, FftKryptonite}) {
        display.SetProperty(DisplayKind, type);
        QApplication::processEvents();
        clock.monotonicMs += 80;
        display.DrawBlock(Tone(25000));
        // Before any event runs, so that no delay of the machine can bring the second step in.
        const QImage first = Picture();
        EXPECT_TRUE(QTest::qWaitFor([&] { return Difference(Picture(), first) > 20; })) << type;
        QTest::qWait(120);
        view.painted = {};
        QTest::qWait(120);
        EXPECT_TRUE(view.painted.isEmpty()) << type;
    }
}

TEST_F(AudioDisplayViewTest, AClearedSpectrumTakesNoSecondStep) {
    display.SetProperty(DisplayKind, FftGlass);
    QApplication::processEvents();
    const QImage rest = Picture();
    Draw(Tone(25000));
    Draw({});
    QTest::qWait(120);
    EXPECT_EQ(Difference(Picture(), rest), 0);
}

TEST_F(AudioDisplayViewTest, ARightClickAndTheKeysAskForTheMenu) {
    QList<QPoint> asked;
    QObject::connect(&view, &QWidget::customContextMenuRequested, &view,
                     [&asked](const QPoint& at) { asked.append(at); });
    QContextMenuEvent click(QContextMenuEvent::Mouse, {20, 30}, view.mapToGlobal(QPoint(20, 30)));
    QApplication::sendEvent(&view, &click);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0], QPoint(20, 30));
    // As the platform turns the Menu key into an event.
    QContextMenuEvent key(QContextMenuEvent::Keyboard, view.rect().center(),
                          view.mapToGlobal(view.rect().center()));
    QApplication::sendEvent(&view, &key);
    EXPECT_EQ(asked.size(), 2);
    QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_EQ(asked.size(), 3);
    EXPECT_EQ(asked[2], view.rect().center());
    QTest::keyClick(&view, Qt::Key_F10);
    EXPECT_EQ(asked.size(), 3);
}

TEST_F(AudioDisplayViewTest, FocusComesByTabAndIsSeen) {
    EXPECT_TRUE(view.focusPolicy() & Qt::TabFocus);
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.clearFocus();
    const QImage without = Picture();
    view.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(view.hasFocus());
    const QImage with = Picture();
    EXPECT_GT(Difference(with, without), 300);
    EXPECT_GT(PixelsOfHue(with, QColor(128, 128, 255)), PixelsOfHue(without, QColor(128, 128, 255)) + 100);
}

TEST_F(AudioDisplayViewTest, AnySizeAndChannelCountCanBeShown) {
    for (const QSize& size : {QSize(1, 1), QSize(5, 90), QSize(20, 12), QSize(150, 62), QSize(700, 300)}) {
        view.setFixedSize(size);
        for (qint32 type = 0; type < displayTypeCount; ++type) {
            for (const qint32 channels : {1, 2}) {
                display.SetProperty(DisplayKind, type);
                display.SetProperty(DisplayChannels, channels);
                Draw(Tone(25000, channels), 2);
                EXPECT_EQ(Picture().size(), size * view.devicePixelRatio());
            }
        }
    }
}

TEST_F(AudioDisplayViewTest, MoreRoomShowsMoreBands) {
    display.SetProperty(DisplayKind, FftGlass);
    Draw(Tone(20000));
    const int few = display.BandCount();
    view.resize(300, 62);
    Draw(Tone(20000), 2);
    EXPECT_GT(display.BandCount(), few * 3 / 2);
}

} // namespace kestrune
