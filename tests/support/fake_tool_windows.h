// Tool windows that are only noted.
#pragma once

#include "main_window/menu_routing.h"

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

    QList<ToolWindow> shown;
    QStringList pages;
    QStringList topics;
    bool exists = true;
};

} // namespace kestrune
