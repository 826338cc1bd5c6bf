#include "encoder_options/mp3_tabs.h"

#include "encoder_options/encoder_lists.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace kestrune {

namespace {

constexpr int spinWidth = 80;
constexpr int comboWidth = 168;
constexpr int endWidth = 40;
constexpr QSize contentSize(492, 192); // of each page, within its margins

QCheckBox* MakeCheck(const char* name, const QString& text, QWidget* parent) {
    auto* check = new QCheckBox(text, parent);
    check->setObjectName(QLatin1String(name));
    return check;
}

template <size_t count>
void AddTexts(QComboBox* list, const std::array<const char*, count>& texts) {
    for (const char* text : texts) {
        list->addItem(Mp3Tabs::tr(text));
    }
}

QGridLayout* MakePageGrid(QWidget* page) {
    auto* grid = new QGridLayout(page);
    grid->setSpacing(rowGap);
    return grid;
}

void ShareHeight(QGridLayout* grid, int rows) {
    for (int row = 0; row < rows; ++row) {
        grid->setRowStretch(row, 1);
    }
}

// A slider between the names of its ends.
void AddWithEnds(QGridLayout* grid, QSlider* slider, const QString& left, const QString& right,
                 QWidget* frame) {
    QLabel* leftEnd = MakeMutedLabel(left, frame);
    QLabel* rightEnd = MakeMutedLabel(right, frame);
    for (QLabel* end : {leftEnd, rightEnd}) {
        AlignWithGroove(end);
        end->setFixedWidth(endWidth); // so that the grooves of two frames begin and end alike
    }
    rightEnd->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(leftEnd, 0, 0);
    grid->addWidget(slider, 0, 1);
    grid->addWidget(rightEnd, 0, 2);
    grid->setColumnStretch(1, 1);
}

} // namespace

Mp3Tabs::Mp3Tabs(QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("tabMP3"));
    setAccessibleName(tr("Groups of options"));
    setUsesScrollButtons(false);
    AddPage(Mp3Tab::General, MakeGeneral());
    AddPage(Mp3Tab::Filtering, MakeFiltering());
    AddPage(Mp3Tab::Vbr, MakeVbr());
    AddPage(Mp3Tab::Expert, MakeExpert());
    AddPage(Mp3Tab::Preset, MakePresets());
    AddPage(Mp3Tab::AltPreset, MakeAltPresets());
    AddPage(Mp3Tab::CommandLine, MakeCommandLine());
    ShowBitrate();
    ShowVbrBitrate();
    EnableFilter(highpass_);
    EnableFilter(lowpass_);
    EnableVbr();
}

void Mp3Tabs::AddPage(Mp3Tab tab, QWidget* page) {
    page->layout()->setContentsMargins(sideMargin, sideMargin, sideMargin, sideMargin);
    page->setMinimumSize(contentSize + QSize(2 * sideMargin, 2 * sideMargin));
    const int index = static_cast<int>(tab);
    insertTab(index, page, tr(mp3TabTexts[static_cast<size_t>(index)]));
}

