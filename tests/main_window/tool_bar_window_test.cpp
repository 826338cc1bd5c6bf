// The tool bar under the mouse.
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

class ToolBarWindowTest : public MainWindowTest {
protected:
    QAbstractButton* Item() { return Button(QStringLiteral("ImageToolBar"), 4); }
    QImage Picture() { return window.grab(Item()->geometry()).toImage(); }
};

TEST_F(ToolBarWindowTest, AnItemThatIsLetGoOverTheWindowGoesOut) {
    ASSERT_NO_FATAL_FAILURE(Start());
    const QImage rest = Picture();
    QTest::mouseMove(Item());
    ASSERT_NE(Picture(), rest);
    QTest::mousePress(Item(), Qt::LeftButton);
    QTest::mouseRelease(Item(), Qt::LeftButton, {}, QPoint(0, 100));
    EXPECT_EQ(Picture(), rest);
}

} // namespace
} // namespace kestrune
