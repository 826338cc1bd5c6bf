// The converter window: shows what its rules say and forwards what the user does.
#pragma once

#include "components/audio_format.h"
#include "components/user_prompts.h"
#include "convert/converter_controls.h"
#include "convert/converter_pictures.h"
#include "convert/converter_rules.h"
#include "skin/skinned_window.h"

namespace kestrune {

struct ConverterWindowParts {
    ConverterRules& rules;
    AudioFormat& outputFile; // the one that the rules write with; the encoder dialogs set it, too
    UserPrompts& prompts;
};

// Object "ConverterfrmDialog". One for each opening: construct, Load, exec, destroy; all parts must outlive
// it. Window thread.
//
// While a run goes on the window stays open, however it is asked to close: ImageQuit is disabled, Escape and
// the window manager's close are passed over. After a Stop, when ImageQuit is enabled though the run goes on,
// closing ends the run at its next block; exec returns when the run is over.
class ConverterfrmDialog : public SkinnedDialog {
    Q_OBJECT
public:
    explicit ConverterfrmDialog(const ConverterWindowParts& parts, QWidget* parent = nullptr);

    // Loads the rules and puts the window in the middle of the screen. Messages about files that are gone
    // come before the window is seen.
    void Load();

    void reject() override;

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ConnectPaths();
    void ConnectPathTexts();
    void ConnectInput();
    void ConnectOutput();
    void ConnectRun();
    void ConnectEvents();
    void ConnectPanels();

    void ShowPaths(int focused);
    // Gives the keyboard to what stays in sight when the control that had it goes.
    void RestKeyboard();
    void ShowInputLook();
    void ResetLabelColours();
    void ShowRun();
    void ShowProgress(float percent);
    void ShowProgressBar(int value, int maximum);
    void ShowHeight();
    void ShowPictureSet(bool shown);
    void OpenMp3();
    void OpenOgg();

    ConverterWindowParts parts_;
    ConverterPictures pictures_;
    ConverterControls controls_;
    bool closing_ = false; // as soon as the run has ended
};

} // namespace kestrune
