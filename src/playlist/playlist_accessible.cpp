#include "playlist/playlist_accessible.h"

#include "playlist/playlist_view.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace kestrune {

namespace {

// One row, by its number: when the list is sorted, the same item tells of another file.
class RowAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    RowAccessible(PlaylistView* view, int row) : view_(view), row_(row) {}

    bool isValid() const override { return view_ != nullptr && row_ <= view_->Rows().Count(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return isValid() ? parent()->window() : nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        const PlaylistRows& rows = view_->Rows();
        switch (kind) {
        case QAccessible::Name:
            return rows.Field(row_, RowText) + u' ' + rows.Field(row_, SubTime);
        case QAccessible::Description:
            return rows.Field(row_, SubFormats);
        default:
            return {};
        }
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    QRect rect() const override {
        const QRect line = isValid() ? view_->RowRect(row_) : QRect();
        return line.isEmpty() ? QRect() : line.translated(view_->viewport()->mapToGlobal(QPoint()));
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.selectable = true;
        state.multiSelectable = true;
        state.focusable = true;
        state.selected = view_->Rows().IsSelected(row_);
        state.focused = view_->hasFocus() && view_->FocusRow() == row_;
        state.offscreen = view_->RowRect(row_).isEmpty();
        state.invisible = !view_->isVisible();
        state.readOnly = true;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (!isValid()) {
            return;
        }
        if (name == setFocusAction()) {
            view_->setFocus();
            view_->ChooseRow(row_);
        } else if (name == pressAction()) {
            emit view_->RowActivated(row_);
        }
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    int Row() const { return row_; }

private:
    QPointer<PlaylistView> view_;
    int row_;
};

class PlaylistAccessible : public QAccessibleWidget {
public:
    explicit PlaylistAccessible(PlaylistView* view) : QAccessibleWidget(view, QAccessible::List) {}
    ~PlaylistAccessible() override {
        for (const QAccessible::Id id : idOfRow_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
    PlaylistAccessible(const PlaylistAccessible&) = delete;
    PlaylistAccessible& operator=(const PlaylistAccessible&) = delete;

    int childCount() const override { return isValid() ? View()->Rows().Count() : 0; }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        const int row = index + 1;
        const auto known = idOfRow_.constFind(row);
        if (known != idOfRow_.constEnd()) {
            return QAccessible::accessibleInterface(*known);
        }
        auto* item = new RowAccessible(View(), row);
        idOfRow_.insert(row, QAccessible::registerAccessibleInterface(item));
        return item;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* item = dynamic_cast<const RowAccessible*>(child);
        return item != nullptr && item->parent() == this ? item->Row() - 1 : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        return isValid() ? child(View()->RowAt(View()->viewport()->mapFromGlobal(QPoint(x, y))) - 1)
                         : nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        return isValid() && View()->hasFocus() ? child(View()->FocusRow() - 1) : nullptr;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiSelectable = true;
        state.extSelectable = true;
        return state;
    }

private:
    PlaylistView* View() const { return static_cast<PlaylistView*>(object()); }

    mutable QHash<int, QAccessible::Id> idOfRow_; // of the items that were asked for
};

QAccessibleInterface* MakePlaylistAccessible(const QString& /*className*/, QObject* object) {
    auto* view = qobject_cast<PlaylistView*>(object);
    return view != nullptr ? new PlaylistAccessible(view) : nullptr;
}

} // namespace

void InstallPlaylistAccessible() {
    QAccessible::installFactory(MakePlaylistAccessible);
}

} // namespace kestrune
