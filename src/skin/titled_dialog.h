// A dialog of a tool: a title bar, its own controls, a row of keys.
#pragma once

#include "skin/skinned_window.h"

#include <QVBoxLayout>

namespace kestrune {

class DialogTitle;

// With LabelTitle and ImageQuit at the top. Escape and ImageQuit close it. Its size is fixed by what is in
// it. Window thread.
class TitledDialog : public SkinnedDialog {
    Q_OBJECT
public:
    TitledDialog(const QString& name, const QString& title, const QSize& corners, QWidget* owner);

    void setVisible(bool visible) override;

protected:
    // Where the dialog's own controls go, between title and keys.
    QVBoxLayout& Body() { return *body_; }
    // Adds the title, and the keys at the bottom. Called once all controls are made, since Tab goes by the
    // order of making.
    void Finish(QLayout* keys);

    void resizeEvent(QResizeEvent* event) override;

private:
    DialogTitle* title_ = nullptr;
    QVBoxLayout* body_;
};

} // namespace kestrune
