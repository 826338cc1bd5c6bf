// The cue points of the file that the tag editor has open.
#pragma once

#include "editors/cue_editor.h"
#include "editors/editor_dialog.h"

namespace kestrune {

class BoundedSpinBox;

// Object "frmCueList". Make it, Load() it, exec() it once, and let it go. Enter in a text box writes the cue
// that is shown, in the spinner it goes to the cue of that number. Window thread.
class FrmCueList : public EditorDialog {
    Q_OBJECT
public:
    // The object must outlive it and have read a file.
    FrmCueList(KSTAudioInformation2& information, QWidget* owner);

    // Shows the first cue, in the middle of the screen.
    void Load();
    // A cue was added, written or removed.
    bool HasChanged() const { return editor_.HasChanged(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeControls();
    void ShowCue();
    CueTexts Typed() const;

    CueEditor editor_;
    BoundedSpinBox* udCueIndex_ = nullptr;
    QLineEdit* tPosition_ = nullptr;
    QLineEdit* tLength_ = nullptr;
    QLineEdit* tLabel_ = nullptr;
    QLineEdit* tNote_ = nullptr;
    QLineEdit* tText_ = nullptr;
    BodyKey* update_ = nullptr;
};

} // namespace kestrune
