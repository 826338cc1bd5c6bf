#include "editors/editor_dialog.h"

#include "skin/dialog_controls.h"

#include <limits>

namespace kestrune {

namespace {
// Text begins where that of a list does.
constexpr int textInset = 2;
} // namespace

EditorDialog::EditorDialog(const QString& name, const QString& title, const QSize& corners, QWidget* owner)
    : TitledDialog(name, title, corners, owner),
      keys_(new QHBoxLayout),
      hoverGroup_(Chrome().Hover().AddGroup()) {
    keys_->setSpacing(rowGap);
}

BodyKey* EditorDialog::Equip(BodyKey* key, const QString& name) {
    key->setObjectName(name);
    Chrome().Hover().Add(hoverGroup_, keyCount_++, key);
    return key;
}

BodyKey* EditorDialog::MakeFolderKey(const QString& name, const QString& accessibleName) {
    return Equip(new BodyKey(pictures_, BodyKey::Face::Folder, accessibleName, this), name);
}

BodyKey* EditorDialog::AddKey(int index, const QString& word) {
    BodyKey* key = Equip(new BodyKey(pictures_, word, this), QStringLiteral("ImageCMD(%1)").arg(index));
    keys_->addWidget(key);
    return key;
}

QLineEdit* EditorDialog::MakeBox(const QString& name) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    box->setMaxLength(std::numeric_limits<int>::max()); // it would cut texts at 32,767 characters else
    box->setFixedHeight(fieldHeight);
    box->setTextMargins(textInset, 0, textInset, 0);
    return box;
}

QLineEdit* EditorDialog::AddField(QGridLayout* grid, int row, const QString& name, const QString& caption) {
    QLineEdit* box = MakeBox(name);
    grid->addWidget(box, row, 1);
    AddCaption(grid, row, 0, caption, box);
    return box;
}

void EditorDialog::AddCaption(QGridLayout* grid, int row, int column, const QString& caption,
                              QWidget* control) {
    QLabel* label = MakeLabel({}, caption, this);
    label->setBuddy(control);
    QString name = caption;
    control->setAccessibleName(name.remove(u':'));
    grid->addWidget(label, row, column);
}

void EditorDialog::Finish() {
    TitledDialog::Finish(keys_);
}

void ShowText(QLineEdit* box, const QString& text) {
    box->setText(text);
    box->setCursorPosition(0);
}

} // namespace kestrune
