#include "encoder_options/encoder_options_dialog.h"

#include "skin/corner_sizes.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace kestrune {

EncoderOptionsDialog::EncoderOptionsDialog(const QString& name, const QString& title, QWidget* parent)
    : TitledDialog(name, title, corners::dialog, parent) {}

void EncoderOptionsDialog::Finish() {
    buttons_ = new DialogButtons(Chrome(), this);
    auto* keys = new QHBoxLayout;
    keys->addWidget(buttons_, 0, Qt::AlignRight);
    TitledDialog::Finish(keys);
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
        TitledDialog::keyPressEvent(event);
    }
}

} // namespace kestrune
