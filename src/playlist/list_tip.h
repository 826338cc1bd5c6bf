// The tool tip of the list: a hint for the first ten seconds that the mouse spends on it, then the format of
// the row that was clicked.
#pragma once

#include "components/clock.h"

#include <QCoreApplication>
#include <QString>
#include <optional>

namespace kestrune {

// Window thread. The clock must outlive the object.
class ListTip {
    Q_DECLARE_TR_FUNCTIONS(kestrune::ListTip)
public:
    explicit ListTip(Clock& clock) : clock_(clock) {}

    // The first move shows the hint; the first one after ten seconds takes it away, if no row took its place.
    void MouseMoved();
    // A row's format string becomes the tip.
    void RowClicked(const QString& formats);

    const QString& Text() const { return text_; }
    bool IsHint() const { return isHint_; }

private:
    Clock& clock_;
    QString text_;
    bool isHint_ = false;
    std::optional<qint64> firstMoveMs_;
};

} // namespace kestrune
