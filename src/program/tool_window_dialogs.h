// The windows that open over the main window, each made when it is first asked for.
#pragma once

#include "app/program_state.h"
#include "tool_window/tool_windows.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>

namespace kestrune {

class FrmSplash;
class HelpWindow;

// Window thread.
class ToolWindowDialogs : public ToolWindows {
public:
    // The state must outlive it.
    explicit ToolWindowDialogs(const ProgramState& state);
    ~ToolWindowDialogs() override;

    // The window over which they open.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    // How a tool is shown: runs its window over the owner given and returns when it was closed.
    using Showing = std::function<void(QWidget* owner)>;
    void SetShowing(ToolWindow tool, Showing showing) { showings_[tool] = std::move(showing); }
    bool Show(ToolWindow tool) override;
    bool OpenPage(const QString& page) override;
    void ShowHelp(const QString& topic) override;

private:
    const ProgramState& state_;
    QPointer<QWidget> owner_;
    std::map<ToolWindow, Showing> showings_;
    std::unique_ptr<FrmSplash> frmSplash_;
    std::unique_ptr<HelpWindow> help_;
};

} // namespace kestrune
