// Every mode key, panel key and option of the main window and its panels acts in every way.
#include "control_walk.h"
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

class MainWindowPresses : public MainWindowTest {
protected:
    std::optional<QString> Held(const QString& name) {
        if (name.startsWith(QLatin1String("ImageRepeatModeBut("))) {
            QString checked;
            for (const auto mode : {PlayMode::Continuous, PlayMode::Shuffle, PlayMode::Repeat}) {
                checked += options.IsModeChecked(mode) ? u'1' : u'0';
            }
            return checked;
        }
        if (name == QLatin1String("ImageChgLstBnd")) {
            return QString::number(int(Find(QStringLiteral("KSTEqualizer21"))->isVisible()));
        }
        if (name == QLatin1String("ImageColour")) {
            return QString::number(int(Find(QStringLiteral("ColourPanel"))->isVisible()));
        }
        if (name == QLatin1String("Option10") || name == QLatin1String("Option11")) {
            return QString::number(audioDisplay.Property(DisplayChannels));
        }
        if (name.startsWith(QLatin1String("Option"))) {
            return QString::number(audioDisplay.Property(DisplayBorderStyle));
        }
        return std::nullopt;
    }
    void Prepare(const QAbstractButton& button) {
        auto* panel = Find(QStringLiteral("ColourPanel"));
        if (panel->isAncestorOf(&button) && !panel->isVisible()) {
            Find<QAbstractButton>(QStringLiteral("ImageColour"))->click();
        }
    }
};

TEST_F(MainWindowPresses, EveryKeyAndOptionActs) {
    Start();
    const QStringList names = ControlWalk({.window = window,
                                           .held = [this](const QString& name) { return Held(name); },
                                           .prepare = [this](QAbstractButton& button) { Prepare(button); },
                                           .modeKeys = {QStringLiteral("ImageRepeatModeBut")}})
                                  .Run();
    EXPECT_EQ(names.size(), 11) << names.join(u' ').toStdString();
}

} // namespace
} // namespace kestrune
