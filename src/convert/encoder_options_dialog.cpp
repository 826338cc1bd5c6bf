#include "convert/encoder_options_dialog.h"

#include "convert/encoder_controls.h"
#include "skin/corner_sizes.h"
#include "skin/dialog_title.h"

#include <QKeyEvent>

namespace kestrune {

EncoderOptionsDialog::EncoderOptionsDialog(const QString& name, const QString& title, QWidget* parent)
    : SkinnedDialog(corners::dialog, parent), body_(new QVBoxLayout) {
    setObjectName(name);
    setWindowTitle(title);
    setAccessibleName(title);
    body_->setSpacing(rowGap);
}

void EncoderOptionsDialog::Finish() {
    buttons_ = new DialogButtons(Chrome(), this);
    title_ = new DialogTitle(this);
    Chrome().AddTitle(title_->LabelTitle());
    Chrome().AddHand(title_->ImageQuit());
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(windowMargin, DialogTitle::height + rowGap, windowMargin, windowMargin);
    rows->setSpacing(windowMargin);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addLayout(body_);
    rows->addWidget(buttons_, 0, Qt::AlignRight);
    connect(buttons_, &DialogButtons::Clicked, this, &EncoderOptionsDialog::Press);
}

void EncoderOptionsDialog::Press(int button) {
    if (button == DialogButtons::Cancel) {
        reject();
    } else if (ApplyControls() && button == DialogButtons::Ok) {
        accept();
    }
}

void EncoderOptionsDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        buttons_->ImageCMD(DialogButtons::Ok)->click();
    } else {
        SkinnedDialog::keyPressEvent(event);
    }
}

void EncoderOptionsDialog::resizeEvent(QResizeEvent* event) {
    SkinnedDialog::resizeEvent(event);
    if (title_ != nullptr) {
        title_->Follow();
    }
}

} // namespace kestrune
