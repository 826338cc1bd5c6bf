#include "skin/titled_dialog.h"

#include "skin/dialog_controls.h"
#include "skin/dialog_title.h"

namespace kestrune {

TitledDialog::TitledDialog(const QString& name, const QString& title, const QSize& corners, QWidget* owner)
    : SkinnedDialog(corners, owner), body_(new QVBoxLayout) {
    setObjectName(name);
    setWindowTitle(title);
    setAccessibleName(title);
    body_->setSpacing(rowGap);
}

void TitledDialog::Finish(QLayout* keys) {
    title_ = new DialogTitle(this);
    Chrome().AddTitle(title_->LabelTitle());
    Chrome().AddHandToButtons();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(windowMargin, DialogTitle::height + rowGap, windowMargin, windowMargin);
    rows->setSpacing(windowMargin);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addLayout(body_);
    rows->addLayout(keys);
}

void TitledDialog::setVisible(bool visible) {
    // Qt places a dialog before its size is known, and leaves room for a frame that this one has not.
    if (visible && !testAttribute(Qt::WA_Moved) && parentWidget() != nullptr) {
        Chrome().CentreOver(*parentWidget());
    }
    SkinnedDialog::setVisible(visible);
}

void TitledDialog::resizeEvent(QResizeEvent* event) {
    SkinnedDialog::resizeEvent(event);
    if (title_ != nullptr) {
        title_->Follow();
    }
}

} // namespace kestrune