QWidget* Mp3Tabs::MakeGeneral() {
    auto* page = new QWidget;
    QGridLayout* grid = MakePageGrid(page);
    frmBitrate_ = MakeFrame(QStringLiteral("frmBitrate"), tr("Bitrate"), page);
    sldrBitrate_ = MakeBitrateSlider(QStringLiteral("sldrBitrate"), tr("Bitrate"), frmBitrate_);
    AddWithEnds(MakeFrameGrid(frmBitrate_), sldrBitrate_, tr("poor"), tr("good"), frmBitrate_);
    connect(sldrBitrate_, &QSlider::valueChanged, this, &Mp3Tabs::ShowBitrate);

    QGroupBox* frmChMode = MakeFrame(QStringLiteral("frmChMode"), tr("Channels Mode"), page);
    cmbChMode_ = MakeList(QStringLiteral("cmbChMode"), tr("Channels Mode"), frmChMode);
    AddTexts(cmbChMode_, channelModeTexts);
    MakeFrameGrid(frmChMode)->addWidget(cmbChMode_, 0, 0);

    QGroupBox* frmQuality = MakeFrame(QStringLiteral("frmQuality"), tr("Encoder Quality"), page);
    sldrQuality_ = new BestAtRightSlider(frmQuality);
    sldrQuality_->setObjectName(QStringLiteral("sldrQuality"));
    sldrQuality_->setAccessibleName(tr("Encoder Quality"));
    sldrQuality_->setAccessibleDescription(tr("0 is the best, 9 the fastest"));
    sldrQuality_->setRange(0, worstQuality);
    sldrQuality_->setPageStep(2);
    sldrQuality_->setTickPosition(QSlider::TicksBelow);
    sldrQuality_->setTickInterval(1);
    AddWithEnds(MakeFrameGrid(frmQuality), sldrQuality_, tr("faster"), tr("better"), frmQuality);
    connect(sldrQuality_, &QSlider::valueChanged, this, &Mp3Tabs::QualityMoved);

    QGroupBox* frmFrequency = MakeFrame(QStringLiteral("frmFrequency"), tr("Sampling Frequency"), page);
    cmbFrequency_ = MakeFrequencyList(frmFrequency);
    MakeFrameGrid(frmFrequency)->addWidget(cmbFrequency_, 0, 0);

    grid->addWidget(frmBitrate_, 0, 0);
    grid->addWidget(frmChMode, 0, 1);
    grid->addWidget(frmQuality, 1, 0);
    grid->addWidget(frmFrequency, 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, comboWidth);
    ShareHeight(grid, 2);
    return page;
}

QGroupBox* Mp3Tabs::MakeFilter(Filter& filter, const QString& letter, const QString& kind, QWidget* page) {
    constexpr int checkIndent = 21; // where the text of a check box begins
    const BoundedSpinBox::Bounds bounds{0, largestFilterHz, filterStepHz};
    QGroupBox* frame =
        MakeFrame(QStringLiteral("frm%1Filt").arg(letter), tr("%1Pass Filter").arg(kind), page);
    filter.use = new QCheckBox(tr("%1pass filtering frequency (in Hz):").arg(kind), frame);
    filter.use->setObjectName(QStringLiteral("ch%1Filt").arg(letter));
    filter.frequency =
        new BoundedSpinBox(QStringLiteral("ud%1FiltF").arg(letter), QStringLiteral("t%1FiltF").arg(letter),
                           tr("%1pass filtering frequency in Hz").arg(kind), bounds, frame);
    filter.widthLabel = MakeLabel(QStringLiteral("lbl%1FiltW").arg(letter),
                                  tr("Width of %1pass filter (in Hz):").arg(kind), frame);
    filter.widthLabel->setContentsMargins(checkIndent, 0, 0, 0);
    filter.width =
        new BoundedSpinBox(QStringLiteral("ud%1FiltW").arg(letter), QStringLiteral("t%1FiltW").arg(letter),
                           tr("Width of %1pass filter in Hz").arg(kind), bounds, frame);
    filter.widthLabel->setBuddy(filter.width);
    filter.frequency->setFixedWidth(spinWidth);
    filter.width->setFixedWidth(spinWidth);
    QGridLayout* grid = MakeFrameGrid(frame);
    grid->addWidget(filter.use, 0, 0);
    grid->addWidget(filter.frequency, 0, 1);
    grid->addWidget(filter.widthLabel, 1, 0);
    grid->addWidget(filter.width, 1, 1);
    grid->setColumnStretch(0, 1);
    connect(filter.use, &QCheckBox::toggled, this, [this, &filter] { EnableFilter(filter); });
    return frame;
}

