#include "editors/editor_dialog.h"

#include "convert/encoder_controls.h"
#include "skin/dialog_title.h"

namespace kestrune {

namespace {
// Text begins where that of a list does.
constexpr int textInset = 2;
} // namespace

EditorDialog::EditorDialog(const QString& name, const QString& title, const QSize& corners, QWidget* owner)
    : SkinnedDialog(corners, owner),
      pictures_(QStringLiteral(":/skin/editor_buttons.svg")),
      body_(new QVBoxLayout),
      keys_(new QHBoxLayout),
      hoverGroup_(Chrome().Hover().AddGroup()) {
    setObjectName(name);
    setWindowTitle(title);
    setAccessibleName(title);
    body_->setSpacing(rowGap);
    keys_->setSpacing(rowGap);
}

EditorKey* EditorDialog::MakeKey(const QString& name, const QString& accessibleName, KeyFace face) {
    auto* key = new EditorKey(pictures_, face, this);
    key->setObjectName(name);
    key->setAccessibleName(accessibleName);
    Chrome().Hover().Add(hoverGroup_, keyCount_++, key);
    Chrome().AddHand(key);
    return key;
}

EditorKey* EditorDialog::AddKey(int index, const QString& accessibleName, KeyFace face) {
    EditorKey* key = MakeKey(QStringLiteral("ImageCMD(%1)").arg(index), accessibleName, face);
    keys_->addWidget(key);
    return key;
}

QLineEdit* EditorDialog::MakeBox(const QString& name) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
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
    title_ = new DialogTitle(this);
    Chrome().AddTitle(title_->LabelTitle());
    Chrome().AddHand(title_->ImageQuit());
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(windowMargin, DialogTitle::height + rowGap, windowMargin, windowMargin);
    rows->setSpacing(windowMargin);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addLayout(body_);
    rows->addLayout(keys_);
}

void EditorDialog::resizeEvent(QResizeEvent* event) {
    SkinnedDialog::resizeEvent(event);
    if (title_ != nullptr) {
        title_->Follow();
    }
}

void ShowText(QLineEdit* box, const QString& text) {
    box->setText(text);
    box->setCursorPosition(0);
}

} // namespace kestrune
