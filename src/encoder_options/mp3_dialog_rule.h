// What the MP3 options dialog does, without its window.
#pragma once

#include "components/audio_format.h"
#include "encoder_options/mp3_presets.h"

#include <QString>
#include <array>
#include <functional>

namespace kestrune {

// Tabs of the dialog, in their order.
enum class Mp3Tab : int { General, Filtering, Vbr, Expert, Preset, AltPreset, CommandLine };
inline constexpr std::array<const char*, 7> mp3TabTexts = {"General", "Filtering",  "VBR",         "Expert",
                                                           "Preset",  "Alt-Preset", "Command Line"};

inline constexpr std::array<const char*, 5> channelModeTexts = {"Mono", "Stereo", "Joint Stereo",
                                                                "Forced Joint Stereo", "Dual Channels"};
// The entry's index is VbrMethod plus 1.
inline constexpr std::array<const char*, 6> vbrMethodTexts = {"None", "Default", "Old", "New", "MTRH", "ABR"};
inline constexpr int vbrMethodNone = 0;
inline constexpr int vbrMethodAbr = 5;
inline constexpr std::array<const char*, 4> athControlTexts = {"default", "only", "disabled",
                                                               "only for short blocks"};
inline constexpr std::array<const char*, 3> emphasisTexts = {"default", "0/15 microseconds", "citt j.17"};

// What may be typed as a command line, for one who does not know it. An even count.
struct CommandLineExample {
    const char* option;
    const char* meaning;
};
inline constexpr std::array<CommandLineExample, 10> commandLineExamples = {
    {{"-b 192", "bit rate"},
     {"-V 2", "variable bit rate, 0 to 9"},
     {"-B 256", "largest bit rate"},
     {"--abr 160", "average bit rate"},
     {"--preset cd", "a preset by its name"},
     {"-m m", "channels: s, j, f, d or m"},
     {"-q 2", "encoder quality, 0 to 9"},
     {"-p", "checksums"},
     {"--resample 32", "sampling frequency, kHz"},
     {"--lowpass 16", "filter, kHz"}}};

// Bounds of the spinners.
inline constexpr int largestFilterHz = 48000;
inline constexpr int filterStepHz = 10;
inline constexpr int leastAbrKbps = 4;
inline constexpr int largestAbrKbps = 320;
inline constexpr int worstQuality = 9; // of Quality and VbrQuality; 0 is the best

// What the controls show. Indexes of lists and sliders from 0.
struct Mp3Controls {
    int cmbFrequency = 7;
    int sldrBitrate = 9;
    int cmbChMode = 1;
    int sldrQuality = 5;
    bool chHFilt = false;
    int udHFiltF = 0; // Hz
    int udHFiltW = 0; // Hz
    bool chLFilt = false;
    int udLFiltF = 0; // Hz
    int udLFiltW = 0; // Hz
    int cmbVBRCodingMethod = vbrMethodNone;
    int udVbrQuality = 4;
    int udAbrBitrate = 128; // kbit/s
    int sldrVbrBitrate = 14;
    bool chWriteVBRHeader = false;
    bool chStrictlyEnforceMinBitrate = false;
    int cmbATHControl = 0;
    int cmbEmphasis = 0;
    bool chErrorProtection = false;
    bool chBlockType = false;
    bool chBitReservoir = false;
    bool chShortBlocks = false;
    bool chStrictlyISOCompliance = false;
    QString txtCommLine;

    friend bool operator==(const Mp3Controls&, const Mp3Controls&) = default;
};

// Which groups of the VBR tab can be used.
struct Mp3VbrEnabled {
    bool quality = false;    // lblVbrQuality, txtVbrQuality, udVbrQuality
    bool abrBitrate = false; // lblAbrBitrate, txtAbrBitrate, udAbrBitrate
    bool rest = false;       // frmVbrBitrate and frmVbrAdvanced with all they hold

    friend bool operator==(const Mp3VbrEnabled&, const Mp3VbrEnabled&) = default;
};

// By the index of cmbVBRCodingMethod.
Mp3VbrEnabled VbrControlsEnabled(int codingMethodIndex);

// The text over a bit rate slider: "Current bitrate: 128 kbit".
QString CurrentBitrateText(int sliderIndex);

// What options come to, in few words: "112 kbit average, Joint Stereo".
QString Mp3Summary(const Mp3Options& options);

// The channel code that MPEG layer 2 takes: 1 mono, 2 stereo, 3 joint, 4 forced joint, 5 dual.
qint32 Mp2ChannelCode(const Mp3Options& options);

// Where applied settings go. Everything in it must outlive the dialog.
struct Mp3Target {
    AudioFormat& file;
    // The texts of the converter: given the format's text after each apply. Without both (the ripper) layer 2
    // does not follow.
    std::function<void(const QString&)> showMp3Text = {};
    std::function<void(const QString&)> showMp2Text = {};

    bool HasTexts() const { return showMp3Text && showMp2Text; }
};

// One for each showing of the dialog. Window thread; no call blocks or runs events.
class Mp3DialogRule {
public:
    // The options must outlive it; they are the only store of what is chosen.
    Mp3DialogRule(Mp3Options& options, Mp3Target target);

    // What the controls show for the options. What has no place in a control (a bit rate that is not in the
    // table, an entry beyond a list, a filter that is off) leaves that control as it is in `shown`.
    Mp3Controls ShowOptions(const Mp3Controls& shown) const;

    // sldrQuality has moved: the options take it at once, whatever button follows.
    void ChooseQuality(int quality);
    // Noted until it is applied. 1 at the start.
    void ChoosePreset(int preset) { preset_ = preset; }
    void ChooseAltPreset(int altPreset) { altPreset_ = altPreset; }

    // Takes the settings of the tab in front into the options and sets them on the target; the options of the
    // other tabs stay. Returns what the controls show then: a preset and a command line change them. The
    // outcomes of the target's calls are passed over: the format's text is empty when it was refused.
    Mp3Controls ApplyOptions(Mp3Tab tabInFront, const Mp3Controls& shown);

private:
    void Take(const Mp3Controls& shown);
    void SetOnTarget();

    Mp3Options& options_;
    Mp3Target target_;
    int preset_ = 1;
    int altPreset_ = 1;
};

} // namespace kestrune
