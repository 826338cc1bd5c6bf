// A small plate that tells a value beside what is being moved.
#pragma once

#include <QWidget>

namespace kestrune {

// Lets the mouse through. Hidden until it is shown at a place.
class ValueBubbleWidget : public QWidget {
    Q_OBJECT
public:
    explicit ValueBubbleWidget(QWidget* parent);
    // Beside a thing of the parent whose middle is `at`, `gap` pixels from it; on the right, or on the left
    // where there is no room. It never leaves the parent.
    void ShowBeside(const QPointF& at, int gap, const QString& text);
    QString Text() const { return text_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    bool isOnTheLeft_ = false;
};

} // namespace kestrune
