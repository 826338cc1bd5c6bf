// What makes a window one of the skin: no frame, a body with rounded corners, a title that drags it, the
// hand.
#pragma once

#include "skin/hover_keeper.h"
#include "skin/window_drag.h"

#include <QList>
#include <QObject>
#include <QPixmap>
#include <QPointer>
#include <QSize>

class QPainter;
class QWidget;

namespace kestrune {

class SkinPicture;

// Made by the window it belongs to, in the window's constructor, and owned by it. The window's own
// paintEvent, if it has one, paints over the body. Corners are transparent where a compositor runs and cut
// off by a mask where none does; this is looked at each time the window is shown. Window thread.
class WindowChrome : public QObject {
    Q_OBJECT
public:
    // `ellipse`: the whole size of the ellipse of the corners, see corner_sizes.h.
    WindowChrome(QWidget* window, const QSize& ellipse);

    // The window's body: a picture, which must outlive the window, or none for a plain graphite body.
    void SetBackground(const SkinPicture* background);
    void SetCorners(const QSize& ellipse);

    // The left button on this widget drags the window. It shows the hand too.
    void AddTitle(QWidget* title);
    // A clickable part: shows the hand, at the scale of the screen that the window is on.
    void AddHand(QWidget* part);
    // To all buttons that the window holds by now.
    void AddHandToButtons();

    // The hover looks of the window's buttons; it watches the window already.
    HoverKeeper& Hover() { return hover_; }

    // In the middle of its screen. The size of a window with a layout is made final first.
    void Centre();
    // In the middle of another window, and on its screen as far as there is room.
    void CentreOver(const QWidget& owner);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void CentreOn(const QRect& ground);
    void ApplyCorners();
    void ApplyHands();
    void PaintBody();
    QPixmap Body() const;
    bool TitleEvent(QWidget* title, QEvent* event);

    QWidget* window_;
    QSize ellipse_;
    const SkinPicture* background_ = nullptr;
    HoverKeeper hover_;
    WindowDrag drag_;
    QList<QPointer<QWidget>> titles_;
    QList<QPointer<QWidget>> hands_;
    bool transparent_ = true; // the corners are; otherwise a mask cuts them
    qreal handRatio_ = 0;
    QPixmap body_;
};

} // namespace kestrune
