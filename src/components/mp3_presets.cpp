#include "components/mp3_presets.h"

#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace kestrune {

namespace {

enum ChannelModeIndex : qint32 { Mono = 0, Stereo = 1, Joint = 2, ForcedJoint = 3, Dual = 4 };
enum VbrMethodIndex : qint32 { NoVbr = -1, UsualVbr = 0, OldVbr = 1, NewVbr = 2, Mtrh = 3, Abr = 4 };

constexpr qint16 presetQuality = 3;
constexpr int leastRateOfMpeg1 = 32000;
constexpr int leastKbps = 8;
constexpr int leastKbpsOfMpeg1 = 32;
constexpr int largestKbps = 320;
constexpr int highestLevel = 9;
constexpr int highestFrequencyHz = 48000;

// Everything as at the start, but what tells where the settings come from, and the sample rate.
Mp3Options FreshFrom(const Mp3Options& options) {
    Mp3Options fresh;
    fresh.commandLine = options.commandLine;
    fresh.preset = options.preset;
    fresh.altPreset = options.altPreset;
    fresh.frequency = options.frequency;
    fresh.quality = presetQuality;
    return fresh;
}

void SetChannelMode(Mp3Options& options, qint32 mode) {
    options.channelMode = mode;
    options.channels = mode == Mono ? 1 : 2;
}

// A preset for music undoes the low sample rate that one for speech left.
void RaiseToMusicRate(Mp3Options& options) {
    if (options.frequency < leastRateOfMpeg1) {
        options.frequency = 44100;
    }
}

void SetAverage(Mp3Options& options, int kbps) {
    options.vbrMethod = Abr;
    options.abrBitrate = static_cast<qint16>(kbps);
    options.bitrate = kbps;
}

void SetVariable(Mp3Options& options, qint32 method, int quality) {
    options.vbrMethod = method;
    options.vbrQuality = static_cast<qint16>(quality);
    options.bitrate = options.frequency < leastRateOfMpeg1 ? leastKbps : leastKbpsOfMpeg1;
}

void BecomeMusic(Mp3Options& options) {
    options = FreshFrom(options);
    RaiseToMusicRate(options);
    SetChannelMode(options, Joint);
}

struct AverageRatePreset {
    int kbps;
    qint32 channelMode;
    int frequencyHz; // 0: as it is, if it is one for music
};

// By preset number less 1.
constexpr std::array<AverageRatePreset, mp3PresetCount - 1> averageRatePresets{{
    {16, Mono, 16000},
    {24, Mono, 16000},
    {40, Mono, 24000},
    {112, Joint, 0},
    {56, Mono, 32000},
    {112, Joint, 0},
    {112, Joint, 0},
    {160, Joint, 0},
    {192, Joint, 0},
    {256, Joint, 0},
}};

struct PresetName {
    const char* name;
    int preset;
};

constexpr std::array<PresetName, 15> presetNames{{
    {"phone", 1},
    {"phon+", 2},
    {"lw", 2},
    {"mw-eu", 2},
    {"sw", 2},
    {"am", 3},
    {"mw-us", 3},
    {"fm", 4},
    {"voice", 5},
    {"radio", 6},
    {"tape", 7},
    {"hifi", 8},
    {"cd", 9},
    {"studio", 10},
    {"r3mix", mp3PresetCount},
}};

std::optional<double> NumberOf(const QString& word) {
    bool isNumber = false;
    const double value = word.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> WholeIn(const QString& word, int smallest, int largest) {
    const std::optional<double> value = NumberOf(word);
    if (!value || *value < 0) {
        return std::nullopt;
    }
    return static_cast<int>(std::lround(std::clamp<double>(*value, smallest, largest)));
}

// Kilohertz below 50, else hertz.
std::optional<int> HertzOf(const QString& word) {
    const std::optional<double> value = NumberOf(word);
    if (!value || *value < 0) {
        return std::nullopt;
    }
    const double hertz = *value < 50 ? *value * 1000 : *value;
    return static_cast<int>(std::lround(std::min<double>(hertz, highestFrequencyHz)));
}

// The rate of MPEG audio that is nearest.
int NearestFrequency(int hertz) {
    constexpr std::array<int, 9> rates{8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};
    return *std::min_element(rates.begin(), rates.end(),
                             [hertz](int a, int b) { return std::abs(a - hertz) < std::abs(b - hertz); });
}

// Takes the words one after another.
class CommandLineReader {
public:
    CommandLineReader(Mp3Options& options, QStringList words) : options_(options), words_(std::move(words)) {}

    void Read() {
        while (next_ < words_.size()) {
            const QString word = words_.at(next_++);
            if (word.startsWith(QLatin1String("--"))) {
                ReadLong(word.mid(2));
            } else if (word.size() > 1 && word.startsWith(QLatin1Char('-'))) {
                ReadLetters(word.mid(1));
            }
        }
    }

private:
    // The next word, which belongs to the option before it.
    QString Value() { return next_ < words_.size() ? words_.at(next_++) : QString(); }

    void ReadLong(const QString& option);
    bool ReadSwitch(const QString& option);
    bool ReadMethod(const QString& option);
    bool ReadFilter(const QString& option);
    void ReadPreset();
    void ReadLetters(const QString& letters);
    void ReadLetter(QChar letter);
    // False if the letter takes no value, else the option is done.
    bool ReadLetterWithValue(QChar letter, const QString& attached);
    void SetByLetter(QChar letter, const QString& value);
    void SetMode(const QString& value);
    void SetEmphasis(const QString& value);
    void SetQuality(int quality) { options_.quality = static_cast<qint16>(quality); }
    void SetVbrQuality(int quality);

    Mp3Options& options_;
    QStringList words_;
    qsizetype next_ = 0;
};

void CommandLineReader::ReadLong(const QString& option) {
    // Options whose value must not be taken for an option of its own.
    static const QStringList unusedWithValue{"scale",
                                             "scale-l",
                                             "scale-r",
                                             "gain",
                                             "bitwidth",
                                             "disptime",
                                             "comp",
                                             "out-dir",
                                             "nogapout",
                                             "tt",
                                             "ta",
                                             "tl",
                                             "ty",
                                             "tc",
                                             "tn",
                                             "tg",
                                             "ti",
                                             "tv",
                                             "athtype",
                                             "athlower",
                                             "pad-id3v2-size",
                                             "buffer-constraint"};
    if (ReadSwitch(option) || ReadMethod(option) || ReadFilter(option)) {
        return;
    }
    if (option == QLatin1String("preset") || option == QLatin1String("alt-preset")) {
        ReadPreset();
    } else if (option == QLatin1String("r3mix")) {
        ApplyPreset(options_, mp3PresetCount);
    } else if (unusedWithValue.contains(option)) {
        Value();
    }
}

bool CommandLineReader::ReadSwitch(const QString& option) {
    if (option == QLatin1String("nores")) {
        options_.bitReservoir = false;
    } else if (option.compare(QLatin1String("strictly-enforce-iso"), Qt::CaseInsensitive) == 0) {
        options_.isoCompliance = true;
    } else if (option == QLatin1String("noshort")) {
        options_.shortBlocks = false;
    } else if (option == QLatin1String("short")) {
        options_.shortBlocks = true;
    } else if (option == QLatin1String("athonly")) {
        options_.athControl = 1;
    } else if (option == QLatin1String("noath")) {
        options_.athControl = 2;
    } else if (option == QLatin1String("athshort")) {
        options_.athControl = 3;
    } else {
        return false;
    }
    return true;
}

bool CommandLineReader::ReadMethod(const QString& option) {
    if (option == QLatin1String("cbr")) {
        options_.vbrMethod = NoVbr;
    } else if (option == QLatin1String("vbr-old")) {
        options_.vbrMethod = OldVbr;
    } else if (option == QLatin1String("vbr-new")) {
        options_.vbrMethod = NewVbr;
    } else if (option == QLatin1String("vbr-mtrh")) {
        options_.vbrMethod = Mtrh;
    } else if (option == QLatin1String("abr")) {
        if (const std::optional<int> kbps = WholeIn(Value(), leastKbps, largestKbps)) {
            options_.vbrMethod = Abr;
            options_.abrBitrate = static_cast<qint16>(*kbps);
        }
    } else {
        return false;
    }
    return true;
}

bool CommandLineReader::ReadFilter(const QString& option) {
    qint32* target = nullptr;
    if (option == QLatin1String("lowpass")) {
        target = &options_.lowpassFrequency;
    } else if (option == QLatin1String("lowpass-width")) {
        target = &options_.lowpassWidth;
    } else if (option == QLatin1String("highpass")) {
        target = &options_.highpassFrequency;
    } else if (option == QLatin1String("highpass-width")) {
        target = &options_.highpassWidth;
    } else if (option != QLatin1String("resample")) {
        return false;
    }
    const std::optional<int> hertz = HertzOf(Value());
    if (hertz && target != nullptr) {
        *target = *hertz;
    } else if (hertz && *hertz > 0) {
        options_.frequency = NearestFrequency(*hertz);
    }
    return true;
}

void CommandLineReader::ReadPreset() {
    QString name = Value().toLower();
    const bool isFast = name == QLatin1String("fast");
    const bool isConstant = name == QLatin1String("cbr");
    if (isFast || isConstant) {
        name = Value().toLower();
    }
    if (name == QLatin1String("medium")) {
        BecomeMusic(options_);
        SetVariable(options_, isFast ? NewVbr : OldVbr, 4);
    } else if (name == QLatin1String("standard")) {
        ApplyAltPreset(options_, isFast ? 1 : 2);
    } else if (name == QLatin1String("extreme")) {
        ApplyAltPreset(options_, isFast ? 3 : 4);
    } else if (name == QLatin1String("insane")) {
        ApplyAltPreset(options_, mp3AltPresetCount);
    } else if (const std::optional<int> kbps = WholeIn(name, leastKbps, largestKbps)) {
        BecomeMusic(options_);
        SetAverage(options_, *kbps);
        options_.vbrMethod = isConstant ? NoVbr : Abr;
    } else {
        for (const PresetName& known : presetNames) {
            if (name == QLatin1String(known.name)) {
                ApplyPreset(options_, known.preset);
            }
        }
    }
}

void CommandLineReader::ReadLetters(const QString& letters) {
    for (qsizetype at = 0; at < letters.size(); ++at) {
        if (ReadLetterWithValue(letters.at(at), letters.mid(at + 1))) {
            return;
        }
        ReadLetter(letters.at(at));
    }
}

void CommandLineReader::ReadLetter(QChar letter) {
    switch (letter.unicode()) {
    case 'h':
        SetQuality(2);
        break;
    case 'f':
        SetQuality(7);
        break;
    case 'v':
        SetVbrQuality(4);
        break;
    case 'F':
        options_.enforceMinBitrate = true;
        break;
    case 'p':
        options_.crcProtection = true;
        break;
    case 'd':
        options_.blockTypesDiffer = true;
        break;
    case 'a':
        SetChannelMode(options_, Mono);
        break;
    case 'k':
        // Filters that let everything pass, which is something else than the encoder's own choice.
        options_.lowpassFrequency = highestFrequencyHz;
        options_.highpassFrequency = 0;
        break;
    case 't':
        options_.writeVbrHeader = false;
        break;
    case 'T':
        options_.writeVbrHeader = true;
        break;
    default:
        break;
    }
}

bool CommandLineReader::ReadLetterWithValue(QChar letter, const QString& attached) {
    // "-s" and "-X" have a value too, which is passed over.
    if (!QStringLiteral("bBmqVesX").contains(letter)) {
        return false;
    }
    SetByLetter(letter, attached.isEmpty() ? Value() : attached);
    return true;
}

void CommandLineReader::SetByLetter(QChar letter, const QString& value) {
    const std::optional<int> kbps = WholeIn(value, leastKbps, largestKbps);
    const std::optional<int> level = WholeIn(value, 0, highestLevel);
    switch (letter.unicode()) {
    case 'b':
        options_.bitrate = kbps.value_or(options_.bitrate);
        break;
    case 'B':
        options_.maxVbrBitrate = kbps.value_or(options_.maxVbrBitrate);
        break;
    case 'q':
        SetQuality(level.value_or(options_.quality));
        break;
    case 'V':
        if (level) {
            SetVbrQuality(*level);
        }
        break;
    case 'm':
        SetMode(value);
        break;
    case 'e':
        SetEmphasis(value);
        break;
    default:
        break;
    }
}

void CommandLineReader::SetMode(const QString& value) {
    static const QString letters = QStringLiteral("msjfd"); // by channel mode
    const qsizetype mode = value.size() == 1 ? letters.indexOf(value) : -1;
    if (mode >= 0) {
        SetChannelMode(options_, static_cast<qint32>(mode));
    }
}

void CommandLineReader::SetEmphasis(const QString& value) {
    static const QString letters = QStringLiteral("n5c"); // by kind of emphasis
    const qsizetype kind = value.size() == 1 ? letters.indexOf(value) : -1;
    if (kind >= 0) {
        options_.deEmphasis = static_cast<qint32>(kind);
    }
}

void CommandLineReader::SetVbrQuality(int quality) {
    options_.vbrQuality = static_cast<qint16>(quality);
    if (options_.vbrMethod == NoVbr || options_.vbrMethod == Abr) {
        options_.vbrMethod = UsualVbr;
    }
}

} // namespace

void ApplyPreset(Mp3Options& options, int preset) {
    if (preset < 1 || preset > mp3PresetCount) {
        return;
    }
    options.preset = static_cast<qint16>(preset);
    BecomeMusic(options);
    if (preset == mp3PresetCount) {
        SetVariable(options, Mtrh, 3);
        return;
    }
    const AverageRatePreset& chosen = averageRatePresets[static_cast<size_t>(preset) - 1];
    SetAverage(options, chosen.kbps);
    SetChannelMode(options, chosen.channelMode);
    if (chosen.frequencyHz != 0) {
        options.frequency = chosen.frequencyHz;
    }
}

void ApplyAltPreset(Mp3Options& options, int preset) {
    if (preset < 1 || preset > mp3AltPresetCount) {
        return;
    }
    options.altPreset = static_cast<qint16>(preset);
    BecomeMusic(options);
    if (preset == mp3AltPresetCount) {
        options.bitrate = largestKbps;
        return;
    }
    const bool isFast = preset % 2 == 1;
    SetVariable(options, isFast ? NewVbr : OldVbr, preset <= 2 ? 2 : 0);
}

void ApplyCommandLine(Mp3Options& options, const QString& commandLine) {
    options.commandLine = commandLine;
    CommandLineReader(options, QProcess::splitCommand(commandLine)).Read();
}

} // namespace kestrune
