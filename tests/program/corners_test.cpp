// The corners of the windows where there is no compositor: cut off by a mask, so that what lies behind shows.
#include "convert/converter_window_fixture.h"
#include "editors/frm_cue_list.h"
#include "editors/frm_info.h"
#include "editors/tag_editor_fixture.h"
#include "main_window/main_window_fixture.h"

#include <QScreen>

namespace kestrune {
namespace {

// A white screen behind the windows; nothing of the skin is white.
class Ground : public QWidget {
public:
    Ground() : QWidget(nullptr, Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint) {
        QPalette white;
        white.setColor(QPalette::Window, Qt::white);
        setPalette(white);
        setGeometry(screen()->geometry());
        show();
        lower();
    }
};

// A pixel of a corner is outside if its centre lies beyond the quarter of the ellipse.
bool IsCutOff(int x, int y, const QSize& window, const QSize& ellipse) {
    const double a = ellipse.width() / 2.0;
    const double b = ellipse.height() / 2.0;
    const double right = window.width() - a;
    const double bottom = window.height() - b;
    const double px = x + 0.5;
    const double py = y + 0.5;
    const double dx = px < a ? a - px : std::max(0.0, px - right);
    const double dy = py < b ? b - py : std::max(0.0, py - bottom);
    return dx > 0 && dy > 0 && dx / a * dx / a + dy / b * dy / b > 1;
}

void ExpectCorners(QWidget& window, const QSize& ellipse) {
    window.raise();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const auto onScreen = [&window] {
        const QRect place = window.geometry();
        return window.screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()).toImage();
    };
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return onScreen().pixelColor(window.width() / 2, window.height() - 3) != QColor(Qt::white); }));
    const QImage picture = onScreen();
    int wrong = 0;
    for (int y = 0; y < window.height(); ++y) {
        for (int x = 0; x < window.width(); ++x) {
            const bool isBehind = picture.pixelColor(x, y) == QColor(Qt::white);
            const bool isCut = IsCutOff(x, y, window.size(), ellipse);
            wrong += isCut != isBehind ? 1 : 0;
        }
    }
    EXPECT_EQ(wrong, 0) << "pixels of " << window.objectName().toStdString();
    EXPECT_TRUE(IsCutOff(0, 0, window.size(), ellipse));
}

class MainWindowCorners : public MainWindowTest {};

TEST_F(MainWindowCorners, AreOf35And38) {
    const Ground ground;
    Start();
    EXPECT_EQ(window.size(), QSize(393, 385));
    ExpectCorners(window, {35, 38});
}

class ConverterCorners : public ConverterWindowTest {};

TEST_F(ConverterCorners, AreOf20InBothHeights) {
    const Ground ground;
    Open();
    EXPECT_EQ(window.height(), 350);
    ExpectCorners(window, {20, 20});
    Click("ImageUpdown");
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.height() == 653; }));
    ExpectCorners(window, {20, 20});
}

class EditorCorners : public TagEditorFixture {};

TEST_F(EditorCorners, AreOf15) {
    const Ground ground;
    FrmInfo editor({state, rows, information, prompts}, nullptr);
    editor.Load();
    editor.open();
    ExpectCorners(editor, {15, 15});
}

} // namespace
} // namespace kestrune
