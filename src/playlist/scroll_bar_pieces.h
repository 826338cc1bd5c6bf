// The pieces of the list's scroll bar. They only paint themselves; the mouse goes on to the bar.
#pragma once

#include "playlist/scroll_thumb.h"

#include <QToolButton>
#include <QWidget>

namespace kestrune {

class TrackPiece : public QWidget {
    Q_OBJECT
public:
    explicit TrackPiece(QWidget* parent) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Lit while the mouse is over it, brightest while it is held, dim while there is nothing to scroll.
class ThumbPiece : public QWidget {
    Q_OBJECT
public:
    explicit ThumbPiece(QWidget* parent);
    void SetLook(bool isHeld, bool isFocused, bool canMove);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isHeld_ = false;
    bool isFocused_ = false;
    bool canMove_ = false;
};

class ArrowPiece : public QToolButton {
    Q_OBJECT
public:
    ArrowPiece(ScrollArrow arrow, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ScrollArrow arrow_;
};

} // namespace kestrune
