// A label whose text is cut where it does not fit.
#pragma once

#include <QLabel>

namespace kestrune {

// One line. A text that is too long is cut in its middle, or at its end, and is the tool tip as well. Window
// thread.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(const QString& text = {}, QWidget* parent = nullptr);

    void SetElideMode(Qt::TextElideMode mode) { mode_ = mode; }
    // What stands there, muted, while there is no text.
    void SetHint(const QString& hint) { hint_ = hint; }
    QSize minimumSizeHint() const override { return {}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString Shown() const;

    Qt::TextElideMode mode_ = Qt::ElideRight;
    QString hint_;
};

} // namespace kestrune
