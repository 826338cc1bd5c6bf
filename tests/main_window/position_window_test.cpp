// The digit clock, the position thumb and the volume knob, by mouse and keys.
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

using testing::Contains;
using testing::IsEmpty;

class PositionWindowTest : public MainWindowTest {
protected:
    void StartPlaying() {
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(AddTracks(2));
        DoubleClickRow(1);
        ASSERT_EQ(Playing(), "a.wav");
        player.calls.clear();
        audioFile.calls.clear();
    }
    QWidget* Thumb() { return Find(QStringLiteral("PictureStep")); }
    QWidget* Line() { return Find(QStringLiteral("PictureStepLine1")); }
    QPoint Grip() { return Thumb()->rect().center(); }
    // Left of the thumb, measured from the start of the line.
    int ThumbLeft() { return Thumb()->mapTo(&window, QPoint()).x() - Line()->mapTo(&window, QPoint()).x(); }
    int ThumbWay() { return 198 - Thumb()->width(); }
    // As the window system delivers it: the widget that got the press gets what follows.
    QPoint InWindow(QWidget* widget, const QPoint& place) { return widget->mapTo(&window, place); }
    QImage Picture(const QString& name) { return Find(name)->grab().toImage(); }
    QList<QImage> Digits() {
        QList<QImage> digits;
        for (int i = 0; i < 4; ++i) {
            digits.append(Picture(QStringLiteral("ImageData(%1)").arg(i)));
        }
        for (int i = 0; i < 2; ++i) {
            digits.append(Picture(QStringLiteral("ImageData1(%1)").arg(i)));
        }
        return digits;
    }
};

TEST_F(PositionWindowTest, TheThumbShowsOnlyWhileAFilePlays) {
    Start();
    EXPECT_FALSE(Thumb()->isVisible());
    ASSERT_NO_FATAL_FAILURE(AddTracks(1));
    DoubleClickRow(1);
    EXPECT_TRUE(Thumb()->isVisible());
    EXPECT_EQ(ThumbLeft(), 0);
}

TEST_F(PositionWindowTest, TheTimerMovesDigitsAndThumb) {
    StartPlaying();
    const QList<QImage> atStart = Digits();
    emit player.Timer(10000); // 5 of 10 seconds
    EXPECT_EQ(ThumbLeft(), ThumbWay() / 2);
    EXPECT_EQ(Line()->width(), ThumbWay() / 2);
    const QList<QImage> later = Digits();
    EXPECT_NE(later[3], atStart[3]);
    EXPECT_EQ(later[2], atStart[2]);
    transport.StopPlay();
    EXPECT_EQ(Digits(), atStart);
}

TEST_F(PositionWindowTest, EqualDigitsLookEqual) {
    StartPlaying();
    emit player.Timer(2 * 2200); // 2.2 s: 12 sixtieths
    const QList<QImage> digits = Digits();
    EXPECT_NE(digits[4], digits[5]);
    emit player.Timer(2 * 2184); // 2.184 s: 11 sixtieths
    const QList<QImage> same = Digits();
    EXPECT_EQ(same[4], same[5]);
    EXPECT_EQ(same[4], digits[4]);
    EXPECT_EQ(same[3], digits[3]);
}

TEST_F(PositionWindowTest, AnUnknownLengthLeavesClockAndBar) {
    StartPlaying();
    audioFile.files[music.filePath(QStringLiteral("b.wav"))].pcm.clear();
    DoubleClickRow(2);
    ASSERT_EQ(Playing(), "b.wav");
    const QList<QImage> atStart = Digits();
    emit player.Timer(10000);
    EXPECT_EQ(Digits(), atStart);
    EXPECT_EQ(ThumbLeft(), 0);
}

TEST_F(PositionWindowTest, DraggingTheThumbSeeks) {
    StartPlaying();
    QTest::mousePress(Thumb(), Qt::LeftButton, {}, Grip());
    EXPECT_TRUE(state.SeekDragging);
    QTest::mouseMove(Thumb(), QPoint(Thumb()->width() / 2 + ThumbWay() / 2, 2));
    EXPECT_EQ(ThumbLeft(), ThumbWay() / 2);
    EXPECT_THAT(player.calls, IsEmpty()) << "nothing is sought before the release";
    QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, Grip());
    EXPECT_FALSE(state.SeekDragging);
    EXPECT_EQ(transport.State().PlayPos, 10000);
    EXPECT_THAT(audioFile.calls, Contains(QStringLiteral("SeekTo 10000")));
    EXPECT_THAT(player.calls, testing::ElementsAre("ClearBlocks", "WriteBlock 4000", "WriteBlock 4000"));
}

TEST_F(PositionWindowTest, PlaybackDoesNotMoveTheThumbDuringADrag) {
    StartPlaying();
    QTest::mousePress(Thumb(), Qt::LeftButton, {}, Grip());
    QTest::mouseMove(Thumb(), QPoint(Thumb()->width() / 2 + 50, 2));
    const QList<QImage> digits = Digits();
    emit player.Timer(18000);
    EXPECT_EQ(ThumbLeft(), 50);
    EXPECT_EQ(Digits(), digits);
    QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, Grip());
    emit player.Timer(2000);
    EXPECT_GT(ThumbLeft(), 50);
}

