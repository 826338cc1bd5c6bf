#include "convert/converter_panels.h"

#include <gtest/gtest.h>

namespace kestrune::convert {
namespace {

TEST(ConverterPanels, TheArrowTogglesTheHeight) {
    ConverterPanels panels;
    QList<int> heights;
    QObject::connect(&panels, &ConverterPanels::HeightChanged, [&](int height) { heights.append(height); });
    EXPECT_EQ(panels.Height(), 350);
    panels.ImageUpdown_Click();
    EXPECT_TRUE(panels.IsLong());
    panels.ImageUpdown_Click();
    EXPECT_EQ(heights, (QList<int>{653, 350}));
}

TEST(ConverterPanels, TheSettingsComeAndGo) {
    ConverterPanels panels;
    QList<bool> shown;
    QObject::connect(&panels, &ConverterPanels::PictureSetShown,
                     [&](bool isShown) { shown.append(isShown); });
    panels.ImageOptions_Click();
    EXPECT_TRUE(panels.IsPictureSetShown());
    panels.ImageOptions_Click();
    EXPECT_FALSE(panels.IsPictureSetShown());
    panels.ImageOptions_Click();
    panels.ImageSetdown_Click();
    EXPECT_FALSE(panels.IsPictureSetShown());
    EXPECT_EQ(shown, (QList<bool>{true, false, true, false}));
}

} // namespace
} // namespace kestrune::convert
