// Tool windows that are only noted.
#pragma once

#include "tool_window/tool_windows.h"

#include <QList>

namespace kestrune {

class FakeToolWindows : public ToolWindows {
public:
    bool Show(ToolWindow tool) override {
        shown.append(tool);
        return exists;
    }
    bool OpenPage(const QString& page) override {
        pages.append(page);
        return exists;
    }
    void ShowHelp(const QString& topic) override { topics.append(topic); }
    bool IsUserKeptAway() const override { return isUserKeptAway; }

    QList<ToolWindow> shown;
    QStringList pages;
    QStringList topics;
    bool exists = true;
    bool isUserKeptAway = false;
};

} // namespace kestrune
