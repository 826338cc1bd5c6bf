// Opens tools over the main window.
#pragma once

#include "program/open_tools.h"
#include "tool_window/tool_windows.h"

#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>

namespace kestrune {

class HelpWindow;

// Window thread.
class ToolWindowDialogs : public ToolWindows {
public:
    ToolWindowDialogs();
    ~ToolWindowDialogs() override;

    // What the tools work with, and the window over which they open. Before the first Show.
    void SetMainWindow(const ToolParts& parts, QWidget* owner);

    // The window is application modal, over the owner and with its icon.
    bool Show(ToolWindow tool) override;
    bool OpenPage(const QString& page) override;
    void ShowHelp(const QString& topic) override;
    bool IsUserKeptAway() const override;

private:
    std::optional<ToolParts> parts_;
    QPointer<QWidget> owner_;
    std::unique_ptr<HelpWindow> help_;
};

} // namespace kestrune
