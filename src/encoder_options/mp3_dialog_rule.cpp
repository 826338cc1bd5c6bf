#include "encoder_options/mp3_dialog_rule.h"

#include "encoder_options/encoder_lists.h"
#include "encoder_options/mp3_presets.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace kestrune {

namespace {

constexpr qint32 filterOff = -1;

int ShownHz(qint32 hz) {
    return std::clamp<int>(hz, 0, largestFilterHz);
}

} // namespace

Mp3VbrEnabled VbrControlsEnabled(int codingMethodIndex) {
    if (codingMethodIndex == vbrMethodNone) {
        return {};
    }
    const bool isAbr = codingMethodIndex == vbrMethodAbr;
    return {!isAbr, isAbr, true};
}

QString CurrentBitrateText(int sliderIndex) {
    return QCoreApplication::translate("kestrune::Mp3Tabs", "Current bitrate: %1 kbit")
        .arg(BitRateAt(sliderIndex));
}

QString Mp3Summary(const Mp3Options& options) {
    QString rate = QCoreApplication::translate("kestrune::Mp3Tabs", "%1 kbit").arg(options.bitrate);
    if (options.vbrMethod + 1 == vbrMethodAbr) {
        rate = QCoreApplication::translate("kestrune::Mp3Tabs", "%1 kbit average").arg(options.abrBitrate);
    } else if (options.vbrMethod + 1 != vbrMethodNone) {
        const int method = IndexInList(options.vbrMethod + 1, vbrMethodTexts.size(), 1);
        rate = QCoreApplication::translate("kestrune::Mp3Tabs", "VBR quality %1, %2")
                   .arg(options.vbrQuality)
                   .arg(QCoreApplication::translate("kestrune::Mp3Tabs",
                                                    vbrMethodTexts[static_cast<size_t>(method)]));
    }
    const int mode = IndexInList(options.channelMode, channelModeTexts.size(), 1);
    return QStringLiteral("%1, %2").arg(
        rate, QCoreApplication::translate("kestrune::Mp3Tabs", channelModeTexts[static_cast<size_t>(mode)]));
}

qint32 Mp2ChannelCode(const Mp3Options& options) {
    return options.channels == 1 ? 1 : options.channels + options.channelMode - 1;
}

Mp3DialogRule::Mp3DialogRule(Mp3Options& options, Mp3Target target)
    : options_(options), target_(std::move(target)) {}

Mp3Controls Mp3DialogRule::ShowOptions(const Mp3Controls& shown) const {
    Mp3Controls next = shown;
    next.cmbFrequency = SamplingFrequencyIndex(options_.frequency);
    next.sldrQuality = std::clamp<int>(options_.quality, 0, worstQuality);
    next.sldrBitrate = BitRateIndex(options_.bitrate).value_or(shown.sldrBitrate);
    next.sldrVbrBitrate = BitRateIndex(options_.maxVbrBitrate).value_or(shown.sldrVbrBitrate);
    next.udVbrQuality = std::clamp<int>(options_.vbrQuality, 0, worstQuality);
    next.cmbVBRCodingMethod =
        IndexInList(options_.vbrMethod + 1, vbrMethodTexts.size(), shown.cmbVBRCodingMethod);
    next.udAbrBitrate = std::clamp<int>(options_.abrBitrate, leastAbrKbps, largestAbrKbps);
    next.cmbChMode = IndexInList(options_.channelMode, channelModeTexts.size(), shown.cmbChMode);
    next.chWriteVBRHeader = options_.writeVbrHeader;
    next.chStrictlyEnforceMinBitrate = options_.enforceMinBitrate;
    next.chHFilt = options_.highpassFrequency != filterOff;
    if (next.chHFilt) {
        next.udHFiltF = ShownHz(options_.highpassFrequency);
    }
    next.udHFiltW = ShownHz(options_.highpassWidth);
    next.chLFilt = options_.lowpassFrequency != filterOff;
    if (next.chLFilt) {
        next.udLFiltF = ShownHz(options_.lowpassFrequency);
    }
    next.udLFiltW = ShownHz(options_.lowpassWidth);
    next.cmbATHControl = IndexInList(options_.athControl, athControlTexts.size(), shown.cmbATHControl);
    next.cmbEmphasis = IndexInList(options_.deEmphasis, emphasisTexts.size(), shown.cmbEmphasis);
    next.chErrorProtection = options_.crcProtection;
    next.chBlockType = options_.blockTypesDiffer;
    next.chBitReservoir = options_.bitReservoir;
    next.chShortBlocks = options_.shortBlocks;
    next.chStrictlyISOCompliance = options_.isoCompliance;
    return next;
}

