#include "tool_window/ticked_list_view.h"

#include "tool_window/ticked_list_access.h"
#include "tool_window/ticked_rows.h"

#include <QAccessible>
#include <QHeaderView>
#include <QKeyEvent>

namespace kestrune {

TickedListView::TickedListView(QWidget* parent) : QTreeView(parent) {
    InstallTickedListAccess();
    setFrameShape(QFrame::NoFrame);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideMiddle);
    header()->setSectionsMovable(false);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TickedListView::ToggleTick(int row) {
    if (model() == nullptr) {
        return;
    }
    const QModelIndex box = model()->index(row, TickedRows::tickColumn);
    if (model()->flags(box).testFlag(Qt::ItemIsUserCheckable)) {
        const bool isTicked = box.data(Qt::CheckStateRole).toInt() == static_cast<int>(Qt::Checked);
        model()->setData(box, static_cast<int>(isTicked ? Qt::Unchecked : Qt::Checked), Qt::CheckStateRole);
    }
}

// The toolkit's own answer turns the tick over only while the tick's column is the current one, which the row
// does not show.
void TickedListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier && currentIndex().isValid()) {
        ToggleTick(currentIndex().row());
        event->accept();
        return;
    }
    QTreeView::keyPressEvent(event);
}

void TickedListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                 const QList<int>& roles) {
    QTreeView::dataChanged(topLeft, bottomRight, roles);
    // A screen reader speaks of the row that the keyboard is on.
    const int row = currentIndex().row();
    if (roles.contains(Qt::CheckStateRole) && row >= topLeft.row() && row <= bottomRight.row()) {
        TellTick(row);
    }
}

void TickedListView::TellTick(int row) {
    if (QAccessible::isActive()) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent news(this, changed);
        // The captions are the first of its children.
        news.setChild((row + 1) * model()->columnCount() + TickedRows::tickColumn);
        QAccessible::updateAccessibility(&news);
    }
}

} // namespace kestrune
