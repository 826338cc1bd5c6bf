#include "playlist/playlist_view.h"

#include "playlist/list_painter.h"
#include "playlist/playlist_accessible.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QUrl>
#include <algorithm>

namespace kestrune {

namespace {

constexpr int fontPixels = 11;
constexpr int sidewaysStep = 24; // pixels
constexpr int wheelNotch = 120;

QStringList LocalFiles(const QMimeData* data) {
    QStringList files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
        }
    }
    return files;
}

} // namespace

PlaylistView::PlaylistView(PlaylistRows& rows, QWidget* parent) : QAbstractScrollArea(parent), rows_(rows) {
    InstallPlaylistAccessible();
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    QFont listFont = font();
    listFont.setPixelSize(fontPixels);
    setFont(listFont);
    verticalScrollBar()->setSingleStep(1);
    horizontalScrollBar()->setSingleStep(sidewaysStep);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        viewport()->update();
        emit Scrolled();
    });
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
    connect(&rows_, &PlaylistRows::rowsInserted, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::rowsRemoved, this,
            [this](const QModelIndex& /*parent*/, int first, int last) { RowsRemoved(first + 1, last + 1); });
    connect(&rows_, &PlaylistRows::rowsMoved, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::modelReset, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::layoutChanged, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::dataChanged, viewport(), qOverload<>(&QWidget::update));
}

void PlaylistView::SetColumns(const ColumnWidths& widths) {
    columns_ = widths;
    UpdateRange();
    viewport()->update();
}

int PlaylistView::VisibleRows() const {
    return std::max(1, viewport()->height() / rowHeight);
}

int PlaylistView::FirstVisible() const {
    return verticalScrollBar()->value() + 1;
}

void PlaylistView::SetFirstVisible(int row) {
    verticalScrollBar()->setValue(row - 1);
}

void PlaylistView::EnsureVisible(int row) {
    if (row < 1 || row > rows_.Count()) {
        return;
    }
    if (row < FirstVisible()) {
        SetFirstVisible(row);
    } else if (row >= FirstVisible() + VisibleRows()) {
        SetFirstVisible(row - VisibleRows() + 1);
    }
}

void PlaylistView::RowsChanged() {
    UpdateRange();
    focusRow_ = std::min(focusRow_, rows_.Count());
    anchorRow_ = std::min(anchorRow_, rows_.Count());
    viewport()->update();
    emit Scrolled();
}

void PlaylistView::RowsRemoved(int first, int last) {
    for (int* row : {&focusRow_, &anchorRow_}) {
        if (*row > last) {
            *row -= last - first + 1;
        } else if (*row > first) {
            *row = first;
        }
    }
    RowsChanged();
}

void PlaylistView::UpdateRange() {
    verticalScrollBar()->setRange(0, std::max(0, rows_.Count() - VisibleRows()));
    verticalScrollBar()->setPageStep(VisibleRows());
    const int width = viewport()->width();
    horizontalScrollBar()->setRange(0, std::max(0, ContentWidth() - width));
    horizontalScrollBar()->setPageStep(width);
}

int PlaylistView::ContentWidth() const {
    int width = 0;
    for (const int column : columns_) {
        width += column;
    }
    return width;
}

void PlaylistView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    UpdateRange();
}

int PlaylistView::RowAt(const QPoint& position) const {
    if (!viewport()->rect().contains(position)) {
        return 0;
    }
    const int row = FirstVisible() + position.y() / rowHeight;
    return row <= rows_.Count() ? row : 0;
}

QRect PlaylistView::RowRect(int row) const {
    if (row < 1 || row > rows_.Count()) {
        return {};
    }
    const QRect line(0, (row - FirstVisible()) * rowHeight, viewport()->width(), rowHeight);
    return line.intersects(viewport()->rect()) ? line : QRect();
}

