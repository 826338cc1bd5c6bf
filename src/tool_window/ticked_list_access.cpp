#include "tool_window/ticked_list_access.h"

#include "tool_window/ticked_list_view.h"
#include "tool_window/ticked_rows.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QHeaderView>
#include <QPointer>

namespace kestrune {

namespace {

// A cell by its place, as the toolkit counts them: children run along the rows, and the captions are row -1.
class CellAccess : public QAccessibleInterface,
                   public QAccessibleTableCellInterface,
                   public QAccessibleActionInterface {
public:
    CellAccess(TickedListView* view, int row, int column) : view_(view), row_(row), column_(column) {}

    int ChildIndex() const { return (row_ + 1) * view_->model()->columnCount() + column_; }

    bool isValid() const override {
        return view_ != nullptr && view_->model() != nullptr && (IsCaption() || Index().isValid());
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return isValid() ? parent()->window() : nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override {
        return IsCaption() ? QAccessible::ColumnHeader : QAccessible::TreeItem;
    }

    QString text(QAccessible::Text kind) const override {
        if (!isValid() || kind != QAccessible::Name) {
            return {};
        }
        return IsCaption() ? view_->model()->headerData(column_, Qt::Horizontal).toString()
                           : Index().data().toString();
    }
    void setText(QAccessible::Text kind, const QString& text) override {
        if (kind == QAccessible::Name && IsEditable()) {
            view_->model()->setData(Index(), text);
        }
    }

    QRect rect() const override {
        if (!isValid()) {
            return {};
        }
        if (IsCaption()) {
            const QHeaderView* header = view_->header();
            const QRect place(header->sectionViewportPosition(column_), 0, header->sectionSize(column_),
                              header->height());
            return place.translated(header->mapToGlobal(QPoint()));
        }
        const QRect place = view_->visualRect(Index());
        return place.isEmpty() ? QRect() : place.translated(view_->viewport()->mapToGlobal(QPoint()));
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid || IsCaption()) {
            return state;
        }
        state.selectable = true;
        state.multiSelectable = true;
        state.focusable = true;
        state.selected = isSelected();
        state.focused = view_->hasFocus() && view_->currentIndex() == Index();
        state.offscreen = !view_->viewport()->rect().intersects(view_->visualRect(Index()));
        state.invisible = !view_->isVisible();
        state.checkable = IsBox();
        state.checked = IsBox() && Index().data(Qt::CheckStateRole).toInt() == static_cast<int>(Qt::Checked);
        state.editable = IsEditable();
        state.readOnly = !state.editable;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        switch (type) {
        case QAccessible::ActionInterface:
            return static_cast<QAccessibleActionInterface*>(this);
        case QAccessible::TableCellInterface:
            return static_cast<QAccessibleTableCellInterface*>(this);
        default:
            return nullptr;
        }
    }

    QStringList actionNames() const override {
        if (!isValid() || IsCaption()) {
            return {};
        }
        return IsBox() ? QStringList{toggleAction(), pressAction(), setFocusAction()}
                       : QStringList{setFocusAction()};
    }
    void doAction(const QString& name) override {
        if (!actionNames().contains(name)) {
            return;
        }
        if (name == setFocusAction()) {
            view_->setFocus();
            view_->setCurrentIndex(Index());
        } else {
            view_->ToggleTick(row_);
        }
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    bool isSelected() const override {
        return isValid() && !IsCaption() && view_->selectionModel()->isSelected(Index());
    }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return isValid() ? QList<QAccessibleInterface*>{table()->tableInterface()->cellAt(-1, column_)}
                         : QList<QAccessibleInterface*>();
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return column_; }
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    bool IsCaption() const { return row_ < 0; }
    bool IsBox() const { return column_ == TickedRows::tickColumn; }
    bool IsEditable() const { return isValid() && Index().flags().testFlag(Qt::ItemIsEditable); }
    QModelIndex Index() const { return view_->model()->index(row_, column_); }

    QPointer<TickedListView> view_;
    int row_;
    int column_;
};

class TickedListAccess : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit TickedListAccess(TickedListView* view) : QAccessibleWidget(view, QAccessible::Tree) {}
    ~TickedListAccess() override {
        for (const QAccessible::Id id : idOfChild_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
    TickedListAccess(const TickedListAccess&) = delete;
    TickedListAccess& operator=(const TickedListAccess&) = delete;

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return (rowCount() + 1) * columnCount(); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        const auto known = idOfChild_.constFind(index);
        if (known != idOfChild_.constEnd()) {
            return QAccessible::accessibleInterface(*known);
        }
        auto* cell = new CellAccess(View(), index / columnCount() - 1, index % columnCount());
        idOfChild_.insert(index, QAccessible::registerAccessibleInterface(cell));
        return cell;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* cell = dynamic_cast<const CellAccess*>(child);
        return cell != nullptr && cell->isValid() && cell->parent() == this ? cell->ChildIndex() : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        if (!isValid()) {
            return nullptr;
        }
        const QModelIndex under = View()->indexAt(View()->viewport()->mapFromGlobal(QPoint(x, y)));
        return under.isValid() ? cellAt(under.row(), under.column()) : nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        const QModelIndex current = isValid() ? View()->currentIndex() : QModelIndex();
        return current.isValid() && View()->hasFocus() ? cellAt(current.row(), current.column()) : nullptr;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiSelectable = true;
        state.extSelectable = true;
        return state;
    }

    // Row -1 is that of the captions.
    QAccessibleInterface* cellAt(int row, int column) const override {
        const bool isPlace = row >= -1 && row < rowCount() && column >= 0 && column < columnCount();
        return isPlace ? child((row + 1) * columnCount() + column) : nullptr;
    }
    int rowCount() const override { return HasModel() ? View()->model()->rowCount() : 0; }
    int columnCount() const override { return HasModel() ? View()->model()->columnCount() : 0; }
    QString columnDescription(int column) const override {
        return HasModel() ? View()->model()->headerData(column, Qt::Horizontal).toString() : QString();
    }
    QString rowDescription(int /*row*/) const override { return {}; }
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }

