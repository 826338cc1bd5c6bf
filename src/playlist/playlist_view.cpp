#include "playlist/playlist_view.h"

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

const QColor glassColour(20, 20, 20);
const QColor textColour(0xD7, 0xDA, 0xF5);
const QColor accentColour(128, 128, 255);
constexpr double selectionOpacity = 0.28;
constexpr int textMargin = 3;
constexpr int fontPixels = 11;

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
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    QFont listFont = font();
    listFont.setPixelSize(fontPixels);
    setFont(listFont);
    verticalScrollBar()->setSingleStep(1);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        viewport()->update();
        emit Scrolled();
    });
    connect(&rows_, &PlaylistRows::rowsInserted, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::rowsRemoved, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::rowsMoved, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::modelReset, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::layoutChanged, this, &PlaylistView::RowsChanged);
    connect(&rows_, &PlaylistRows::dataChanged, viewport(), qOverload<>(&QWidget::update));
}

void PlaylistView::SetColumns(const ColumnWidths& widths) {
    columns_ = widths;
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
}

void PlaylistView::UpdateRange() {
    verticalScrollBar()->setRange(0, std::max(0, rows_.Count() - VisibleRows()));
    verticalScrollBar()->setPageStep(VisibleRows());
}

void PlaylistView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    UpdateRange();
}

int PlaylistView::RowAt(const QPoint& position) const {
    const int row = FirstVisible() + position.y() / rowHeight;
    return position.y() >= 0 && row <= rows_.Count() ? row : 0;
}

void PlaylistView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), glassColour);
    const int last = std::min(rows_.Count(), FirstVisible() + VisibleRows());
    for (int row = FirstVisible(); row <= last; ++row) {
        PaintRow(painter, row, (row - FirstVisible()) * rowHeight);
    }
}

void PlaylistView::PaintRow(QPainter& painter, int row, int top) const {
    const QRect line(0, top, viewport()->width(), rowHeight);
    if (rows_.IsSelected(row)) {
        QColor selection = accentColour;
        selection.setAlphaF(selectionOpacity);
        painter.fillRect(line, selection);
    }
    const bool bold = rows_.IsBold(row);
    QFont rowFont = font();
    rowFont.setBold(bold);
    painter.setFont(rowFont);
    painter.setPen(bold ? accentColour : textColour);
    const QFontMetrics metrics(rowFont);
    int left = 0;
    for (size_t column = 0; column < columns_.size(); ++column) {
        const int width = columns_[column];
        if (width <= textMargin) {
            continue;
        }
        // The gap to the next column is that column's own margin.
        const QRect cell(left + textMargin, top, width - textMargin, rowHeight);
        const QString text = rows_.Field(row, static_cast<RowField>(column));
        painter.drawText(cell, Qt::AlignVCenter | Qt::AlignLeft,
                         metrics.elidedText(text, Qt::ElideRight, cell.width()));
        left += width;
    }
    if (row == focusRow_ && hasFocus()) {
        painter.setPen(QPen(accentColour, 1, Qt::DotLine));
        painter.drawRect(line.adjusted(0, 0, -1, -1));
    }
}

void PlaylistView::MoveFocus(int row, Qt::KeyboardModifiers modifiers) {
    if (row < 1 || row > rows_.Count()) {
        return;
    }
    focusRow_ = row;
    if (modifiers.testFlag(Qt::ShiftModifier) && anchorRow_ > 0) {
        rows_.SelectOnly(std::min(anchorRow_, row), std::max(anchorRow_, row));
    } else if (modifiers.testFlag(Qt::ControlModifier)) {
        rows_.SetSelected(row, !rows_.IsSelected(row));
        anchorRow_ = row;
    } else {
        rows_.SelectOnly(row, row);
        anchorRow_ = row;
    }
    EnsureVisible(row);
    viewport()->update();
    emit RowClicked(row);
}

void PlaylistView::mousePressEvent(QMouseEvent* event) {
    const int row = RowAt(event->position().toPoint());
    if (row == 0) {
        if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
            rows_.SelectOnly(0, 0);
            emit RowClicked(0);
        }
        return;
    }
    // The right button takes a row that is not selected yet, and leaves a selection that it was pressed on.
    if (event->button() == Qt::LeftButton || (event->button() == Qt::RightButton && !rows_.IsSelected(row))) {
        MoveFocus(row, event->modifiers());
    }
}

void PlaylistView::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = RowAt(event->position().toPoint());
    if (row > 0 && event->button() == Qt::LeftButton) {
        emit RowActivated(row);
    }
}

void PlaylistView::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & Qt::ShiftModifier;
    const int page = VisibleRows();
    switch (event->key()) {
    case Qt::Key_Up:
        MoveFocus(std::max(1, focusRow_ - 1), modifiers);
        break;
    case Qt::Key_Down:
        MoveFocus(std::min(rows_.Count(), focusRow_ + 1), modifiers);
        break;
    case Qt::Key_PageUp:
        MoveFocus(std::max(1, focusRow_ - page), modifiers);
        break;
    case Qt::Key_PageDown:
        MoveFocus(std::min(rows_.Count(), focusRow_ + page), modifiers);
        break;
    case Qt::Key_Home:
        MoveFocus(1, modifiers);
        break;
    case Qt::Key_End:
        MoveFocus(rows_.Count(), modifiers);
        break;
    case Qt::Key_A:
        if (event->modifiers().testFlag(Qt::ControlModifier)) {
            rows_.SelectOnly(1, rows_.Count());
            emit RowClicked(focusRow_);
            break;
        }
        event->ignore();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (focusRow_ > 0) {
            emit RowActivated(focusRow_);
        }
        break;
    case Qt::Key_Insert:
        emit AddRequested();
        break;
    default:
        event->ignore();
        break;
    }
}

void PlaylistView::contextMenuEvent(QContextMenuEvent* event) {
    emit MenuRequested(event->globalPos());
}

void PlaylistView::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void PlaylistView::dragMoveEvent(QDragMoveEvent* event) {
    event->acceptProposedAction();
}

void PlaylistView::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    emit FilesDropped(LocalFiles(event->mimeData()));
}

bool PlaylistView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), rows_.Field(RowAt(help->pos()), SubFormats), this);
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace kestrune