void PlaylistView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    ListPainter list(painter, font());
    const QRect area = viewport()->rect();
    list.PaintGlass(area);
    const int hovered = mouse_ ? RowAt(*mouse_) : 0;
    const int offset = horizontalScrollBar()->value();
    const int last = std::min(rows_.Count(), FirstVisible() + VisibleRows());
    for (int row = FirstVisible(); row <= last; ++row) {
        list.PaintRow(rows_, row, RowRect(row), columns_, offset,
                      {row == hovered, row == focusRow_ && hasFocus()});
    }
    if (rows_.Count() == 0) {
        list.PaintHint(area, tr("Drop audio files here, or press Insert"));
    }
    list.PaintRim(area);
    list.PaintHorizontalPart(area, {offset, ContentWidth()});
    if (dropping_ || (hasFocus() && focusByKey_)) {
        list.PaintFrame(area, dropping_);
    }
}

void PlaylistView::MoveFocus(int row, Qt::KeyboardModifiers modifiers) {
    if (row < 1 || row > rows_.Count()) {
        return;
    }
    if (modifiers.testFlag(Qt::ShiftModifier) && anchorRow_ > 0) {
        rows_.SelectOnly(std::min(anchorRow_, row), std::max(anchorRow_, row));
    } else if (modifiers.testFlag(Qt::ControlModifier)) {
        rows_.SetSelected(row, !rows_.IsSelected(row));
        anchorRow_ = row;
    } else {
        rows_.SelectOnly(row, row);
        anchorRow_ = row;
    }
    SetFocusRow(row);
    TellClick(row);
}

void PlaylistView::SetFocusRow(int row) {
    focusRow_ = row;
    EnsureVisible(row);
    viewport()->update();
    if (QAccessible::isActive()) {
        QAccessibleEvent focus(this, QAccessible::Focus);
        focus.setChild(row - 1);
        QAccessible::updateAccessibility(&focus);
        QAccessibleEvent selection(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&selection);
    }
}

void PlaylistView::TellClick(int row) {
    if (tip_ != nullptr && row > 0) {
        tip_->RowClicked(rows_.Field(row, SubFormats));
        setToolTip(tip_->Text());
    }
    emit RowClicked(row);
}

void PlaylistView::ChooseRow(int row) {
    MoveFocus(row, Qt::NoModifier);
}

void PlaylistView::FollowSwap(int a, int b) {
    for (int* row : {&focusRow_, &anchorRow_}) {
        if (*row == a || *row == b) {
            *row = *row == a ? b : a;
        }
    }
}

void PlaylistView::mousePressEvent(QMouseEvent* event) {
    focusByKey_ = false;
    viewport()->update();
    const int row = RowAt(event->position().toPoint());
    if (row == 0) {
        if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
            rows_.SelectOnly(0, 0);
            TellClick(0);
        }
        return;
    }
    // The right button takes a row that is not selected yet, and leaves a selection that it was pressed on.
    if (event->button() == Qt::LeftButton || (event->button() == Qt::RightButton && !rows_.IsSelected(row))) {
        MoveFocus(row, event->modifiers());
    }
}

void PlaylistView::mouseMoveEvent(QMouseEvent* event) {
    const int before = mouse_ ? RowAt(*mouse_) : 0;
    mouse_ = event->position().toPoint();
    if (RowAt(*mouse_) != before) {
        viewport()->update();
    }
    if (tip_ != nullptr) {
        tip_->MouseMoved();
        setToolTip(tip_->Text());
    }
    emit MouseMoved();
}

void PlaylistView::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = RowAt(event->position().toPoint());
    if (row > 0 && event->button() == Qt::LeftButton) {
        emit RowActivated(row);
    }
}

void PlaylistView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ShiftModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    // Some systems turn the wheel sideways themselves while Shift is held.
    const QPoint turned = event->angleDelta();
    const int delta = turned.y() != 0 ? turned.y() : turned.x();
    QScrollBar* bar = horizontalScrollBar();
    bar->setValue(bar->value() - delta * 2 * sidewaysStep / wheelNotch);
    event->accept();
}

