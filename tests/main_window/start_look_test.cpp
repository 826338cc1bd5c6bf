// What the window prepares when it starts: the display, the tool bar's timer, the places of the totals.
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

class StartLookTest : public MainWindowTest {
protected:
    QLabel* Total(int index) { return Find<QLabel>(QStringLiteral("LabelSeltal(%1)").arg(index)); }
    void ExpectTotalsInTheirPlaces() {
        const QLabel& all = *Total(0);
        const QLabel& selected = *Total(1);
        EXPECT_EQ(all.x() + all.width(), 383);
        EXPECT_LE(selected.geometry().right(), all.x());
        EXPECT_GE(selected.geometry().right(), all.x() - 12);
        for (const QLabel* label : {&all, &selected}) {
            EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text()));
            EXPECT_TRUE(label->isVisible());
        }
    }
};

TEST_F(StartLookTest, TheDisplayIsPrepared) {
    audioDisplay.SetProperty(DisplayLevelsColor, 1);
    audioDisplay.SetProperty(DisplayBorderStyle, BorderNone);
    audioDisplay.SetProperty(DisplayFftSize, 64);
    auto& equalizer = Find<EqualizerPanel>(QStringLiteral("KSTEqualizer21"))->Control();
    equalizer.SetProperty(equalizerRange, 10);
    window.PrepareDisplay();
    EXPECT_EQ(audioDisplay.Property(DisplayLevelsColor), 0x8080FF);
    EXPECT_EQ(audioDisplay.Property(DisplayBorderStyle), 2);
    EXPECT_EQ(audioDisplay.Property(DisplayFftSize), 4096);
    EXPECT_FLOAT_EQ(equalizer.Property(equalizerRange), 30);
}

TEST_F(StartLookTest, TheToolBarMovesEvery200MsUnderTheMouse) {
    Start();
    auto* timer = window.findChild<QTimer*>(QStringLiteral("TimerToolBar"));
    ASSERT_NE(timer, nullptr);
    EXPECT_FALSE(timer->isActive());
    QAbstractButton* item = Button(QStringLiteral("ImageToolBar"), 4);
    QTest::mouseMove(item);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 200);
    const auto picture = [&] { return window.grab(item->geometry()).toImage(); };
    const QImage first = picture();
    QList<QImage> phases;
    for (int tick = 0; tick < 3; ++tick) {
        ASSERT_TRUE(QMetaObject::invokeMethod(timer, "timeout"));
        phases << picture();
    }
    EXPECT_NE(phases[0], first);
    EXPECT_NE(phases[1], phases[0]);
    EXPECT_NE(phases[1], first);
    EXPECT_EQ(phases[2], first);
    QTest::mouseMove(List()->viewport(), {40, 60});
    EXPECT_FALSE(timer->isActive());
}

TEST_F(StartLookTest, TheTotalsBeginWithTheirStartTexts) {
    EXPECT_EQ(Total(0)->text(), QStringLiteral(" 0:00 (0.0 MB)"));
    Start();
    for (const int index : {0, 1}) {
        EXPECT_EQ(Total(index)->text(), QStringLiteral(" 0:00 (0.0 MB)"));
    }
    EXPECT_EQ(Total(0)->toolTip(), QStringLiteral("Total"));
    EXPECT_EQ(Total(1)->toolTip(), QStringLiteral("Selected Files"));
    ExpectTotalsInTheirPlaces();
}

TEST_F(StartLookTest, TheTotalsEndInOnePlaceHoweverLongTheyAre) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    ClickRow(1);
    ExpectTotalsInTheirPlaces();
    PlaylistRow row;
    row.fields[RowText] = QStringLiteral("4.long");
    row.fields[SubTime] = QStringLiteral("9999:59");
    row.fields[SubSize] = QStringLiteral("98765.4m");
    rows.Append(row);
    ClickRow(4);
    EXPECT_TRUE(Total(1)->text().startsWith(QLatin1String("9999:59 (98765.4")));
    ExpectTotalsInTheirPlaces();
}

} // namespace
} // namespace kestrune
