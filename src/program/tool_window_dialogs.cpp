#include "program/tool_window_dialogs.h"

#include "help/help_window.h"
#include "program/frm_splash.h"
#include "skin/program_icon.h"

namespace kestrune {

ToolWindowDialogs::ToolWindowDialogs(const ProgramState& state) : state_(state) {}

ToolWindowDialogs::~ToolWindowDialogs() = default;

bool ToolWindowDialogs::Show(ToolWindow tool) {
    const auto showing = showings_.find(tool);
    if (showing != showings_.end()) {
        showing->second(owner_);
        return true;
    }
    if (tool != ToolWindow::frmSplash) {
        return false;
    }
    if (!frmSplash_) {
        frmSplash_ = std::make_unique<FrmSplash>(state_);
    }
    frmSplash_->setWindowIcon(owner_ != nullptr ? owner_->windowIcon() : ProgramIcon());
    frmSplash_->setWindowModality(Qt::ApplicationModal);
    frmSplash_->exec();
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

} // namespace kestrune
