#include "editors/frm_cue_list.h"

#include "skin/dialog_controls.h"

#include <QKeyEvent>
#include <QSignalBlocker>

namespace kestrune {

namespace {

constexpr int numberWidth = 104;
constexpr int textWidth = 264;

} // namespace

FrmCueList::FrmCueList(KSTAudioInformation2& information, QWidget* owner)
    : EditorDialog(QStringLiteral("frmCueList"), tr("CueList"), corners::dialog, owner),
      editor_(information) {
    MakeControls();
    BodyKey* add = AddKey(0, tr("Add"));
    update_ = AddKey(1, tr("Update"));
    BodyKey* remove = AddKey(2, tr("Delete"));
    Keys().insertStretch(0);
    Finish();
    connect(&editor_, &CueEditor::Shown, this, &FrmCueList::ShowCue);
    connect(udCueIndex_, &QSpinBox::valueChanged, &editor_, &CueEditor::ShowCue);
    connect(add, &QAbstractButton::clicked, this, [this] { editor_.Add(Typed()); });
    connect(update_, &QAbstractButton::clicked, this, [this] { editor_.Update(Typed()); });
    connect(remove, &QAbstractButton::clicked, this, [this] { editor_.Delete(); });
    udCueIndex_->setFocus();
}

void FrmCueList::MakeControls() {
    auto* grid = new QGridLayout;
    grid->setSpacing(rowGap);
    udCueIndex_ = new BoundedSpinBox(QStringLiteral("udCueIndex"), QStringLiteral("tCueIndex"), tr("Index"),
                                     {0, 0, 1}, this);
    udCueIndex_->setFixedWidth(numberWidth);
    udCueIndex_->setAlignment(Qt::AlignLeft);
    // A number is gone to when it is typed to its end.
    udCueIndex_->setKeyboardTracking(false);
    grid->addWidget(udCueIndex_, 0, 1, Qt::AlignLeft);
    AddCaption(grid, 0, 0, tr("Index:"), udCueIndex_);
    udCueIndex_->findChild<QLineEdit*>()->setAccessibleName(tr("Index"));
    tPosition_ = AddField(grid, 1, QStringLiteral("tPosition"), tr("Position:"));
    tLength_ = AddField(grid, 2, QStringLiteral("tLength"), tr("Length:"));
    tLabel_ = AddField(grid, 3, QStringLiteral("tLabel"), tr("Label:"));
    tNote_ = AddField(grid, 4, QStringLiteral("tNote"), tr("Note:"));
    tText_ = AddField(grid, 5, QStringLiteral("tText"), tr("Text:"));
    tPosition_->setFixedWidth(numberWidth);
    tLength_->setFixedWidth(numberWidth);
    tText_->setMinimumWidth(textWidth);
    Body().addLayout(grid);
}

void FrmCueList::Load() {
    editor_.Load();
    Chrome().Centre();
}

void FrmCueList::ShowCue() {
    const QSignalBlocker noPaging(udCueIndex_);
    udCueIndex_->setRange(editor_.Minimum(), editor_.Maximum());
    udCueIndex_->setValue(editor_.Value());
    const CueTexts& texts = editor_.Texts();
    ShowText(tPosition_, texts.tPosition);
    ShowText(tLength_, texts.tLength);
    ShowText(tLabel_, texts.tLabel);
    ShowText(tNote_, texts.tNote);
    ShowText(tText_, texts.tText);
}

CueTexts FrmCueList::Typed() const {
    return {tPosition_->text(), tLength_->text(), tLabel_->text(), tNote_->text(), tText_->text()};
}

void FrmCueList::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        EditorDialog::keyPressEvent(event);
    } else if (!udCueIndex_->hasFocus()) {
        // In the spinner Enter has gone to the cue of that number.
        update_->click();
    }
}

} // namespace kestrune