TEST_F(PositionWindowTest, AMoveBeyondTheTrackIsNotTaken) {
    StartPlaying();
    QTest::mousePress(Thumb(), Qt::LeftButton, {}, Grip());
    QTest::mouseMove(Thumb(), QPoint(Thumb()->width() / 2 + 60, 2));
    QTest::mouseMove(Thumb(), QPoint(500, 2));
    EXPECT_EQ(ThumbLeft(), 60);
    QTest::mouseMove(Thumb(), QPoint(Thumb()->width() / 2 - 60, 2));
    EXPECT_EQ(ThumbLeft(), 0);
    QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, Grip());
    EXPECT_EQ(transport.State().PlayPos, 0);
}

TEST_F(PositionWindowTest, OtherButtonsDoNotDrag) {
    StartPlaying();
    QTest::mousePress(Thumb(), Qt::RightButton, {}, Grip());
    QTest::mouseMove(Thumb(), QPoint(60, 2));
    QTest::mouseRelease(Thumb(), Qt::RightButton, {}, Grip());
    EXPECT_FALSE(state.SeekDragging);
    EXPECT_THAT(player.calls, IsEmpty());
}

TEST_F(PositionWindowTest, ADragDuringAPauseIsUsedByTheResume) {
    StartPlaying();
    ClickButton(QStringLiteral("ImagePlayButton"), ButtonPause);
    QTest::mousePress(Thumb(), Qt::LeftButton, {}, Grip());
    QTest::mouseMove(Thumb(), QPoint(Thumb()->width() / 2 + ThumbWay() / 2, 2));
    QTest::mouseRelease(Thumb(), Qt::LeftButton, {}, Grip());
    EXPECT_EQ(transport.State().PlayPos, 10000);
    EXPECT_FALSE(player.isRunning);
    audioFile.calls.clear();
    ClickButton(QStringLiteral("ImagePlayButton"), ButtonPause);
    EXPECT_THAT(audioFile.calls, Contains(QStringLiteral("SeekTo 10000")));
    EXPECT_TRUE(player.isRunning);
}

// The file ends while the thumb is held: the clock of the next file must not stand still for ever.
TEST_F(PositionWindowTest, AStopDuringADragDoesNotFreezeTheClock) {
    StartPlaying();
    QWindow* system = window.windowHandle();
    QTest::mousePress(system, Qt::LeftButton, {}, InWindow(Thumb(), Grip()));
    ASSERT_TRUE(state.SeekDragging);
    ClickButton(QStringLiteral("ImagePlayButton"), ButtonStop);
    QTest::mouseRelease(system, Qt::LeftButton, {}, QPoint(60, 60));
    DoubleClickRow(2);
    ASSERT_EQ(Playing(), "b.wav");
    emit player.Timer(10000);
    EXPECT_EQ(ThumbLeft(), ThumbWay() / 2);
}

TEST_F(PositionWindowTest, AnEndDuringADragDoesNotFreezeTheClock) {
    StartPlaying();
    QWindow* system = window.windowHandle();
    QTest::mousePress(system, Qt::LeftButton, {}, InWindow(Thumb(), Grip()));
    ASSERT_TRUE(state.SeekDragging);
    emit player.EndPlay();
    ASSERT_EQ(Playing(), "b.wav");
    QTest::mouseRelease(system, Qt::LeftButton, {}, InWindow(Thumb(), Grip()));
    emit player.Timer(10000);
    EXPECT_EQ(ThumbLeft(), ThumbWay() / 2);
}

// --- The volume knob ---

class VolumeWindowTest : public MainWindowTest {
protected:
    QWidget* Knob() { return Find(QStringLiteral("ImageVolumeButtonB")); }
    QPoint DotPlace() { return Find(QStringLiteral("ImageVolumeButtonA"))->mapTo(&window, QPoint()); }
    // A place on the knob; 0 degrees is right, 90 up.
    QPoint Place(double degrees, double distance) {
        const double angle = degrees * M_PI / 180;
        const double half = Knob()->width() / 2.0;
        return QPointF(half + std::cos(angle) * distance, half - std::sin(angle) * distance).toPoint();
    }
};

TEST_F(VolumeWindowTest, TheStartSetsTheStartVolume) {
    Start();
    EXPECT_EQ(knob.Volume(), 34842);
    EXPECT_EQ(player.volume, 34842);
}

TEST_F(VolumeWindowTest, EndIsFullVolume) {
    Start();
    QTest::keyClick(Knob(), Qt::Key_End);
    EXPECT_EQ(knob.Volume(), 65535);
    EXPECT_EQ(player.volume, 65535);
}

TEST_F(VolumeWindowTest, HomeIsSilent) {
    Start();
    QTest::keyClick(Knob(), Qt::Key_Home);
    EXPECT_EQ(player.volume, 0);
}

