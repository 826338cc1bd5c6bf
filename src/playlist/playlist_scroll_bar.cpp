#include "playlist/playlist_scroll_bar.h"

#include "playlist/scroll_bar_pieces.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <cmath>

namespace kestrune {

PlaylistScrollBar::PlaylistScrollBar(PlaylistView& view, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent),
      view_(view),
      track_(new TrackPiece(this)),
      thumb_(new ThumbPiece(this)),
      upArrow_(nullptr),
      downArrow_(nullptr) {
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(tr("Scroll the playlist"));
    track_->setObjectName(QStringLiteral("PictureScroll"));
    thumb_->setObjectName(QStringLiteral("PictureListBut"));
    const auto makeArrow = [this](ScrollArrow arrow, const QString& name) {
        auto* piece = new ArrowPiece(arrow, this);
        piece->setObjectName(QStringLiteral("ImageListUpDn(%1)").arg(static_cast<int>(arrow)));
        piece->setAccessibleName(name);
        connect(piece, &QToolButton::clicked, this, [this, arrow] { ClickArrow(arrow); });
        return piece;
    };
    upArrow_ = makeArrow(ScrollArrow::Up, tr("Scroll up"));
    downArrow_ = makeArrow(ScrollArrow::Down, tr("Scroll down"));
    connect(&view_, &PlaylistView::Scrolled, this, &PlaylistScrollBar::Follow);
    connect(this, &QScrollBar::valueChanged, &view_, [this](int value) { view_.SetFirstVisible(value + 1); });
    resize(barWidth, thumbHeight + 2 * arrowHeight);
    Follow();
}

ThumbGeometry PlaylistScrollBar::Geometry() const {
    return {static_cast<double>(arrowHeight), static_cast<double>(height() - arrowHeight),
            static_cast<double>(thumbHeight)};
}

void PlaylistScrollBar::Follow() {
    const QScrollBar* source = view_.verticalScrollBar();
    {
        // The view stands already where the value says.
        const QSignalBlocker blocker(this);
        setRange(source->minimum(), source->maximum());
        setPageStep(source->pageStep());
        setValue(source->value());
    }
    if (!dragging_) {
        PlaceThumb(MoveScrollBar(view_.FirstVisible(), view_.Rows().Count(), Geometry()));
    }
}

void PlaylistScrollBar::PlaceThumb(double top) {
    const bool canMove = maximum() > minimum();
    thumb_->setGeometry(0, static_cast<int>(std::lround(top)), width(), thumbHeight);
    static_cast<ThumbPiece*>(thumb_)->SetLook(dragging_, hasFocus(), canMove);
    upArrow_->setEnabled(canMove);
    downArrow_->setEnabled(canMove);
}

void PlaylistScrollBar::resizeEvent(QResizeEvent* event) {
    QScrollBar::resizeEvent(event);
    track_->setGeometry(0, arrowHeight, width(), height() - 2 * arrowHeight);
    upArrow_->setGeometry(0, 0, width(), arrowHeight);
    downArrow_->setGeometry(0, height() - arrowHeight, width(), arrowHeight);
    Follow();
}

// The pieces paint themselves, and between them the window shows through.
void PlaylistScrollBar::paintEvent(QPaintEvent* /*event*/) {}

void PlaylistScrollBar::mousePressEvent(QMouseEvent* event) {
    const double y = event->position().y();
    const ThumbGeometry geometry = Geometry();
    if (event->button() != Qt::LeftButton || maximum() == minimum() || y < geometry.upperArrowBottom ||
        y >= geometry.lowerArrowTop) {
        event->ignore();
        return;
    }
    dragging_ = true;
    grabbedAt_ = y - thumb_->y();
    if (thumb_->geometry().contains(event->position().toPoint())) {
        PlaceThumb(thumb_->y());
        return;
    }
    grabbedAt_ = thumbHeight / 2.0;
    DragTo(ThumbTopForClick(y, geometry));
}

void PlaylistScrollBar::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_ && event->buttons().testFlag(Qt::LeftButton)) {
        DragTo(event->position().y() - grabbedAt_);
    }
}

void PlaylistScrollBar::mouseReleaseEvent(QMouseEvent* event) {
    if (dragging_ && event->button() == Qt::LeftButton) {
        dragging_ = false;
        Follow();
    }
}

// The thumb stays under the mouse; it takes the place of its row when it is let go.
void PlaylistScrollBar::DragTo(double thumbTop) {
    const double top = ThumbInTrack(thumbTop, Geometry());
    PlaceThumb(top);
    view_.SetFirstVisible(FirstRowForThumb(top, view_.Rows().Count(), Geometry()));
}

void PlaylistScrollBar::ClickArrow(ScrollArrow arrow) {
    view_.EnsureVisible(RowForArrow(arrow, view_.FirstVisible(), view_.Rows().Count()));
}

// The menu of an ordinary scroll bar would come in a look of its own.
void PlaylistScrollBar::contextMenuEvent(QContextMenuEvent* event) {
    event->ignore();
}

void PlaylistScrollBar::focusInEvent(QFocusEvent* event) {
    QScrollBar::focusInEvent(event);
    Follow();
}

void PlaylistScrollBar::focusOutEvent(QFocusEvent* event) {
    QScrollBar::focusOutEvent(event);
    Follow();
}

} // namespace kestrune