QWidget* Mp3Tabs::MakeFiltering() {
    auto* page = new QWidget;
    QGridLayout* grid = MakePageGrid(page);
    grid->addWidget(MakeFilter(highpass_, QStringLiteral("H"), tr("High"), page), 0, 0);
    grid->addWidget(MakeFilter(lowpass_, QStringLiteral("L"), tr("Low"), page), 1, 0);
    ShareHeight(grid, 2);
    return page;
}

QGroupBox* Mp3Tabs::MakeVbrAdvanced(QWidget* page) {
    frmVbrAdvanced_ = MakeFrame(QStringLiteral("frmVbrAdvanced"), tr("Advanced"), page);
    chWriteVBRHeader_ = MakeCheck("chWriteVBRHeader", tr("Write VBR Header"), frmVbrAdvanced_);
    chStrictlyEnforceMinBitrate_ =
        MakeCheck("chStrictlyEnforceMinBitrate", tr("Strictly enforce minimum bitrate"), frmVbrAdvanced_);
    QGridLayout* grid = MakeFrameGrid(frmVbrAdvanced_);
    grid->addWidget(chWriteVBRHeader_, 0, 0);
    grid->addWidget(chStrictlyEnforceMinBitrate_, 1, 0);
    return frmVbrAdvanced_;
}

QGroupBox* Mp3Tabs::MakeVbrBitrate(QWidget* page) {
    frmVbrBitrate_ = MakeFrame(QStringLiteral("frmVbrBitrate"), tr("Maximum VBR Bitrate"), page);
    sldrVbrBitrate_ =
        MakeBitrateSlider(QStringLiteral("sldrVbrBitrate"), tr("Maximum VBR Bitrate"), frmVbrBitrate_);
    lblVbrBitrate_ = MakeLabel(QStringLiteral("lblVbrBitrate"), {}, frmVbrBitrate_);
    QGridLayout* grid = MakeFrameGrid(frmVbrBitrate_);
    grid->addWidget(sldrVbrBitrate_, 0, 0);
    grid->addWidget(lblVbrBitrate_, 0, 1);
    // As wide as its longest text, so that the slider keeps its length.
    lblVbrBitrate_->setFixedWidth(
        lblVbrBitrate_->fontMetrics().horizontalAdvance(CurrentBitrateText(lastBitRateIndex)) + rowGap);
    lblVbrBitrate_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    AlignWithGroove(lblVbrBitrate_);
    grid->setColumnStretch(0, 1);
    connect(sldrVbrBitrate_, &QSlider::valueChanged, this, &Mp3Tabs::ShowVbrBitrate);
    return frmVbrBitrate_;
}

QWidget* Mp3Tabs::MakeVbr() {
    auto* page = new QWidget;
    cmbVBRCodingMethod_ = MakeList(QStringLiteral("cmbVBRCodingMethod"), tr("Coding Method"), page);
    AddTexts(cmbVBRCodingMethod_, vbrMethodTexts);
    connect(cmbVBRCodingMethod_, &QComboBox::currentIndexChanged, this, &Mp3Tabs::EnableVbr);
    lblVbrQuality_ = MakeLabel(QStringLiteral("lblVbrQuality"), tr("VBR Quality:"), page);
    udVbrQuality_ = new BoundedSpinBox(QStringLiteral("udVbrQuality"), QStringLiteral("txtVbrQuality"),
                                       tr("VBR Quality"), {0, worstQuality, 1}, page);
    lblVbrQuality_->setBuddy(udVbrQuality_);
    lblAbrBitrate_ = MakeLabel(QStringLiteral("lblAbrBitrate"), tr("Targed bitrate for ABR:"), page);
    udAbrBitrate_ = new BoundedSpinBox(QStringLiteral("udAbrBitrate"), QStringLiteral("txtAbrBitrate"),
                                       tr("Target bitrate for ABR"), {leastAbrKbps, largestAbrKbps, 1}, page);
    lblAbrBitrate_->setBuddy(udAbrBitrate_);

    auto* form = new QGridLayout;
    form->setSpacing(rowGap);
    form->addWidget(MakeLabel({}, tr("Coding Method:"), page), 0, 0);
    form->addWidget(cmbVBRCodingMethod_, 0, 1);
    form->addWidget(lblVbrQuality_, 1, 0);
    form->addWidget(udVbrQuality_, 1, 1);
    form->addWidget(lblAbrBitrate_, 2, 0);
    form->addWidget(udAbrBitrate_, 2, 1);
    form->setColumnStretch(0, 1);
    form->setColumnMinimumWidth(1, spinWidth);
    QGridLayout* grid = MakePageGrid(page);
    grid->addLayout(form, 0, 0);
    grid->addWidget(MakeVbrAdvanced(page), 0, 1);
    grid->addWidget(MakeVbrBitrate(page), 1, 0, 1, 2);
    grid->setHorizontalSpacing(windowMargin);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(1, 1);
    return page;
}

