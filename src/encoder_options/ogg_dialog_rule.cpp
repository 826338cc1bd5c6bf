#include "encoder_options/ogg_dialog_rule.h"

#include "encoder_options/encoder_lists.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace kestrune {

namespace {

constexpr double qualityScale = 100;
constexpr qint32 nominalWithQualityKbps = 128;
constexpr qint32 byBitrate = -1;

qint16 RateOfSlider(int sliderIndex) {
    return static_cast<qint16>(BitRateAt(sliderIndex));
}

} // namespace

QString OggBitrateText(int sliderIndex) {
    return QCoreApplication::translate("kestrune::OggDialog", "%1 kbit").arg(BitRateAt(sliderIndex));
}

QString OggQualityText(int quality) {
    return QString::number(quality / qualityScale);
}

OggDialogRule::OggDialogRule(OggTarget target, qint32 sampleRateHz, qint32 channels)
    : target_(std::move(target)),
      frequencyIndex_(SamplingFrequencyIndex(sampleRateHz)),
      channelIndex_(IndexInList(channels - 1, oggChannelTexts.size(), 1)) {
    TickVbr(vbrEnabled_);
    TickQuality(qualityEnabled_);
}

void OggDialogRule::ChooseFrequency(int index) {
    frequencyIndex_ = std::clamp(index, 0, lastFrequencyIndex);
}

void OggDialogRule::ChooseChannels(int index) {
    channelIndex_ = std::clamp(index, 0, static_cast<int>(oggChannelTexts.size()) - 1);
}

void OggDialogRule::MoveBitrate(int sliderIndex) {
    bitrate_ = RateOfSlider(sliderIndex);
}

void OggDialogRule::MoveMinBitrate(int sliderIndex) {
    minBitrate_ = RateOfSlider(sliderIndex);
}

void OggDialogRule::MoveMaxBitrate(int sliderIndex) {
    maxBitrate_ = RateOfSlider(sliderIndex);
}

void OggDialogRule::MoveQuality(int value) {
    quality_ = static_cast<qint16>(std::clamp(value, 0, largestOggQuality));
}

void OggDialogRule::TickVbr(bool ticked) {
    vbrEnabled_ = ticked;
    // The frame that is switched on is frmVbr, the one that is switched off frmQuality, on purpose.
    if (ticked) {
        enabled_.frmVbr = true;
    } else {
        enabled_.frmQuality = false;
    }
    enabled_.sldrMinBitrate = ticked;
    enabled_.sldrMaxBitrate = ticked;
    enabled_.lblMinBitrate = ticked;
    enabled_.lblMaxBitrate = ticked;
}

void OggDialogRule::TickQuality(bool ticked) {
    qualityEnabled_ = ticked;
    enabled_.frmVbr = false;
    enabled_.sldrQuality = ticked;
    enabled_.chVbr = !ticked;
    enabled_.sldrBitrate = !ticked;
    enabled_.lblBitrate = !ticked;
    if (!ticked) {
        TickVbr(vbrEnabled_);
        return;
    }
    enabled_.frmQuality = true;
    enabled_.sldrMinBitrate = false;
    enabled_.sldrMaxBitrate = false;
    enabled_.lblMinBitrate = false;
    enabled_.lblMaxBitrate = false;
}

bool OggDialogRule::SetBitrates(qint32 minimumKbps, qint32 maximumKbps) {
    const qint32 frequencyHz = SamplingFrequencyAt(frequencyIndex_);
    const qint32 channels = channelIndex_ + 1;
    if (!target_.file.IsAvailableFormatOggVorbis(frequencyHz, channels, bitrate_, minimumKbps, maximumKbps)) {
        return false;
    }
    target_.file.SetFormatOggVorbis(frequencyHz, channels, bitrate_, minimumKbps, maximumKbps, byBitrate);
    return true;
}

bool OggDialogRule::ApplyOgg() {
    bool isSet = true;
    if (qualityEnabled_) {
        target_.file.SetFormatOggVorbis(SamplingFrequencyAt(frequencyIndex_), channelIndex_ + 1,
                                        nominalWithQualityKbps, 0, 0, quality_);
    } else if (vbrEnabled_) {
        isSet = SetBitrates(minBitrate_, maxBitrate_);
    } else {
        isSet = SetBitrates(0, 0);
    }
    if (!isSet) {
        target_.prompts.Message(QCoreApplication::translate("kestrune::OggDialog", "Incorrect format"),
                                PromptIcon::Critical);
        return false;
    }
    if (target_.showText) {
        target_.showText(target_.file.GetFormatText());
    }
    return true;
}

} // namespace kestrune
