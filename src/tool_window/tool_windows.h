// The windows of the tools, and how one is opened.
#pragma once

#include "components/user_prompts.h"

#include <QString>

namespace kestrune {

// The windows that open over the main window.
enum class ToolWindow {
    frmRecord,
    RipfrmMain,
    CDWriterMain,
    ConverterfrmDialog,
    frmMp3site,
    frmInfo,
    xFrmHomePage,
    xDialog7,
    frmSplash
};

// Shows windows. A call returns when the window was closed.
class ToolWindows {
public:
    virtual ~ToolWindows() = default;
    // False if there is no such window yet.
    virtual bool Show(ToolWindow tool) = 0;
    // A page of the product's site, by its name, in the browser; returns at once. False if there is no site.
    virtual bool OpenPage(const QString& page) = 0;
    // The help window; returns at once.
    virtual void ShowHelp(const QString& topic) = 0;
    // True while a box or a tool keeps the user from the main window.
    virtual bool IsUserKeptAway() const = 0;
};

// Shows a tool, or tells that it does not exist yet. Returns when either was closed.
void OpenTool(ToolWindow tool, ToolWindows& windows, UserPrompts& prompts);
// The same for a page of the product's site.
void OpenSitePage(const QString& page, ToolWindows& windows, UserPrompts& prompts);

} // namespace kestrune