    QList<int> selectedRows() const override {
        QList<int> rows;
        if (HasModel()) {
            for (const QModelIndex& index : View()->selectionModel()->selectedRows()) {
                rows.append(index.row());
            }
        }
        return rows;
    }
    QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (const int row : selectedRows()) {
            for (int column = 0; column < columnCount(); ++column) {
                cells.append(cellAt(row, column));
            }
        }
        return cells;
    }
    int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool selectRow(int row) override { return Select(row, QItemSelectionModel::Select); }
    bool unselectRow(int row) override { return Select(row, QItemSelectionModel::Deselect); }
    // Whole rows are selected, never columns.
    int selectedColumnCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    bool isColumnSelected(int /*column*/) const override { return false; }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    // Cells go by their place, so that none of them grows stale.
    void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override {}

private:
    TickedListView* View() const { return static_cast<TickedListView*>(object()); }
    bool HasModel() const { return isValid() && View()->model() != nullptr; }
    bool Select(int row, QItemSelectionModel::SelectionFlags how) {
        if (row < 0 || row >= rowCount()) {
            return false;
        }
        View()->selectionModel()->select(View()->model()->index(row, TickedRows::tickColumn),
                                         how | QItemSelectionModel::Rows);
        return true;
    }

    mutable QHash<int, QAccessible::Id> idOfChild_; // of the cells that were asked for
};

QAccessibleInterface* MakeAccess(const QString& /*className*/, QObject* object) {
    auto* view = qobject_cast<TickedListView*>(object);
    return view != nullptr ? new TickedListAccess(view) : nullptr;
}

} // namespace

void InstallTickedListAccess() {
    QAccessible::installFactory(MakeAccess);
}

} // namespace kestrune
