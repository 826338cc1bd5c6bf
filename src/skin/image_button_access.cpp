#include "skin/image_button_access.h"

#include "skin/image_button.h"

#include <QAccessibleWidget>

namespace kestrune {

namespace {

// Qt knows the roles of its own buttons only.
class ImageButtonAccess : public QAccessibleWidget {
public:
    explicit ImageButtonAccess(ImageButton* button) : QAccessibleWidget(button) {}

    // It may be asked for before the button is made checkable.
    QAccessible::Role role() const override {
        return Button()->isCheckable() ? QAccessible::CheckBox : QAccessible::Button;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const ImageButton* button = Button();
        state.checkable = button->isCheckable();
        state.checked = button->isChecked();
        state.pressed = button->isDown() || button->HasPressedLook();
        return state;
    }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled()) {
            names.prepend(Button()->isCheckable() ? toggleAction() : pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction() || name == toggleAction()) {
            // Not at once: a dialog that opens would keep the screen reader waiting until it is closed.
            Button()->animateClick();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    ImageButton* Button() const { return static_cast<ImageButton*>(widget()); }
};

QAccessibleInterface* MakeAccess(const QString& /*className*/, QObject* object) {
    auto* button = qobject_cast<ImageButton*>(object);
    return button != nullptr ? new ImageButtonAccess(button) : nullptr;
}

} // namespace

void InstallImageButtonAccess() {
    QAccessible::installFactory(MakeAccess);
}

} // namespace kestrune
