// How each tool is made for the time that it is open.
#pragma once

#include "app/program_state.h"
#include "playlist/playlist_rows.h"
#include "program/components.h"
#include "tool_window/tool_windows.h"

#include <QDialog>
#include <memory>

namespace kestrune {

// A window with the rules and the components that live as long as it is open.
class OpenedTool {
public:
    OpenedTool() = default;
    OpenedTool(const OpenedTool&) = delete;
    OpenedTool& operator=(const OpenedTool&) = delete;
    virtual ~OpenedTool() = default;

    // Fills the window; called once, before it is shown.
    virtual void Load() = 0;
    virtual QDialog& Window() = 0;
};

// All of it must outlive the tools.
struct ToolParts {
    ProgramState& state;
    PlaylistRows& rows;
    Components& components;
};

// Null for a tool that there is not yet. `owner` may be null. Window thread.
std::unique_ptr<OpenedTool> MakeTool(ToolWindow tool, const ToolParts& parts, QWidget* owner);

} // namespace kestrune