void Mp3DialogRule::ChooseQuality(int quality) {
    options_.quality = static_cast<qint16>(std::clamp(quality, 0, worstQuality));
}

void Mp3DialogRule::Take(const Mp3Controls& shown) {
    options_.frequency = SamplingFrequencyAt(shown.cmbFrequency);
    options_.vbrMethod = shown.cmbVBRCodingMethod - 1;
    const qint32 bitrate = BitRateAt(shown.sldrBitrate);
    if (bitrate != options_.bitrate || options_.vbrMethod == Mp3NoVbr) {
        // The least one is the one chosen here, and no longer that of a preset.
        options_.leastVbrBitrate = 0;
    }
    options_.bitrate = bitrate;
    options_.maxVbrBitrate = BitRateAt(shown.sldrVbrBitrate);
    options_.athControl = shown.cmbATHControl;
    options_.channels = shown.cmbChMode == 0 ? 1 : 2;
    options_.channelMode = shown.cmbChMode;
    options_.deEmphasis = shown.cmbEmphasis;
    options_.writeVbrHeader = shown.chWriteVBRHeader;
    options_.enforceMinBitrate = shown.chStrictlyEnforceMinBitrate;
    options_.crcProtection = shown.chErrorProtection;
    options_.blockTypesDiffer = shown.chBlockType;
    options_.bitReservoir = shown.chBitReservoir;
    options_.shortBlocks = shown.chShortBlocks;
    options_.isoCompliance = shown.chStrictlyISOCompliance;
    options_.abrBitrate = static_cast<qint16>(std::clamp(shown.udAbrBitrate, leastAbrKbps, largestAbrKbps));
    options_.highpassFrequency = shown.chHFilt ? ShownHz(shown.udHFiltF) : filterOff;
    options_.lowpassFrequency = shown.chLFilt ? ShownHz(shown.udLFiltF) : filterOff;
    options_.highpassWidth = ShownHz(shown.udHFiltW);
    options_.lowpassWidth = ShownHz(shown.udLFiltW);
    options_.vbrQuality = static_cast<qint16>(std::clamp(shown.udVbrQuality, 0, worstQuality));
}

void Mp3DialogRule::SetOnTarget() {
    target_.file.SetFormatMP3Options(options_);
    if (!target_.HasTexts()) {
        return;
    }
    target_.showMp3Text(target_.file.GetFormatText());
    target_.file.SetFormatMP2(options_.frequency, options_.bitrate, Mp2ChannelCode(options_));
    target_.showMp2Text(target_.file.GetFormatText());
}

Mp3Controls Mp3DialogRule::ApplyOptions(Mp3Tab tabInFront, const Mp3Controls& shown) {
    Mp3Controls next = shown;
    switch (tabInFront) {
    case Mp3Tab::Preset:
        ApplyPreset(options_, preset_);
        next = ShowOptions(shown);
        break;
    case Mp3Tab::AltPreset:
        ApplyAltPreset(options_, altPreset_);
        next = ShowOptions(shown);
        break;
    case Mp3Tab::CommandLine:
        ApplyCommandLine(options_, shown.txtCommLine);
        next = ShowOptions(shown);
        break;
    default:
        Take(shown);
        break;
    }
    SetOnTarget();
    return next;
}

} // namespace kestrune
