// A path on glass that turns into a text box when it is clicked.
#pragma once

#include "skin/elided_label.h"

namespace kestrune {

// Takes the focus by Tab; Space, Enter and F2 are a click. Window thread.
class PathLabel : public ElidedLabel {
    Q_OBJECT
public:
    explicit PathLabel(QWidget* parent = nullptr);

signals:
    void Clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace kestrune
