// The list's own scroll bar: a track with a thumb between two arrows.
#pragma once

#include "playlist/playlist_view.h"
#include "playlist/scroll_thumb.h"

#include <QScrollBar>

namespace kestrune {

// Follows the view and scrolls it. Its children are PictureScroll (track), PictureListBut (thumb) and
// ImageListUpDn(0) and (1) (arrows). The caller gives place and height. Its value is the view's first visible
// row less one. The view must outlive it. Window thread.
class PlaylistScrollBar : public QScrollBar {
    Q_OBJECT
public:
    static constexpr int barWidth = 11;
    static constexpr int arrowHeight = 11;
    static constexpr int thumbHeight = 22;

    explicit PlaylistScrollBar(PlaylistView& view, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {barWidth, thumbHeight + 2 * arrowHeight}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    ThumbGeometry Geometry() const;
    void Follow();
    void PlaceThumb(double top);
    void DragTo(double thumbTop);
    void ClickArrow(ScrollArrow arrow);

    PlaylistView& view_;
    QWidget* track_;
    QWidget* thumb_;
    QWidget* upArrow_;
    QWidget* downArrow_;
    bool dragging_ = false;
    double grabbedAt_ = 0; // below the thumb's top
};

} // namespace kestrune
