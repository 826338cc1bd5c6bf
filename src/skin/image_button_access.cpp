#include "skin/image_button_access.h"

#include "skin/image_button.h"

#include <QAccessibleWidget>

namespace kestrune {

namespace {

// Qt knows the roles of its own buttons only.
class ImageButtonAccess : public QAccessibleWidget {
public:
    explicit ImageButtonAccess(ImageButton* button) : QAccessibleWidget(button, QAccessible::Button) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const auto* button = static_cast<const ImageButton*>(widget());
        state.checkable = button->isCheckable();
        state.checked = button->isChecked();
        state.pressed = button->isDown() || button->HasPressedLook();
        return state;
    }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction()) {
            // Not at once: a dialog that opens would keep the screen reader waiting until it is closed.
            static_cast<ImageButton*>(widget())->animateClick();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }
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