TEST_F(VolumeWindowTest, UpAndDownStep) {
    Start();
    const qint32 before = player.volume;
    QTest::keyClick(Knob(), Qt::Key_Up);
    EXPECT_GT(player.volume, before);
    QTest::keyClick(Knob(), Qt::Key_Down);
    EXPECT_EQ(player.volume, before);
}

TEST_F(VolumeWindowTest, AThirdIsSentBelowTenThousand) {
    Start();
    QTest::keyClick(Knob(), Qt::Key_Home);
    QTest::keyClick(Knob(), Qt::Key_Up);
    ASSERT_GT(knob.Volume(), 0);
    ASSERT_LT(knob.Volume(), 10000);
    EXPECT_EQ(player.volume, knob.Volume() / 3);
}

TEST_F(VolumeWindowTest, APressOnTheKnobTurnsIt) {
    Start();
    const QPoint dot = DotPlace();
    QTest::mousePress(Knob(), Qt::LeftButton, {}, Place(50, 20));
    QTest::mouseRelease(Knob(), Qt::LeftButton, {}, Place(50, 20));
    EXPECT_LT(player.volume, 34842);
    EXPECT_GT(player.volume, 10000);
    EXPECT_EQ(player.volume, knob.Volume());
    EXPECT_NE(DotPlace(), dot);
}

TEST_F(VolumeWindowTest, DraggingRoundTheKnobGoesToItsEnds) {
    Start();
    QTest::mousePress(Knob(), Qt::LeftButton, {}, Place(20, 20));
    for (int degrees = 10; degrees >= -85; degrees -= 5) {
        QTest::mouseMove(Knob(), Place(degrees, 25));
    }
    EXPECT_GT(player.volume, 60000);
    for (int degrees = -85; degrees <= 175; degrees += 5) {
        QTest::mouseMove(Knob(), Place(degrees, 25));
    }
    QTest::mouseRelease(Knob(), Qt::LeftButton, {}, Place(175, 25));
    EXPECT_EQ(player.volume, 0);
}

// The dot lies over the knob; a drag that begins on it turns the knob as well.
TEST_F(VolumeWindowTest, TheDotCanBeDragged) {
    Start();
    QWindow* system = window.windowHandle();
    const QPoint dot = Find(QStringLiteral("ImageVolumeButtonA"))->rect().center() + DotPlace();
    const QPoint centre = Knob()->mapTo(&window, Knob()->rect().center());
    QTest::mousePress(system, Qt::LeftButton, {}, dot);
    QTest::mouseMove(system, centre + QPoint(6, -16));
    QTest::mouseRelease(system, Qt::LeftButton, {}, centre + QPoint(6, -16));
    EXPECT_LT(player.volume, 30000);
    EXPECT_GT(player.volume, 20000);
}

TEST_F(VolumeWindowTest, TheRightButtonDoesNotTurnIt) {
    Start();
    QTest::mouseClick(Knob(), Qt::RightButton, {}, Place(50, 20));
    EXPECT_EQ(player.volume, 34842);
}

TEST_F(VolumeWindowTest, TheLowerLeftIsDead) {
    Start();
    QTest::mouseClick(Knob(), Qt::LeftButton, {}, Place(225, 20));
    EXPECT_EQ(player.volume, 34842);
}

TEST_F(VolumeWindowTest, TheMarksSetTheirVolumes) {
    Start();
    const QList<qint32> volumes = {12800, 30888, 35000, 53800};
    for (int mark = 0; mark < 4; ++mark) {
        QTest::mouseClick(Find(QStringLiteral("ImageVol(%1)").arg(mark)), Qt::LeftButton);
        EXPECT_EQ(player.volume, volumes[mark]) << mark;
        EXPECT_EQ(knob.Volume(), volumes[mark]) << mark;
    }
}

TEST_F(VolumeWindowTest, TheMarksLightUpWithTheVolume) {
    Start();
    const auto marks = [this] {
        QList<QImage> pictures;
        for (int mark = 0; mark < 4; ++mark) {
            pictures.append(Find(QStringLiteral("ImageVol(%1)").arg(mark))->grab().toImage());
        }
        return pictures;
    };
    QTest::keyClick(Knob(), Qt::Key_Home);
    const QList<QImage> dark = marks();
    QTest::keyClick(Knob(), Qt::Key_End);
    const QList<QImage> lit = marks();
    QTest::mouseClick(Find(QStringLiteral("ImageVol(1)")), Qt::LeftButton);
    const QList<QImage> half = marks();
    for (int mark = 0; mark < 4; ++mark) {
        EXPECT_NE(lit[mark], dark[mark]) << mark;
    }
    EXPECT_NE(half[0], dark[0]);
    EXPECT_NE(half[1], dark[1]);
    EXPECT_EQ(half[2], dark[2]);
    EXPECT_EQ(half[3], dark[3]);
}

} // namespace
} // namespace kestrune
