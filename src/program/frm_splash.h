// The about window.
#pragma once

#include "app/program_state.h"
#include "skin/skinned_window.h"

#include <QLabel>
#include <QPixmap>

namespace kestrune {

// Object "frmSplash" with the labels LabelVer and LabelBuild. Shown by exec(); a click anywhere, Escape,
// Enter or the space bar closes it. Each showing centres it on the screen and writes version and build anew.
class FrmSplash : public SkinnedDialog {
    Q_OBJECT
public:
    static constexpr QSize windowSize{400, 250};

    // The state must outlive the window.
    explicit FrmSplash(const ProgramState& state, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QLabel* MakeLabel(const QString& name, const QRect& place, int pixels, const QColor& ink);

    const ProgramState& state_;
    QLabel* labelVer_;
    QLabel* labelBuild_;
    QPixmap panel_; // what lies on the body, without the labels, for the scale of the screen
};

} // namespace kestrune
