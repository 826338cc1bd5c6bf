// ListViewInput on screen: rows with check boxes, on which files can be dropped.
#pragma once

#include "tool_window/ticked_list_view.h"

#include <QStringList>

namespace kestrune {

// Window thread. The model is the job list's rows.
class InputListView : public TickedListView {
    Q_OBJECT
public:
    explicit InputListView(QWidget* parent = nullptr);

signals:
    // Paths of files of this machine, in the order of the drop.
    void FilesDropped(const QStringList& paths);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void ShowTarget(bool shown);

    bool isTarget_ = false;
};

} // namespace kestrune
