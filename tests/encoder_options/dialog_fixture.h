// What the tests of the option dialogs' windows share.
#pragma once

#include "encoder_options/encoder_options_dialog.h"
#include "skin/image_button.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace kestrune {

class DialogTest : public testing::Test {
protected:
    enum Key { Ok, Cancel, Apply };

    void Show(QDialog& shown) {
        dialog = &shown;
        shown.open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&shown));
    }
    template <typename Control>
    Control* Find(const QString& name) {
        auto* control = dialog->findChild<Control*>(name);
        if (control == nullptr) {
            ADD_FAILURE() << "no " << name.toStdString();
            std::abort();
        }
        return control;
    }
    template <typename Control>
    Control* Find(const char* name) {
        return Find<Control>(QString::fromLatin1(name));
    }
    bool IsEnabled(const char* name) { return Find<QWidget>(name)->isEnabled(); }
    std::string Text(const char* label) { return Find<QLabel>(label)->text().toStdString(); }
    void Click(Key key) {
        QTest::mouseClick(Find<ImageButton>(QStringLiteral("ImageCMD(%1)").arg(key)), Qt::LeftButton);
    }
    // On the mark of a check box or an option.
    void ClickMark(const QString& name) {
        auto* button = Find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, {7, button->height() / 2});
    }
    QStringList Entries(const char* list) {
        const auto* box = Find<QComboBox>(list);
        QStringList texts;
        for (int index = 0; index < box->count(); ++index) {
            texts << box->itemText(index);
        }
        return texts;
    }
    // Names of what Tab comes to, from what has the focus now until it comes round.
    QStringList TabRound() {
        QStringList names;
        const QWidget* first = dialog->focusWidget();
        do {
            names << dialog->focusWidget()->objectName();
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        } while (dialog->focusWidget() != first && names.size() < 40);
        return names;
    }

    QDialog* dialog = nullptr;
};

} // namespace kestrune
