#include "main_window/menu_routing.h"

#include <optional>

namespace kestrune {

namespace {

constexpr int altKey = 18;
constexpr int firstLetter = 66; // B
constexpr int lastLetter = 83;  // S
constexpr int labelRip = 2;
constexpr int labelSites = 5;

std::optional<MainMenu> MenuOfLabel(int label) {
    switch (label) {
    case 0:
    case 1:
    case 3:
    case 4:
    case 6:
    case 7:
        return static_cast<MainMenu>(label);
    default:
        return std::nullopt;
    }
}

int LabelOfLetter(int code) {
    const QString letters = QStringLiteral("FPRBCSHO");
    return static_cast<int>(letters.indexOf(QChar(code)));
}

bool IsHandOver(int index) {
    return index == 0 || (index >= 2 && index <= 4);
}

} // namespace

MenuRouting::MenuRouting(ProgramState& state, PlayButtons& buttons, const PlaylistRows& rows,
                         ToolWindows& windows, UserPrompts& prompts, QObject* parent)
    : QObject(parent), state_(state), buttons_(buttons), rows_(rows), windows_(windows), prompts_(prompts) {}

void MenuRouting::LabelMenu_Click(int index) {
    if (index == labelRip) {
        Rip();
    } else if (index == labelSites) {
        Open(ToolWindow::frmMp3site);
    } else if (const auto menu = MenuOfLabel(index)) {
        emit PopUpAtCursor(*menu);
    }
}

bool MenuRouting::KeyDown(int code) {
    if (code == altKey) {
        altDown_ = true;
        return true;
    }
    if (!altDown_ || code < firstLetter || code > lastLetter) {
        return false;
    }
    const int label = LabelOfLetter(code);
    if (const auto menu = MenuOfLabel(label)) {
        emit PopUpAtLabel(*menu);
        return true;
    }
    if (label == labelRip || label == labelSites) {
        LabelMenu_Click(label);
        return true;
    }
    return false;
}

void MenuRouting::KeyUp() {
    altDown_ = false;
}

void MenuRouting::mBurn_Click(int index) {
    if (!IsHandOver(index)) {
        return;
    }
    state_.BurnMode = static_cast<quint8>(index);
    buttons_.Stop();
    Open(ToolWindow::CDWriterMain);
}

void MenuRouting::mConvert_Click(int index) {
    if (!IsHandOver(index)) {
        return;
    }
    state_.ConvertMode = static_cast<quint8>(index);
    buttons_.Stop();
    Open(ToolWindow::ConverterfrmDialog);
}

void MenuRouting::mnpop_Click(int index) {
    constexpr int editTags = 7;
    constexpr int burnOffset = 7;
    constexpr int convertOffset = 11;
    if (index == editTags) {
        EditTags();
    } else if (index >= 9 && index <= 11) {
        mBurn_Click(index - burnOffset);
    } else if (index >= 13 && index <= 15) {
        mConvert_Click(index - convertOffset);
    }
}

void MenuRouting::mHelp_Click(int index) {
    switch (index) {
    case 1:
        RunHtmlHelp(QStringLiteral("overview.htm"));
        break;
    case 3:
        Open(ToolWindow::xFrmHomePage);
        break;
    case 9:
        OpenSitePage(QStringLiteral("feedback.htm"), windows_, prompts_);
        break;
    case 11:
        Open(ToolWindow::xDialog7);
        break;
    case 13:
        Open(ToolWindow::frmSplash);
        break;
    default:
        break;
    }
}

void MenuRouting::ImageToolBar_Click(int index) {
    switch (index) {
    case 1:
        Rip();
        break;
    case 2:
        mBurn_Click(0);
        break;
    case 3:
        // The mode of the converter stays as the menus left it.
        buttons_.Stop();
        Open(ToolWindow::ConverterfrmDialog);
        break;
    case 4:
        Open(ToolWindow::frmMp3site);
        break;
    default:
        break;
    }
}

void MenuRouting::EditTags() {
    if (rows_.Count() == 0) {
        return;
    }
    if (state_.CurIndex == 0) {
        state_.CurIndex = 1;
    }
    Open(ToolWindow::frmInfo);
}

void MenuRouting::RunHtmlHelp(const QString& topic) {
    state_.HelpOpened = true;
    windows_.ShowHelp(topic);
}

void MenuRouting::Rip() {
    buttons_.Stop();
    Open(ToolWindow::RipfrmMain);
}

void MenuRouting::Open(ToolWindow tool) {
    OpenTool(tool, windows_, prompts_);
}

} // namespace kestrune