QWidget* Mp3Tabs::MakeExpert() {
    auto* page = new QWidget;
    cmbATHControl_ = MakeList(QStringLiteral("cmbATHControl"), tr("ATH Control"), page);
    AddTexts(cmbATHControl_, athControlTexts);
    cmbEmphasis_ = MakeList(QStringLiteral("cmbEmphasis"), tr("De-emphasis"), page);
    AddTexts(cmbEmphasis_, emphasisTexts);
    chErrorProtection_ = MakeCheck("chErrorProtection", tr("include CRC -Checksums"), page);
    chBlockType_ = MakeCheck("chBlockType", tr("allow block types to differ between channels"), page);
    chBitReservoir_ = MakeCheck("chBitReservoir", tr("bit reservoir"), page);
    chShortBlocks_ = MakeCheck("chShortBlocks", tr("short blocks"), page);
    chStrictlyISOCompliance_ =
        MakeCheck("chStrictlyISOCompliance", tr("comply as much as possible to ISO MPEG spec"), page);
    // The lists at the left, below their captions; what is switched at the right.
    QGridLayout* grid = MakePageGrid(page);
    grid->addWidget(MakeLabel({}, tr("ATH Control:"), page), 0, 0);
    grid->addWidget(cmbATHControl_, 1, 0);
    grid->addWidget(MakeLabel({}, tr("De-emphasis :"), page), 2, 0);
    grid->addWidget(cmbEmphasis_, 3, 0);
    int row = 0;
    for (QCheckBox* check :
         {chErrorProtection_, chBlockType_, chBitReservoir_, chShortBlocks_, chStrictlyISOCompliance_}) {
        grid->setRowMinimumHeight(row, fieldHeight);
        grid->addWidget(check, row++, 1);
    }
    grid->setColumnMinimumWidth(0, comboWidth);
    grid->setHorizontalSpacing(2 * windowMargin);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row, 1);
    return page;
}

void Mp3Tabs::ShowBitrate() {
    const QString text = CurrentBitrateText(sldrBitrate_->value());
    frmBitrate_->setTitle(text);
    sldrBitrate_->setAccessibleDescription(text);
}

void Mp3Tabs::ShowVbrBitrate() {
    const QString text = CurrentBitrateText(sldrVbrBitrate_->value());
    lblVbrBitrate_->setText(text);
    sldrVbrBitrate_->setAccessibleDescription(text);
}

void Mp3Tabs::EnableFilter(const Filter& filter) {
    const bool used = filter.use->isChecked();
    filter.frequency->setEnabled(used);
    filter.widthLabel->setEnabled(used);
    filter.width->setEnabled(used);
}

