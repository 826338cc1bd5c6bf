#include "program/tool_window_dialogs.h"

#include "help/help_window.h"
#include "skin/program_icon.h"

#include <QApplication>

namespace kestrune {

ToolWindowDialogs::ToolWindowDialogs() = default;
ToolWindowDialogs::~ToolWindowDialogs() = default;

void ToolWindowDialogs::SetMainWindow(const ToolParts& parts, QWidget* owner) {
    parts_.emplace(parts);
    owner_ = owner;
}

bool ToolWindowDialogs::Show(ToolWindow tool) {
    const std::unique_ptr<OpenedTool> opened = parts_ ? MakeTool(tool, *parts_, owner_) : nullptr;
    if (!opened) {
        return false;
    }
    QDialog& window = opened->Window();
    window.setWindowIcon(owner_ != nullptr ? owner_->windowIcon() : ProgramIcon());
    window.setWindowModality(Qt::ApplicationModal);
    opened->Load();
    window.exec();
    if (owner_ != nullptr) {
        // A tool may have changed rows.
        owner_->update();
    }
    return true;
}

bool ToolWindowDialogs::OpenPage(const QString& /*page*/) {
    return false; // the site has no address yet
}

void ToolWindowDialogs::ShowHelp(const QString& topic) {
    if (!help_) {
        help_ = std::make_unique<HelpWindow>();
        help_->setWindowIcon(ProgramIcon());
    }
    help_->ShowTopic(topic);
}

bool ToolWindowDialogs::IsUserKeptAway() const {
    return QApplication::activeModalWidget() != nullptr;
}

} // namespace kestrune
