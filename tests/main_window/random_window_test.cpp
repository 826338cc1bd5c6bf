// Anything pressed at any time: the window shows what the transport holds, and nothing breaks.
#include "main_window/main_window_fixture.h"

#include <random>

namespace kestrune {
namespace {

class RandomWindowTest : public MainWindowTest, public testing::WithParamInterface<unsigned> {
protected:
    int Number(int below) { return static_cast<int>(chance() % static_cast<unsigned>(below)); }
    QPoint PlaceIn(const QWidget* widget) {
        return {Number(std::max(1, widget->width())), Number(std::max(1, widget->height()))};
    }
    void PressAnywhereIn(QWidget* widget) {
        constexpr std::array<Qt::KeyboardModifiers, 4> modifiers = {Qt::NoModifier, Qt::ControlModifier,
                                                                    Qt::ShiftModifier, Qt::NoModifier};
        const Qt::KeyboardModifiers held = modifiers[static_cast<size_t>(Number(4))];
        if (Number(4) == 0) {
            QTest::mouseDClick(widget, Qt::LeftButton, held, PlaceIn(widget));
        } else {
            QTest::mouseClick(widget, Qt::LeftButton, held, PlaceIn(widget));
        }
    }
    void DragThumb() {
        QWidget* thumb = Find(QStringLiteral("PictureStep"));
        if (!thumb->isVisible()) {
            return;
        }
        QTest::mousePress(thumb, Qt::LeftButton, {}, thumb->rect().center());
        QTest::mouseMove(thumb, {Number(200) - 100, 3});
        if (Number(5) == 0) {
            transport.StopPlay();
        }
        QTest::mouseRelease(thumb, Qt::LeftButton, {}, thumb->rect().center());
    }
    void PressKey() {
        constexpr std::array<Qt::Key, 10> keys = {
            Qt::Key_Up,       Qt::Key_Down,   Qt::Key_Home, Qt::Key_End,  Qt::Key_PageUp,
            Qt::Key_PageDown, Qt::Key_Return, Qt::Key_A,    Qt::Key_Left, Qt::Key_Right};
        const Qt::Key key = keys[static_cast<size_t>(Number(static_cast<int>(keys.size())))];
        const Qt::KeyboardModifiers held = key == Qt::Key_A ? Qt::ControlModifier
                                           : Number(3) == 0 ? Qt::ShiftModifier
                                                            : Qt::NoModifier;
        QTest::keyClick(Number(4) == 0 ? Find(QStringLiteral("PositionBar")) : List(), key, held);
    }
    void PlayerGoesOn() {
        if (!player.isRunning) {
            return;
        }
        player.playedBytes += Number(3000);
        switch (Number(4)) {
        case 0:
            player.isRunning = false;
            emit player.EndPlay();
            break;
        case 1:
            emit player.EndArrayPlay();
            break;
        default:
            emit player.Timer(player.playedBytes);
            break;
        }
    }
    void Use() {
        switch (Number(8)) {
        case 0:
            PressAnywhereIn(List()->viewport());
            break;
        case 1:
            ClickButton(QStringLiteral("ImageRepeatModeBut"), Number(3));
            break;
        case 2:
            DragThumb();
            break;
        case 3:
            PressKey();
            break;
        case 4:
            PressAnywhereIn(Find(QStringLiteral("ImageVolumeButtonB")));
            break;
        case 5:
            Trigger(QStringLiteral("mnSort(%1)").arg(Number(6)));
            break;
        case 6:
            PlayerGoesOn();
            break;
        default:
            // The buttons 0 to 3 and 5; recording is a matter of its own.
            ClickButton(QStringLiteral("ImagePlayButton"), std::array<int, 5>{0, 1, 2, 3, 5}.at(Number(5)));
            break;
        }
    }
    void CheckWindow() {
        for (const int button : {ButtonPrevious, ButtonPause, ButtonPlay, ButtonStop, ButtonNext}) {
            EXPECT_EQ(Button(QStringLiteral("ImagePlayButton"), button)->isEnabled(),
                      transport.IsButtonEnabled(button))
                << button;
        }
        const int lamp = LitLamp();
        EXPECT_EQ(lamp == 0, !transport.State().IsPlaying);
        EXPECT_EQ(lamp == 1, player.isRunning);
        EXPECT_EQ(Find(QStringLiteral("PictureStep"))->isVisible(), transport.State().IsPlaying);
        EXPECT_EQ(window.findChild<QAction*>(QStringLiteral("mnuPause"))->text() == QLatin1String("Continue"),
                  lamp == 2);
        EXPECT_FALSE(state.SeekDragging);
        EXPECT_EQ(player.volume, PlayerVolumeFor(knob.Volume()));
        int modes = 0;
        for (int i = 0; i < 3; ++i) {
            modes += Button(QStringLiteral("ImageRepeatModeBut"), i)->isChecked() ? 1 : 0;
        }
        EXPECT_EQ(modes, 1);
        if (transport.State().IsPlaying) {
            EXPECT_TRUE(transport.IsButtonEnabled(ButtonStop));
        }
    }

    std::mt19937 chance{GetParam()};
};

TEST_P(RandomWindowTest, TheWindowShowsWhatTheTransportHolds) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(12));
    ClickRow(1);
    int started = 0;
    QObject::connect(&transport, &Transport::NameShown, &window, [&started] { ++started; });
    for (int step = 0; step < 600; ++step) {
        Use();
        CheckWindow();
        ASSERT_FALSE(HasFailure()) << "step " << step;
        if (step % 50 == 0) {
            window.grab();
        }
    }
    EXPECT_GT(started, 20);
    EXPECT_TRUE(prompts.questions.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWindowTest, testing::Values(11U, 12U, 13U));

} // namespace
} // namespace kestrune
