// What the option dialogs of the encoders have in common: title, keys, and what they do.
#pragma once

#include "skin/dialog_buttons.h"
#include "skin/titled_dialog.h"

namespace kestrune {

// A dialog with LabelTitle and ImageQuit at the top and ImageCMD(0..2) at the bottom. OK applies and closes,
// unless applying was refused; Apply stays open; Cancel closes. Enter is OK, Escape and ImageQuit are Cancel.
// Its size is fixed. Shown by exec(), once. Window thread.
class EncoderOptionsDialog : public TitledDialog {
    Q_OBJECT
public:
    EncoderOptionsDialog(const QString& name, const QString& title, QWidget* parent);

protected:
    // Adds title and keys. Called once all controls are in the body, since Tab goes by the order of making.
    void Finish();
    // False if nothing was applied and the dialog has to stay open.
    virtual bool ApplyControls() = 0;

    void keyPressEvent(QKeyEvent* event) override;

private:
    void Press(int button);

    DialogButtons* buttons_ = nullptr;
};

} // namespace kestrune
