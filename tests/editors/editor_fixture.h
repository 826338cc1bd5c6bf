// What the tests of the editors' windows share.
#pragma once

#include "editors/editor_dialog.h"

#include <QAbstractButton>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace kestrune {

// Finds the controls of a dialog by name. With KESTRUNE_PICTURES set to a folder pictures are kept there.
class EditorHand {
public:
    explicit EditorHand(QDialog& dialog) : dialog_(dialog) {}

    void Show() {
        dialog_.open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog_));
    }
    template <typename Control>
    Control* Find(const QString& name) {
        auto* control = dialog_.findChild<Control*>(name);
        if (control == nullptr) {
            ADD_FAILURE() << "no " << name.toStdString();
            std::abort();
        }
        return control;
    }
    QString BoxText(const char* name) { return Find<QLineEdit>(QLatin1String(name))->text(); }
    // Puts the text in place of what is there, by keys.
    void Type(const char* name, const QString& text) {
        auto* box = Find<QLineEdit>(QLatin1String(name));
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }
    BodyKey* ImageCMD(int index) { return Find<BodyKey>(QStringLiteral("ImageCMD(%1)").arg(index)); }
    void Click(int imageCmd) { QTest::mouseClick(ImageCMD(imageCmd), Qt::LeftButton); }
    // Names of what Tab comes to, from what has the focus now until it comes round.
    QStringList TabRound() {
        QStringList names;
        const QWidget* first = dialog_.focusWidget();
        do {
            names << dialog_.focusWidget()->objectName();
            QTest::keyClick(dialog_.focusWidget(), Qt::Key_Tab);
        } while (dialog_.focusWidget() != first && names.size() < 40);
        return names;
    }
    void Keep(const QString& name) {
        const QString folder = qEnvironmentVariable("KESTRUNE_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(dialog_.grab().save(QStringLiteral("%1/%2.png").arg(folder, name)));
        }
    }
    // Each control lies inside its parent and has room for its words.
    void ExpectNothingCutOff() {
        for (const QWidget* child : dialog_.findChildren<QWidget*>()) {
            if (child->isVisible() && !child->isWindow()) {
                EXPECT_TRUE(child->parentWidget()->rect().contains(child->geometry()))
                    << child->objectName().toStdString();
            }
        }
        for (const QLabel* label : dialog_.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->wordWrap()) {
                EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                    << label->text().toStdString();
            }
        }
    }
    // All that takes the focus, and all boxes inside of others, have a name for a screen reader.
    void ExpectNames() {
        for (const QWidget* child : dialog_.findChildren<QWidget*>()) {
            const auto* button = qobject_cast<const QAbstractButton*>(child);
            const bool isNamed =
                !child->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
            if (child->isVisible() && !child->isWindow() && child->focusPolicy() != Qt::NoFocus) {
                EXPECT_TRUE(isNamed) << child->objectName().toStdString();
                EXPECT_FALSE(child->objectName().isEmpty()) << child->metaObject()->className();
            }
        }
    }

private:
    QDialog& dialog_;
};

} // namespace kestrune
