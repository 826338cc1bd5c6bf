// What the position bar, the volume and the main window are to a screen reader.
#include "main_window/main_window_fixture.h"

#include <QAccessible>

namespace kestrune {
namespace {

class SliderAccessTest : public MainWindowTest {
protected:
    QAccessibleInterface* Access(const QString& name) {
        QAccessibleInterface* access = QAccessible::queryAccessibleInterface(Find(name));
        EXPECT_NE(access, nullptr);
        return access;
    }
    QAccessibleValueInterface* Value(const QString& name) {
        QAccessibleValueInterface* value = Access(name)->valueInterface();
        EXPECT_NE(value, nullptr);
        return value;
    }
};

const QString position = QStringLiteral("PositionBar");
const QString volume = QStringLiteral("ImageVolumeButtonB");

TEST_F(SliderAccessTest, BothAreSlidersWithoutParts) {
    Start();
    for (const QString& name : {position, volume}) {
        EXPECT_EQ(Access(name)->role(), QAccessible::Slider);
        EXPECT_EQ(Access(name)->childCount(), 0);
        EXPECT_EQ(Value(name)->minimumValue().toDouble(), 0);
        EXPECT_EQ(Value(name)->maximumValue().toDouble(), 100);
    }
}

TEST_F(SliderAccessTest, TheVolumeIsSetAndRead) {
    Start();
    Value(volume)->setCurrentValue(40.0);
    EXPECT_EQ(knob.Volume(), 26214); // 40 % of 65535
    EXPECT_EQ(Value(volume)->currentValue().toDouble(), 40);
    knob.SetVolume(0);
    EXPECT_EQ(Value(volume)->currentValue().toDouble(), 0);
}

TEST_F(SliderAccessTest, AVolumeBeyondTheEndsGoesToTheEnd) {
    Start();
    Value(volume)->setCurrentValue(500.0);
    EXPECT_EQ(knob.Volume(), 65535);
    Value(volume)->setCurrentValue(-1.0);
    EXPECT_EQ(knob.Volume(), 0);
    Value(volume)->setCurrentValue(QStringLiteral("loud"));
    EXPECT_EQ(knob.Volume(), 0);
}

TEST_F(SliderAccessTest, ThePositionCanBeSetWhileAFilePlays) {
    Start();
    AddTracks(1);
    EXPECT_TRUE(Access(position)->state().readOnly);
    Value(position)->setCurrentValue(50.0);
    EXPECT_EQ(Value(position)->currentValue().toDouble(), 0);
    transport.PlayCurrentItem();
    ASSERT_TRUE(transport.State().IsPlaying);
    EXPECT_FALSE(Access(position)->state().readOnly);
    QSignalSpy sought(Find(position), SIGNAL(Sought(double)));
    Value(position)->setCurrentValue(50.0);
    ASSERT_EQ(sought.count(), 1);
    EXPECT_EQ(sought.first().first().toDouble(), 93); // half of the line
    EXPECT_EQ(Value(position)->currentValue().toDouble(), 50);
}

TEST_F(SliderAccessTest, TheMarksSayTheirVolume) {
    Start();
    const std::array<QString, 4> names = {QStringLiteral("Volume 20 %"), QStringLiteral("Volume 47 %"),
                                          QStringLiteral("Volume 53 %"), QStringLiteral("Volume 82 %")};
    for (size_t i = 0; i < names.size(); ++i) {
        QAccessibleInterface* mark = Access(QStringLiteral("ImageVol(%1)").arg(i));
        EXPECT_EQ(mark->role(), QAccessible::Button);
        EXPECT_EQ(mark->text(QAccessible::Name), names[i]);
        Button(QStringLiteral("ImageVol"), static_cast<int>(i))->click();
        EXPECT_EQ(QStringLiteral("Volume %1 %").arg(Value(volume)->currentValue().toInt()), names[i]);
    }
}

TEST_F(SliderAccessTest, TheWindowLeavesOutItsPictures) {
    Start();
    QAccessibleInterface* top = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->role(), QAccessible::Window);
    ASSERT_GT(top->childCount(), 40);
    for (int i = 0; i < top->childCount(); ++i) {
        QAccessibleInterface* child = top->child(i);
        ASSERT_NE(child, nullptr);
        EXPECT_FALSE(child->text(QAccessible::Name).isEmpty()) << child->object()->objectName().toStdString();
        EXPECT_EQ(top->indexOfChild(child), i);
    }
    EXPECT_EQ(top->child(top->childCount()), nullptr);
    EXPECT_EQ(top->child(-1), nullptr);
}

TEST_F(SliderAccessTest, TheClockTellsTheTime) {
    Start();
    EXPECT_EQ(Access(QStringLiteral("ImageData(0)"))->text(QAccessible::Name), QStringLiteral("Time 00:00"));
    EXPECT_TRUE(Access(QStringLiteral("ImageData(1)"))->text(QAccessible::Name).isEmpty());
}

} // namespace
} // namespace kestrune
