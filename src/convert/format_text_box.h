// The description of a format, on the glass that the panel has for it.
#pragma once

#include <QLineEdit>

namespace kestrune {

// Read-only; it can be selected, copied, and reached by Tab. A text that does not fit is the tool tip, too.
// Window thread.
class FormatTextBox : public QLineEdit {
    Q_OBJECT
public:
    explicit FormatTextBox(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace kestrune
