// The list on screen. It paints the rows that are in sight, forwards what the user does and keeps nothing of
// its own but the row that has the keyboard's mark.
#pragma once

#include "app/playlist_columns.h"
#include "playlist/list_tip.h"
#include "playlist/playlist_rows.h"

#include <QAbstractScrollArea>
#include <optional>

namespace kestrune {

// The rows must outlive the view. Row numbers are 1-based, 0 means none.
class PlaylistView : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int rowHeight = 17;

    explicit PlaylistView(PlaylistRows& rows, QWidget* parent = nullptr);

    const PlaylistRows& Rows() const { return rows_; }
    void SetColumns(const ColumnWidths& widths);
    // The tool tip that moves and clicks change; it must outlive the view. Without one, the row under the
    // mouse shows its format.
    void UseTip(ListTip* tip) { tip_ = tip; }

    void EnsureVisible(int row);
    int FirstVisible() const;
    void SetFirstVisible(int row);
    int VisibleRows() const;
    int FocusRow() const { return focusRow_; }
    int RowAt(const QPoint& position) const; // of the viewport
    // Place of a row in the viewport; empty when it is out of sight.
    QRect RowRect(int row) const;

    // As a click does: selects the row and nothing else.
    void ChooseRow(int row);
    // The keyboard's mark follows two rows that change places.
    void FollowSwap(int a, int b);

signals:
    void RowClicked(int row);   // after the selection has changed
    void RowActivated(int row); // double click or Enter
    void AddRequested();        // Insert
    void MenuRequested(const QPoint& globalPosition);
    void FilesDropped(const QStringList& files);
    void MouseMoved();
    // The first row in sight or the number of rows is another one.
    void Scrolled();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void RowsChanged();
    void RowsRemoved(int first, int last);
    void UpdateRange();
    int ContentWidth() const;
    bool ScrollSideways(int steps);
    bool MoveByKey(const QKeyEvent* event);
    void MoveFocus(int row, Qt::KeyboardModifiers modifiers);
    void SetFocusRow(int row);
    void TellClick(int row);
    void ShowTip(const QPoint& position, const QPoint& globalPosition);
    void SetDropping(bool dropping);

    PlaylistRows& rows_;
    ListTip* tip_ = nullptr;
    ColumnWidths columns_ = startColumnWidths;
    int focusRow_ = 0;
    int anchorRow_ = 0;           // where a selection with Shift begins
    std::optional<QPoint> mouse_; // in the viewport, while the mouse is over it
    bool focusByKey_ = false;     // the focus came by Tab
    bool dropping_ = false;       // files are held over the list
};

} // namespace kestrune
