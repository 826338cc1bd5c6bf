#include "backends/encoders/mp3_options.h"

#include <algorithm>
#include <array>
#include <cstdarg>

namespace kestrune {

namespace {

constexpr int rateOfMpeg1 = 32000;
constexpr int rateOfMpeg2 = 16000;
constexpr int largestKbps = 320;
constexpr qint32 highestLevel = 9;
constexpr qint32 noVbr = -1;
constexpr qint32 averageRate = 4;
constexpr int withoutFilter = -1;

// By channel mode: mono, stereo, joint, forced joint, dual.
constexpr std::array lameModes{MONO, STEREO, JOINT_STEREO, JOINT_STEREO, DUAL_CHANNEL};
constexpr qint32 forcedJoint = 3;
// By VBR method: default, old, new, MTRH, average.
constexpr std::array lameMethods{vbr_default, vbr_rh, vbr_mtrh, vbr_mt, vbr_abr};
// The header's figure by kind of emphasis: none, 50/15 microseconds, CCITT J.17.
constexpr std::array lameEmphases{0, 1, 3};
constexpr std::array rates{8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};

// ISO/IEC 11172-3 and 13818-3, layer III, and their extension to the lowest rates; kbit/s.
constexpr std::array ratesOfMpeg1{32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr std::array ratesOfMpeg2{8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr std::array ratesOfMpeg25{8, 16, 24, 32, 40, 48, 56, 64};

// The library would write to standard error.
void Ignore(const char* /*format*/, va_list /*arguments*/) {}

template <typename Table>
int NearestOf(const Table& table, int kbps) {
    return *std::min_element(table.begin(), table.end(),
                             [kbps](int a, int b) { return std::abs(a - kbps) < std::abs(b - kbps); });
}

int NearestKbps(int frequency, int kbps) {
    if (frequency >= rateOfMpeg1) {
        return NearestOf(ratesOfMpeg1, kbps);
    }
    return frequency >= rateOfMpeg2 ? NearestOf(ratesOfMpeg2, kbps) : NearestOf(ratesOfMpeg25, kbps);
}

bool AreInRange(const Mp3Options& options) {
    const auto isIndex = [](qint32 value, size_t count) {
        return value >= 0 && value < static_cast<qint32>(count);
    };
    const bool methodIsKnown = options.vbrMethod == noVbr || isIndex(options.vbrMethod, lameMethods.size());
    return std::find(rates.begin(), rates.end(), options.frequency) != rates.end() &&
           (options.channels == 1 || options.channels == 2) && methodIsKnown &&
           isIndex(options.channelMode, lameModes.size()) &&
           isIndex(options.deEmphasis, lameEmphases.size()) && isIndex(options.athControl, 4) &&
           isIndex(options.quality, highestLevel + 1) && isIndex(options.vbrQuality, highestLevel + 1) &&
           options.bitrate > 0;
}

void SetRates(lame_t lame, const Mp3Options& options) {
    const int frequency = options.frequency;
    lame_set_VBR(lame,
                 options.vbrMethod == noVbr ? vbr_off : lameMethods[static_cast<size_t>(options.vbrMethod)]);
    const bool isLeastTold = options.vbrMethod != noVbr && options.leastVbrBitrate > 0;
    const int told = NearestKbps(frequency, isLeastTold ? options.leastVbrBitrate : options.bitrate);
    lame_set_brate(lame, told);
    if (options.vbrMethod == noVbr) {
        return;
    }
    lame_set_VBR_q(lame, options.vbrQuality);
    const int largest = NearestKbps(frequency, options.maxVbrBitrate);
    int least = std::min(told, largest);
    if (options.vbrMethod == averageRate) {
        const int average = std::clamp<int>(options.abrBitrate, 1, largestKbps);
        lame_set_VBR_mean_bitrate_kbps(lame, average);
        if (least >= average) {
            least = NearestKbps(frequency, 0);
        }
    }
    lame_set_VBR_min_bitrate_kbps(lame, least);
    lame_set_VBR_max_bitrate_kbps(lame, largest);
    lame_set_VBR_hard_min(lame, options.enforceMinBitrate ? 1 : 0);
}

void SetChannels(lame_t lame, const Mp3Options& options) {
    const bool mono = IsMono(options);
    lame_set_num_channels(lame, mono ? 1 : 2);
    lame_set_mode(lame, mono ? MONO : lameModes[static_cast<size_t>(options.channelMode)]);
    lame_set_force_ms(lame, !mono && options.channelMode == forcedJoint ? 1 : 0);
}

void SetFilters(lame_t lame, const Mp3Options& options) {
    if (options.lowpassFrequency >= options.frequency / 2) {
        // Else the library would cut at 20 kHz.
        lame_set_lowpassfreq(lame, withoutFilter);
    } else if (options.lowpassFrequency >= 0) {
        lame_set_lowpassfreq(lame, options.lowpassFrequency);
        lame_set_lowpasswidth(lame, std::max(options.lowpassWidth, 0));
    }
    if (options.highpassFrequency >= 0) {
        lame_set_highpassfreq(lame, options.highpassFrequency);
        lame_set_highpasswidth(lame, std::max(options.highpassWidth, 0));
    }
}

void SetExpertOptions(lame_t lame, const Mp3Options& options) {
    lame_set_quality(lame, options.quality);
    lame_set_bWriteVbrTag(lame, options.writeVbrHeader ? 1 : 0);
    lame_set_disable_reservoir(lame, options.bitReservoir ? 0 : 1);
    lame_set_allow_diff_short(lame, options.blockTypesDiffer ? 1 : 0);
    if (!options.shortBlocks) {
        lame_set_no_short_blocks(lame, 1);
    }
    lame_set_emphasis(lame, lameEmphases[static_cast<size_t>(options.deEmphasis)]);
    if (options.isoCompliance) {
        lame_set_strict_ISO(lame, MDB_STRICT_ISO);
    }
    lame_set_ATHonly(lame, options.athControl == 1 ? 1 : 0);
    lame_set_noATH(lame, options.athControl == 2 ? 1 : 0);
    lame_set_ATHshort(lame, options.athControl == 3 ? 1 : 0);
    lame_set_error_protection(lame, options.crcProtection ? 1 : 0);
}

} // namespace

bool IsMono(const Mp3Options& options) {
    return options.channels == 1 || options.channelMode == 0;
}

LameHandle MakeLame(const Mp3Options& options) {
    if (!AreInRange(options)) {
        return nullptr;
    }
    LameHandle lame(lame_init());
    if (!lame) {
        return nullptr;
    }
    lame_set_errorf(lame.get(), Ignore);
    lame_set_debugf(lame.get(), Ignore);
    lame_set_msgf(lame.get(), Ignore);
    lame_set_write_id3tag_automatic(lame.get(), 0);
    lame_set_in_samplerate(lame.get(), options.frequency);
    lame_set_out_samplerate(lame.get(), options.frequency);
    SetChannels(lame.get(), options);
    SetRates(lame.get(), options);
    SetFilters(lame.get(), options);
    SetExpertOptions(lame.get(), options);
    return lame_init_params(lame.get()) < 0 ? nullptr : std::move(lame);
}

} // namespace kestrune
