// The list on screen. It paints the rows that are in sight, forwards what the user does and keeps nothing of
// its own but the row that has the keyboard's mark.
#pragma once

#include "app/playlist_columns.h"
#include "playlist/playlist_rows.h"

#include <QAbstractScrollArea>

namespace kestrune {

// The rows must outlive the view. Row numbers are 1-based.
class PlaylistView : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int rowHeight = 17;

    explicit PlaylistView(PlaylistRows& rows, QWidget* parent = nullptr);

    void SetColumns(const ColumnWidths& widths);
    void EnsureVisible(int row);
    int FirstVisible() const;
    void SetFirstVisible(int row);
    int VisibleRows() const;
    int FocusRow() const { return focusRow_; }

signals:
    void RowClicked(int row);   // after the selection has changed
    void RowActivated(int row); // double click or Enter
    void AddRequested();        // Insert
    void MenuRequested(const QPoint& globalPosition);
    void FilesDropped(const QStringList& files);
    void Scrolled();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    int RowAt(const QPoint& position) const;
    void RowsChanged();
    void UpdateRange();
    void MoveFocus(int row, Qt::KeyboardModifiers modifiers);
    void PaintRow(QPainter& painter, int row, int top) const;

    PlaylistRows& rows_;
    ColumnWidths columns_ = startColumnWidths;
    int focusRow_ = 0;
    int anchorRow_ = 0; // where a selection with Shift begins
};

} // namespace kestrune
