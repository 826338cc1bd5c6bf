#include "tool_window/tool_windows.h"

#include <QObject>

namespace kestrune {

void OpenTool(ToolWindow tool, ToolWindows& windows, UserPrompts& prompts) {
    if (!windows.Show(tool)) {
        prompts.Message(QObject::tr("This tool is not part of Kestrune yet."), PromptIcon::Information);
    }
}

} // namespace kestrune
