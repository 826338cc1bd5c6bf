#include "program/open_tools.h"

#include "convert/converterfrm_dialog.h"
#include "editors/frm_info.h"
#include "program/converter_tool.h"
#include "program/frm_splash.h"

namespace kestrune {

namespace {

class OpenedConverter : public OpenedTool {
public:
    OpenedConverter(const ToolParts& parts, QWidget* owner)
        : tool_(parts.components, parts.state, parts.rows),
          window_({tool_.rules, *tool_.outputFile, parts.components.Prompts()}, owner) {}

    void Load() override { window_.Load(); }
    QDialog& Window() override { return window_; }

private:
    ConverterTool tool_;
    ConverterfrmDialog window_;
};

class OpenedTagEditor : public OpenedTool {
public:
    OpenedTagEditor(const ToolParts& parts, QWidget* owner)
        : information_(parts.components.MakeAudioInformation()),
          window_({parts.state, parts.rows, *information_, parts.components.Prompts()}, owner) {}

    void Load() override { window_.Load(); }
    QDialog& Window() override { return window_; }

private:
    std::unique_ptr<KSTAudioInformation2> information_;
    FrmInfo window_;
};

class OpenedSplash : public OpenedTool {
public:
    explicit OpenedSplash(const ToolParts& parts) : window_(parts.state) {}

    void Load() override {}
    QDialog& Window() override { return window_; }

private:
    FrmSplash window_;
};

} // namespace

std::unique_ptr<OpenedTool> MakeTool(ToolWindow tool, const ToolParts& parts, QWidget* owner) {
    switch (tool) {
    case ToolWindow::ConverterfrmDialog:
        return std::make_unique<OpenedConverter>(parts, owner);
    case ToolWindow::frmInfo:
        return std::make_unique<OpenedTagEditor>(parts, owner);
    case ToolWindow::frmSplash:
        return std::make_unique<OpenedSplash>(parts);
    case ToolWindow::frmRecord:
    case ToolWindow::RipfrmMain:
    case ToolWindow::CDWriterMain:
    case ToolWindow::frmMp3site:
    case ToolWindow::xFrmHomePage:
    case ToolWindow::xDialog7:
        break;
    }
    return nullptr;
}

} // namespace kestrune
