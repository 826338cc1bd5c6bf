// The main window's share of the start, which is only noted.
#pragma once

#include "main_window/start_up.h"

#include <QStringList>
#include <functional>

namespace kestrune {

class FakeMainWindow : public MainWindowSteps {
public:
    QStringList steps;
    std::function<void(const QString&)> onStep;
    void Hide() override { Note(QStringLiteral("Hide")); }
    void FillColourList() override { Note(QStringLiteral("FillColourList")); }
    void PrepareDisplay() override { Note(QStringLiteral("PrepareDisplay")); }
    void PrepareSkin() override { Note(QStringLiteral("PrepareSkin")); }
    void PaintSkin() override { Note(QStringLiteral("PaintSkin")); }
    void SizeAndCentre() override { Note(QStringLiteral("SizeAndCentre")); }
    void ShowKnob() override { Note(QStringLiteral("ShowKnob")); }
    void Show() override { Note(QStringLiteral("Show")); }

private:
    void Note(const QString& step) {
        steps << step;
        if (onStep) {
            onStep(step);
        }
    }
};

} // namespace kestrune
