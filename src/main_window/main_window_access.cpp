#include "main_window/main_window_access.h"

#include "display/colour_swatch_widget.h"
#include "main_window/frm_main.h"

#include <QAccessibleWidget>

namespace kestrune {

namespace {

// A frame, a digit, a moving picture, a text that is empty now: without a name, and not to be worked with.
bool TellsNothing(QAccessibleInterface* child) {
    const auto* widget = qobject_cast<const QWidget*>(child->object());
    return widget != nullptr && widget->focusPolicy() == Qt::NoFocus && child->childCount() == 0 &&
           child->text(QAccessible::Name).isEmpty();
}

class MainWindowAccess : public QAccessibleWidget {
public:
    explicit MainWindowAccess(QWidget* window) : QAccessibleWidget(window, QAccessible::Window) {}

    int childCount() const override { return static_cast<int>(Told().size()); }
    QAccessibleInterface* child(int index) const override { return Told().value(index); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return static_cast<int>(Told().indexOf(const_cast<QAccessibleInterface*>(child)));
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        QAccessibleInterface* child = QAccessibleWidget::childAt(x, y);
        return child == nullptr || TellsNothing(child) ? nullptr : child;
    }

private:
    QList<QAccessibleInterface*> Told() const {
        QList<QAccessibleInterface*> told;
        const int count = QAccessibleWidget::childCount();
        for (int i = 0; i < count; ++i) {
            QAccessibleInterface* child = QAccessibleWidget::child(i);
            if (child != nullptr && !TellsNothing(child)) {
                told.append(child);
            }
        }
        // An open menu is a window of its own, which nothing else leads to; a submenu belongs to its entry.
        for (QMenu* menu : widget()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
            if (menu->isVisible() && menu->menuAction()->associatedObjects().isEmpty()) {
                told.append(QAccessible::queryAccessibleInterface(menu));
            }
        }
        return told;
    }
};

// Qt knows the roles of its own buttons only.
class MenuLabelAccess : public QAccessibleWidget {
public:
    explicit MenuLabelAccess(MenuLabel* label) : QAccessibleWidget(label) {}

    // It may be asked for before the label knows what it opens.
    QAccessible::Role role() const override {
        return Label()->OpensMenu() ? QAccessible::ButtonMenu : QAccessible::Button;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = Label()->OpensMenu();
        return state;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (Label()->isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (name == pressAction()) {
            // Not at once: a window that opens would keep the screen reader waiting until it is closed.
            Label()->animateClick();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    MenuLabel* Label() const { return static_cast<MenuLabel*>(widget()); }
};

class DisplayAccess : public QAccessibleWidget {
public:
    explicit DisplayAccess(QWidget* display) : QAccessibleWidget(display, QAccessible::Animation) {}

    QStringList actionNames() const override {
        return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == showMenuAction()) {
            emit widget()->customContextMenuRequested(widget()->rect().center());
        } else {
            QAccessibleWidget::doAction(name);
        }
    }
};

QAccessibleInterface* MakeAccess(const QString& className, QObject* object) {
    if (auto* label = qobject_cast<MenuLabel*>(object)) {
        return new MenuLabelAccess(label);
    }
    if (auto* display = qobject_cast<AudioDisplayView*>(object)) {
        return new DisplayAccess(display);
    }
    auto* widget = qobject_cast<QWidget*>(object);
    if (qobject_cast<FrmMain*>(object) != nullptr) {
        return new MainWindowAccess(widget);
    }
    if (qobject_cast<PictureLabel*>(object) != nullptr) {
        return new QAccessibleWidget(widget, QAccessible::StaticText);
    }
    if (qobject_cast<ColourSwatchWidget*>(object) != nullptr) {
        return new QAccessibleWidget(widget, QAccessible::Graphic);
    }
    // The fields of colours in the choice of a colour, which Qt leaves without a role. Its name comes with
    // the namespace, which differs between builds of Qt.
    if (widget != nullptr && className.endsWith(QLatin1String("QWellArray"))) {
        return new QAccessibleWidget(widget, QAccessible::ColorChooser);
    }
    if (qobject_cast<EqualizerPanel*>(object) != nullptr || qobject_cast<ColourPanel*>(object) != nullptr) {
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    }
    return nullptr;
}

} // namespace

void InstallMainWindowAccess() {
    QAccessible::installFactory(MakeAccess);
}

} // namespace kestrune
