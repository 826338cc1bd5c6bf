#include "encoder_options/ogg_dialog.h"

#include "encoder_options/encoder_controls.h"
#include "encoder_options/encoder_lists.h"
#include "skin/dialog_controls.h"

#include <QGridLayout>

namespace kestrune {

namespace {

constexpr qint32 ripperRateHz = 44100;
constexpr qint32 ripperChannels = 2;
constexpr int bodyWidth = 448;
constexpr int captionWidth = 64;
constexpr int valueWidth = 48;
constexpr int qualityStep = 10;
constexpr int frameInset = 3; // by which a frame takes its contents in beside their margins

// What a slider sets, before it.
void AddCaption(QGridLayout* grid, int row, const QString& text) {
    QLabel* caption = MakeMutedLabel(text, grid->parentWidget());
    caption->setFixedWidth(captionWidth);
    AlignWithGroove(caption);
    grid->addWidget(caption, row, 0);
}

} // namespace

OggDialog::OggDialog(const OggTarget& target, qint32 sampleRateHz, qint32 channels, QWidget* parent)
    : EncoderOptionsDialog(QStringLiteral("ConverterfrmOgg"), tr("Ogg Vorbis Option"), parent),
      rule_(target, sampleRateHz, channels) {
    Load();
}

OggDialog::OggDialog(AudioFormat& formatObject, UserPrompts& prompts, QWidget* parent)
    : EncoderOptionsDialog(QStringLiteral("RipfrmOgg"), tr("Ogg Vorbis Option"), parent),
      rule_({formatObject, prompts}, ripperRateHz, ripperChannels) {
    Load();
}

void OggDialog::Load() {
    auto* top = new QHBoxLayout;
    top->setSpacing(rowGap);
    top->addWidget(MakeFrequency(), 1);
    top->addWidget(MakeChannels(), 1);
    Body().addLayout(top);
    Body().addWidget(MakeOption());
    Body().addWidget(MakeBitrate());
    Body().addWidget(MakeVbr());
    Body().addWidget(MakeQuality());
    frmVbr_->setMinimumWidth(bodyWidth);
    connect(cmbFrequency_, &QComboBox::currentIndexChanged, this,
            [this](int index) { rule_.ChooseFrequency(index); });
    connect(cmbChMode_, &QComboBox::currentIndexChanged, this,
            [this](int index) { rule_.ChooseChannels(index); });
    connect(sldrQuality_, &QSlider::valueChanged, this, [this](int value) {
        rule_.MoveQuality(value);
        ShowQuality();
    });
    connect(chVbr_, &QCheckBox::toggled, this, [this](bool ticked) {
        rule_.TickVbr(ticked);
        ShowEnabled();
    });
    connect(chQuality_, &QCheckBox::toggled, this, [this](bool ticked) {
        rule_.TickQuality(ticked);
        ShowEnabled();
    });
    ShowQuality();
    ShowEnabled();
    Finish();
    cmbFrequency_->setFocus();
}

QGroupBox* OggDialog::MakeFrequency() {
    QGroupBox* frame = MakeFrame(QStringLiteral("frmFrequency"), tr("Sampling Frequency"), this);
    cmbFrequency_ = MakeFrequencyList(frame);
    cmbFrequency_->setCurrentIndex(rule_.FrequencyIndex());
    MakeFrameGrid(frame)->addWidget(cmbFrequency_, 0, 0);
    return frame;
}

QGroupBox* OggDialog::MakeChannels() {
    QGroupBox* frame = MakeFrame(QStringLiteral("frmChMode"), tr("Channels Mode"), this);
    cmbChMode_ = MakeList(QStringLiteral("cmbChMode"), tr("Channels Mode"), frame);
    for (const char* text : oggChannelTexts) {
        cmbChMode_->addItem(tr(text));
    }
    cmbChMode_->setCurrentIndex(rule_.ChannelIndex());
    MakeFrameGrid(frame)->addWidget(cmbChMode_, 0, 0);
    return frame;
}

QGroupBox* OggDialog::MakeOption() {
    QGroupBox* frame = MakeFrame(QStringLiteral("frmOption"), tr("Option"), this);
    chQuality_ = new QCheckBox(tr("Quality Enabled"), frame);
    chQuality_->setObjectName(QStringLiteral("chQuality"));
    chQuality_->setChecked(rule_.QualityEnabled());
    chVbr_ = new QCheckBox(tr("VBR Enabled"), frame);
    chVbr_->setObjectName(QStringLiteral("chVbr"));
    chVbr_->setChecked(rule_.VbrEnabled());
    QGridLayout* grid = MakeFrameGrid(frame);
    grid->addWidget(chQuality_, 0, 0);
    grid->addWidget(chVbr_, 0, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    // The second box stands below the list of the frame at the right.
    grid->setHorizontalSpacing(rowGap + 2 * (sideMargin + frameInset));
    return frame;
}

void OggDialog::AddRate(Rate& rate, QGridLayout* grid, int row, const QString& name, const QString& caption,
                        void (OggDialogRule::*take)(int)) {
    QWidget* frame = grid->parentWidget();
    rate.slider = MakeBitrateSlider(QStringLiteral("sldr%1").arg(name), caption, frame);
    rate.slider->setValue(*BitRateIndex(rule_.Bitrate()));
    rate.label = MakeLabel(QStringLiteral("lbl%1").arg(name), {}, frame);
    rate.label->setFixedWidth(valueWidth);
    rate.label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    AlignWithGroove(rate.label);
    const auto show = [&rate] {
        const QString text = OggBitrateText(rate.slider->value());
        rate.label->setText(text);
        rate.slider->setAccessibleDescription(text);
    };
    show();
    connect(rate.slider, &QSlider::valueChanged, this, [this, show, take](int index) {
        (rule_.*take)(index);
        show();
    });
    grid->addWidget(rate.slider, row, 1);
    grid->addWidget(rate.label, row, 2);
}

QGroupBox* OggDialog::MakeBitrate() {
    frmBitrate_ = MakeFrame(QStringLiteral("frmBitrate"), tr("Bitrate"), this);
    QGridLayout* grid = MakeFrameGrid(frmBitrate_);
    AddRate(bitrate_, grid, 0, QStringLiteral("Bitrate"), tr("Bitrate"), &OggDialogRule::MoveBitrate);
    AddCaption(grid, 0, tr("Nominal"));
    return frmBitrate_;
}

QGroupBox* OggDialog::MakeVbr() {
    frmVbr_ = MakeFrame(QStringLiteral("frmVbr"), tr("VBR"), this);
    QGridLayout* grid = MakeFrameGrid(frmVbr_);
    AddRate(minBitrate_, grid, 0, QStringLiteral("MinBitrate"), tr("Minimum bitrate"),
            &OggDialogRule::MoveMinBitrate);
    AddRate(maxBitrate_, grid, 1, QStringLiteral("MaxBitrate"), tr("Maximum bitrate"),
            &OggDialogRule::MoveMaxBitrate);
    AddCaption(grid, 0, tr("Minimum"));
    AddCaption(grid, 1, tr("Maximum"));
    return frmVbr_;
}

QGroupBox* OggDialog::MakeQuality() {
    frmQuality_ = MakeFrame(QStringLiteral("frmQuality"), tr("Quality (Compression)"), this);
    sldrQuality_ = new QSlider(Qt::Horizontal, frmQuality_);
    sldrQuality_->setObjectName(QStringLiteral("sldrQuality"));
    sldrQuality_->setAccessibleName(tr("Quality (Compression)"));
    sldrQuality_->setRange(0, largestOggQuality);
    sldrQuality_->setSingleStep(qualityStep);
    sldrQuality_->setPageStep(oggQualityTick);
    sldrQuality_->setTickPosition(QSlider::TicksBelow);
    sldrQuality_->setTickInterval(oggQualityTick);
    sldrQuality_->setValue(rule_.Quality());
    quality_ = MakeLabel(QStringLiteral("lblQuality"), {}, frmQuality_);
    quality_->setFixedWidth(valueWidth);
    quality_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    AlignWithGroove(quality_);
    QGridLayout* grid = MakeFrameGrid(frmQuality_);
    AddCaption(grid, 0, tr("Quality"));
    grid->addWidget(sldrQuality_, 0, 1);
    grid->addWidget(quality_, 0, 2);
    return frmQuality_;
}

void OggDialog::ShowQuality() {
    const QString text = OggQualityText(sldrQuality_->value());
    sldrQuality_->setToolTip(text);
    sldrQuality_->setAccessibleDescription(text);
    quality_->setText(text);
}

void OggDialog::ShowEnabled() {
    const OggEnabled& enabled = rule_.Enabled();
    chVbr_->setEnabled(enabled.chVbr);
    frmBitrate_->setEnabled(enabled.sldrBitrate);
    bitrate_.slider->setEnabled(enabled.sldrBitrate);
    bitrate_.label->setEnabled(enabled.lblBitrate);
    frmVbr_->setEnabled(enabled.frmVbr);
    minBitrate_.slider->setEnabled(enabled.sldrMinBitrate);
    maxBitrate_.slider->setEnabled(enabled.sldrMaxBitrate);
    minBitrate_.label->setEnabled(enabled.lblMinBitrate);
    maxBitrate_.label->setEnabled(enabled.lblMaxBitrate);
    frmQuality_->setEnabled(enabled.frmQuality);
    sldrQuality_->setEnabled(enabled.sldrQuality);
    quality_->setEnabled(enabled.sldrQuality);
}

bool OggDialog::ApplyControls() {
    return rule_.ApplyOgg();
}

} // namespace kestrune
