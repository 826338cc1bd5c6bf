// What the Ogg Vorbis options dialog does, without its window.
#pragma once

#include "components/audio_format.h"
#include "components/user_prompts.h"

#include <QString>
#include <array>
#include <functional>

namespace kestrune {

inline constexpr std::array<const char*, 2> oggChannelTexts = {"Mono", "Stereo"};
inline constexpr int largestOggQuality = 1000; // of the slider: 100 times the quality
inline constexpr int oggQualityTick = 100;

// Which controls can be used. Each switch changes some of them and leaves the rest as the other one left
// them.
struct OggEnabled {
    bool chVbr = true;
    bool sldrBitrate = true;
    bool lblBitrate = true;
    bool frmVbr = true;
    bool sldrMinBitrate = true;
    bool sldrMaxBitrate = true;
    bool lblMinBitrate = true;
    bool lblMaxBitrate = true;
    bool frmQuality = true;
    bool sldrQuality = true;

    friend bool operator==(const OggEnabled&, const OggEnabled&) = default;
};

// "128 kbit", for the position of a bit rate slider.
QString OggBitrateText(int sliderIndex);
// The quality that a position of sldrQuality stands for: "3" for 300, "2.5" for 250.
QString OggQualityText(int quality);

// Where applied settings go. Everything in it must outlive the dialog.
struct OggTarget {
    AudioFormat& file;
    UserPrompts& prompts;
    // The converter's text: given the format's text after each apply. Without it (the ripper) none is shown.
    std::function<void(const QString&)> showText = {};
};

// One for each showing of the dialog. Window thread. No call runs events but ApplyOgg while it shows a
// message.
class OggDialogRule {
public:
    // Starts with the entries that fit the sampling rate in Hz and the channels, 1 or 2.
    OggDialogRule(OggTarget target, qint32 sampleRateHz, qint32 channels);

    int FrequencyIndex() const { return frequencyIndex_; }
    int ChannelIndex() const { return channelIndex_; }
    qint16 Bitrate() const { return bitrate_; }       // kbit/s
    qint16 MinBitrate() const { return minBitrate_; } // kbit/s
    qint16 MaxBitrate() const { return maxBitrate_; } // kbit/s
    bool VbrEnabled() const { return vbrEnabled_; }
    qint16 Quality() const { return quality_; } // 100 times the quality
    bool QualityEnabled() const { return qualityEnabled_; }
    const OggEnabled& Enabled() const { return enabled_; }

    // Handlers of the controls. Positions beyond an end count as that end.
    void ChooseFrequency(int index);
    void ChooseChannels(int index);
    void MoveBitrate(int sliderIndex);
    void MoveMinBitrate(int sliderIndex);
    void MoveMaxBitrate(int sliderIndex);
    void MoveQuality(int value);
    void TickVbr(bool ticked);
    void TickQuality(bool ticked);

    // Sets the format on the target. Quality goes before variable bit rates, and those before a nominal one
    // alone; the two with bit rates are set only if the encoder offers the combination. False after the
    // message that it does not; nothing was set then.
    bool ApplyOgg();

private:
    bool SetBitrates(qint32 minimumKbps, qint32 maximumKbps);

    OggTarget target_;
    int frequencyIndex_;
    int channelIndex_;
    qint16 bitrate_ = 128;
    qint16 minBitrate_ = 128;
    qint16 maxBitrate_ = 128;
    bool vbrEnabled_ = false;
    qint16 quality_ = 300;
    bool qualityEnabled_ = false;
    OggEnabled enabled_;
};

} // namespace kestrune