bool PlaylistView::ScrollSideways(int steps) {
    QScrollBar* bar = horizontalScrollBar();
    if (bar->maximum() == 0) {
        return false;
    }
    bar->setValue(bar->value() + steps * sidewaysStep);
    return true;
}

// The keys that move the keyboard's mark. With Ctrl it moves alone and Ctrl+Space selects.
bool PlaylistView::MoveByKey(const QKeyEvent* event) {
    const int page = VisibleRows();
    int row = 0;
    switch (event->key()) {
    case Qt::Key_Up:
        row = focusRow_ - 1;
        break;
    case Qt::Key_Down:
        row = focusRow_ + 1;
        break;
    case Qt::Key_PageUp:
        row = focusRow_ - page;
        break;
    case Qt::Key_PageDown:
        row = focusRow_ + page;
        break;
    case Qt::Key_Home:
        row = 1;
        break;
    case Qt::Key_End:
        row = rows_.Count();
        break;
    default:
        return false;
    }
    row = std::min(std::max(row, 1), rows_.Count());
    if (row > 0 && event->modifiers().testFlag(Qt::ControlModifier)) {
        SetFocusRow(row);
    } else {
        MoveFocus(row, event->modifiers() & Qt::ShiftModifier);
    }
    return true;
}

void PlaylistView::keyPressEvent(QKeyEvent* event) {
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    if (event->modifiers().testFlag(Qt::AltModifier)) {
        event->ignore();
        return;
    }
    if (MoveByKey(event)) {
        return;
    }
    bool isUsed = true;
    switch (event->key()) {
    case Qt::Key_Left:
        isUsed = ScrollSideways(-1);
        break;
    case Qt::Key_Right:
        isUsed = ScrollSideways(1);
        break;
    case Qt::Key_A:
        isUsed = control;
        if (control) {
            rows_.SelectOnly(1, rows_.Count());
            emit RowClicked(focusRow_);
        }
        break;
    case Qt::Key_Space:
        isUsed = control;
        if (control) {
            MoveFocus(focusRow_, Qt::ControlModifier);
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A list that was just filled has no marked row yet.
        if (rows_.Count() > 0) {
            emit RowActivated(std::max(focusRow_, 1));
        }
        break;
    case Qt::Key_Insert:
        emit AddRequested();
        break;
    case Qt::Key_Delete:
        break; // the window deletes when it is released
    default:
        isUsed = false;
        break;
    }
    event->setAccepted(isUsed);
}

void PlaylistView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    // A menu or another window gives the focus back as it took it.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        focusByKey_ = true;
    }
    viewport()->update();
}

void PlaylistView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void PlaylistView::contextMenuEvent(QContextMenuEvent* event) {
    emit MenuRequested(event->globalPos());
}

void PlaylistView::SetDropping(bool dropping) {
    dropping_ = dropping;
    viewport()->update();
}

void PlaylistView::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
        SetDropping(true);
    }
}

void PlaylistView::dragMoveEvent(QDragMoveEvent* event) {
    event->acceptProposedAction();
}

void PlaylistView::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    SetDropping(false);
}

void PlaylistView::dropEvent(QDropEvent* event) {
    SetDropping(false);
    event->acceptProposedAction();
    emit FilesDropped(LocalFiles(event->mimeData()));
}

void PlaylistView::ShowTip(const QPoint& position, const QPoint& globalPosition) {
    const bool isHint = tip_ != nullptr && tip_->IsHint();
    QToolTip::showText(globalPosition, isHint ? tip_->Text() : rows_.Field(RowAt(position), SubFormats),
                       this);
}

bool PlaylistView::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto* help = static_cast<QHelpEvent*>(event);
        ShowTip(help->pos(), help->globalPos());
        return true;
    }
    case QEvent::Leave:
        mouse_.reset();
        viewport()->update();
        break;
    default:
        break;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace kestrune
