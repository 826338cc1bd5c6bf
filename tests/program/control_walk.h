// Walks through the check boxes, options, mode keys and panel keys of a window and works each in every way
// that there is.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QButtonGroup>
#include <QRadioButton>
#include <QtTest/QtTest>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace kestrune {

enum class Way { Mouse, Key, Toggle, Press };
inline constexpr Way everyWay[] = {Way::Mouse, Way::Key, Way::Toggle, Way::Press};

inline const char* NameOf(Way way) {
    switch (way) {
    case Way::Mouse:
        return "mouse";
    case Way::Key:
        return "key";
    case Way::Toggle:
        return "Toggle of a screen reader";
    case Way::Press:
        break;
    }
    return "Press of a screen reader";
}

struct WalkedWindow {
    QWidget& window;
    // What the rule behind a control holds; nothing for a control that no rule is known for. The walk never
    // asks the control itself.
    std::function<std::optional<QString>(const QString& name)> held;
    // Brings a control that is hidden or disabled at the start into use.
    std::function<void(QAbstractButton&)> prepare = [](QAbstractButton&) {};
    // Keys that open something beside the ones that stay down.
    QStringList panelKeys = {};
    // Groups of keys of which one is down, by the array's name. Options are known by themselves.
    QStringList modeKeys = {};
};

class ControlWalk {
public:
    explicit ControlWalk(const WalkedWindow& walked) : walked_(walked) {}

    // Returns the names of what was found and worked, in the order of the window.
    QStringList Run() {
        QStringList names;
        for (QAbstractButton* button : walked_.window.findChildren<QAbstractButton*>()) {
            if (button->isCheckable() || walked_.panelKeys.contains(button->objectName())) {
                EXPECT_FALSE(button->objectName().isEmpty()) << button->text().toStdString();
                EXPECT_FALSE(names.contains(button->objectName())) << button->objectName().toStdString();
                names << button->objectName();
                Work(*button);
            }
        }
        return names;
    }

private:
    void Work(QAbstractButton& button) {
        for (const Way way : everyWay) {
            SCOPED_TRACE(button.objectName().toStdString() + " by " + NameOf(way));
            walked_.prepare(button);
            LeaveFor(button);
            ASSERT_TRUE(button.isVisible() && button.isEnabled());
            const auto before = walked_.held(button.objectName());
            ASSERT_TRUE(before.has_value()) << "no rule is known";
            Act(button, way);
            EXPECT_TRUE(QTest::qWaitFor([&] { return walked_.held(button.objectName()) != before; }, 600))
                << "still " << before->toStdString();
            // Once, not once and back.
            QTest::qWait(1);
            EXPECT_NE(walked_.held(button.objectName()), before);
        }
    }

    // An option that is on already does nothing: another one of its group is chosen before.
    void LeaveFor(QAbstractButton& button) {
        if (!button.isChecked()) {
            return;
        }
        for (QAbstractButton* other : walked_.window.findChildren<QAbstractButton*>()) {
            if (other != &button && AreOneGroup(*other, button) && other->isVisible() && other->isEnabled()) {
                Act(*other, Way::Mouse);
                ASSERT_FALSE(button.isChecked());
                return;
            }
        }
    }

    bool AreOneGroup(const QAbstractButton& a, const QAbstractButton& b) const {
        if (a.group() != nullptr || b.group() != nullptr) {
            return a.group() == b.group();
        }
        if (a.autoExclusive() && b.autoExclusive()) {
            return a.parentWidget() == b.parentWidget();
        }
        const QString array = b.objectName().section(u'(', 0, 0);
        return walked_.modeKeys.contains(array) && a.objectName().section(u'(', 0, 0) == array;
    }

    static void Act(QAbstractButton& button, Way way) {
        // On the mark of a box, in the middle of a key.
        const bool isMarked = button.inherits("QCheckBox") || button.inherits("QRadioButton");
        const QPoint place(isMarked ? 8 : button.width() / 2, button.height() / 2);
        switch (way) {
        case Way::Mouse:
            QTest::mouseClick(&button, Qt::LeftButton, {}, place);
            break;
        case Way::Key:
            button.setFocus(Qt::TabFocusReason);
            QTest::keyClick(&button, Qt::Key_Space);
            break;
        case Way::Toggle:
        case Way::Press: {
            QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&button);
            ASSERT_NE(access, nullptr);
            ASSERT_NE(access->actionInterface(), nullptr);
            access->actionInterface()->doAction(way == Way::Toggle
                                                    ? QAccessibleActionInterface::toggleAction()
                                                    : QAccessibleActionInterface::pressAction());
            break;
        }
        }
    }

    const WalkedWindow& walked_;
};

} // namespace kestrune
