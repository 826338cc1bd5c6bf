// How much of the window is painted anew while a file plays.
#include "main_window/main_window_fixture.h"

#include <QPaintEvent>

namespace kestrune {
namespace {

// Collects what the window itself had to paint: all that is not opaque lies on its picture.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget* watched) : watched_(watched) { watched->installEventFilter(this); }

    QRegion painted;

    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == watched_ && event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

private:
    QWidget* watched_;
};

class RepaintWindowTest : public MainWindowTest {
protected:
    void StartPlaying() {
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(AddTracks(1));
        DoubleClickRow(1);
        emit player.Timer(2000);
        QTest::qWait(300);
        // The idle picture of the tool bar moves by itself.
        window.findChild<QWidget*>(QStringLiteral("toolFrame(0)"))->hide();
        QTest::qWait(50);
    }
    QRegion Place(const QString& name) {
        const QWidget* control = Find(name);
        return {QRect(control->mapTo(&window, QPoint(0, 0)), control->size())};
    }
};

TEST_F(RepaintWindowTest, ATickOfTheClockPaintsTheDigitsThatChanged) {
    StartPlaying();
    PaintWatch watch(&window);
    emit player.Timer(2034); // 1.000 s to 1.017 s: one sixtieth on, the thumb where it was
    QTest::qWait(50);
    EXPECT_FALSE(watch.painted.isEmpty());
    EXPECT_TRUE((watch.painted - Place(QStringLiteral("ImageData1(1)"))).isEmpty())
        << watch.painted.boundingRect().width() << " x " << watch.painted.boundingRect().height();
}

TEST_F(RepaintWindowTest, ASecondOnPaintsDigitsAndPositionAndNothingElse) {
    StartPlaying();
    PaintWatch watch(&window);
    emit player.Timer(14000); // 7 s
    QTest::qWait(50);
    QRegion allowed = Place(QStringLiteral("PositionBar"));
    for (int i = 0; i < 4; ++i) {
        allowed += Place(QStringLiteral("ImageData(%1)").arg(i));
    }
    for (int i = 0; i < 2; ++i) {
        allowed += Place(QStringLiteral("ImageData1(%1)").arg(i));
    }
    EXPECT_FALSE(watch.painted.isEmpty());
    EXPECT_TRUE((watch.painted - allowed).isEmpty());
}

TEST_F(RepaintWindowTest, ATickThatChangesNothingPaintsNothing) {
    StartPlaying();
    PaintWatch watch(&window);
    emit player.Timer(2000);
    QTest::qWait(50);
    EXPECT_TRUE(watch.painted.isEmpty());
}

} // namespace
} // namespace kestrune
