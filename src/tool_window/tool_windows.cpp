#include "tool_window/tool_windows.h"

#include <QCoreApplication>

namespace kestrune {

namespace {

void TellIfMissing(bool isThere, UserPrompts& prompts) {
    if (!isThere) {
        prompts.Message(
            QCoreApplication::translate("kestrune::ToolWindows", "This tool is not part of Kestrune yet."),
            PromptIcon::Information);
    }
}

} // namespace

void OpenTool(ToolWindow tool, ToolWindows& windows, UserPrompts& prompts) {
    TellIfMissing(windows.Show(tool), prompts);
}

void OpenSitePage(const QString& page, ToolWindows& windows, UserPrompts& prompts) {
    TellIfMissing(windows.OpenPage(page), prompts);
}

} // namespace kestrune