void Mp3Tabs::EnableVbr() {
    const Mp3VbrEnabled enabled = VbrControlsEnabled(cmbVBRCodingMethod_->currentIndex());
    lblVbrQuality_->setEnabled(enabled.quality);
    udVbrQuality_->setEnabled(enabled.quality);
    lblAbrBitrate_->setEnabled(enabled.abrBitrate);
    udAbrBitrate_->setEnabled(enabled.abrBitrate);
    for (QWidget* control :
         std::initializer_list<QWidget*>{frmVbrBitrate_, lblVbrBitrate_, sldrVbrBitrate_, frmVbrAdvanced_,
                                         chWriteVBRHeader_, chStrictlyEnforceMinBitrate_}) {
        control->setEnabled(enabled.rest);
    }
}

Mp3Controls Mp3Tabs::Shown() {
    return {.cmbFrequency = cmbFrequency_->currentIndex(),
            .sldrBitrate = sldrBitrate_->value(),
            .cmbChMode = cmbChMode_->currentIndex(),
            .sldrQuality = sldrQuality_->value(),
            .chHFilt = highpass_.use->isChecked(),
            .udHFiltF = highpass_.frequency->ValueNow(),
            .udHFiltW = highpass_.width->ValueNow(),
            .chLFilt = lowpass_.use->isChecked(),
            .udLFiltF = lowpass_.frequency->ValueNow(),
            .udLFiltW = lowpass_.width->ValueNow(),
            .cmbVBRCodingMethod = cmbVBRCodingMethod_->currentIndex(),
            .udVbrQuality = udVbrQuality_->ValueNow(),
            .udAbrBitrate = udAbrBitrate_->ValueNow(),
            .sldrVbrBitrate = sldrVbrBitrate_->value(),
            .chWriteVBRHeader = chWriteVBRHeader_->isChecked(),
            .chStrictlyEnforceMinBitrate = chStrictlyEnforceMinBitrate_->isChecked(),
            .cmbATHControl = cmbATHControl_->currentIndex(),
            .cmbEmphasis = cmbEmphasis_->currentIndex(),
            .chErrorProtection = chErrorProtection_->isChecked(),
            .chBlockType = chBlockType_->isChecked(),
            .chBitReservoir = chBitReservoir_->isChecked(),
            .chShortBlocks = chShortBlocks_->isChecked(),
            .chStrictlyISOCompliance = chStrictlyISOCompliance_->isChecked(),
            .txtCommLine = txtCommLine_->text()};
}

void Mp3Tabs::Show(const Mp3Controls& shown) {
    cmbFrequency_->setCurrentIndex(shown.cmbFrequency);
    sldrQuality_->setValue(shown.sldrQuality);
    sldrBitrate_->setValue(shown.sldrBitrate);
    sldrVbrBitrate_->setValue(shown.sldrVbrBitrate);
    udVbrQuality_->setValue(shown.udVbrQuality);
    cmbVBRCodingMethod_->setCurrentIndex(shown.cmbVBRCodingMethod);
    udAbrBitrate_->setValue(shown.udAbrBitrate);
    cmbChMode_->setCurrentIndex(shown.cmbChMode);
    chWriteVBRHeader_->setChecked(shown.chWriteVBRHeader);
    chStrictlyEnforceMinBitrate_->setChecked(shown.chStrictlyEnforceMinBitrate);
    highpass_.use->setChecked(shown.chHFilt);
    highpass_.frequency->setValue(shown.udHFiltF);
    highpass_.width->setValue(shown.udHFiltW);
    lowpass_.use->setChecked(shown.chLFilt);
    lowpass_.frequency->setValue(shown.udLFiltF);
    lowpass_.width->setValue(shown.udLFiltW);
    cmbATHControl_->setCurrentIndex(shown.cmbATHControl);
    cmbEmphasis_->setCurrentIndex(shown.cmbEmphasis);
    chErrorProtection_->setChecked(shown.chErrorProtection);
    chBlockType_->setChecked(shown.chBlockType);
    chBitReservoir_->setChecked(shown.chBitReservoir);
    chShortBlocks_->setChecked(shown.chShortBlocks);
    chStrictlyISOCompliance_->setChecked(shown.chStrictlyISOCompliance);
}

} // namespace kestrune
