// The record button as long as there is no recorder: its window would come first.
#pragma once

#include "playback/recording.h"
#include "tool_window/tool_windows.h"

namespace kestrune {

// What is passed in must outlive it.
class RecordingTool : public Recording {
public:
    RecordingTool(ToolWindows& windows, UserPrompts& prompts) : windows_(windows), prompts_(prompts) {}

    void StartRecording() override { OpenTool(ToolWindow::frmRecord, windows_, prompts_); }
    bool StopRecording() override { return false; }

private:
    ToolWindows& windows_;
    UserPrompts& prompts_;
};

} // namespace kestrune
