#include "encoder_options/mp3_presets.h"

#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace kestrune {

namespace {

constexpr int leastKbps = 8;
constexpr int largestKbps = 320;
constexpr int highestLevel = 9;
constexpr int highestFrequencyHz = 48000;
constexpr int usualVbrQuality = 4;

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
        SetLeastRate();
    }

private:
    // The next word, which belongs to the option before it.
    QString Value() { return next_ < words_.size() ? words_.at(next_++) : QString(); }

    void ReadLong(const QString& option);
    bool ReadSwitch(const QString& option);
    bool ReadMethod(const QString& option);
    bool ReadFilter(const QString& option);
    void ReadPreset();
    bool ApplyNamedPreset(const QString& name, bool isFast);
    void ReadLetters(const QString& letters);
    void ReadLetter(QChar letter);
    // False if the letter takes no value, else the option is done.
    bool ReadLetterWithValue(QChar letter, const QString& attached);
    void SetByLetter(QChar letter, const QString& value);
    void SetMode(const QString& value);
    void SetEmphasis(const QString& value);
    void SetQuality(int quality) { options_.quality = static_cast<qint16>(quality); }
    void SetVbrQuality(int quality);
    void SetMethod(qint32 method);
    void SetLeastRate();

    Mp3Options& options_;
    QStringList words_;
    qsizetype next_ = 0;
    bool setsMethod_ = false; // and no preset behind it
    bool namesRate_ = false;
};

void CommandLineReader::ReadLong(const QString& option) {
    // Options whose value must not be taken for an option of its own.
    static const QStringList unusedWithValue =
        QStringLiteral(
            "scale scale-l scale-r gain bitwidth disptime comp out-dir nogapout tt ta tl ty tc tn tg "
            "ti tv athtype athlower pad-id3v2-size buffer-constraint")
            .split(QLatin1Char(' '));
    if (ReadSwitch(option) || ReadMethod(option) || ReadFilter(option)) {
        return;
    }
    if (option == QLatin1String("preset") || option == QLatin1String("alt-preset")) {
        ReadPreset();
    } else if (option == QLatin1String("r3mix")) {
        ApplyPreset(options_, mp3PresetCount);
        setsMethod_ = false;
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
        SetMethod(Mp3NoVbr);
    } else if (option == QLatin1String("vbr-old")) {
        SetMethod(Mp3OldVbr);
    } else if (option == QLatin1String("vbr-new")) {
        SetMethod(Mp3NewVbr);
    } else if (option == QLatin1String("vbr-mtrh")) {
        SetMethod(Mp3Mtrh);
    } else if (option == QLatin1String("abr")) {
        if (const std::optional<int> kbps = WholeIn(Value(), leastKbps, largestKbps)) {
            SetMethod(Mp3AverageRate);
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
    if (const std::optional<int> kbps = WholeIn(name, leastKbps, largestKbps)) {
        ApplyAverageRate(options_, *kbps);
        options_.vbrMethod = isConstant ? Mp3NoVbr : Mp3AverageRate;
    } else if (!ApplyNamedPreset(name, isFast)) {
        return;
    }
    setsMethod_ = false;
}

bool CommandLineReader::ApplyNamedPreset(const QString& name, bool isFast) {
    if (name == QLatin1String("medium")) {
        ApplyVariableRate(options_, isFast ? Mp3NewVbr : Mp3OldVbr, usualVbrQuality);
        return true;
    }
    if (name == QLatin1String("standard") || name == QLatin1String("extreme")) {
        const int slow = name == QLatin1String("standard") ? 2 : 4;
        ApplyAltPreset(options_, isFast ? slow - 1 : slow);
        return true;
    }
    if (name == QLatin1String("insane")) {
        ApplyAltPreset(options_, mp3AltPresetCount);
        return true;
    }
    const auto known = std::find_if(presetNames.begin(), presetNames.end(), [&](const PresetName& preset) {
        return name == QLatin1String(preset.name);
    });
    if (known == presetNames.end()) {
        return false;
    }
    ApplyPreset(options_, known->preset);
    return true;
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
        SetVbrQuality(usualVbrQuality);
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
        SetMp3ChannelMode(options_, Mp3Mono);
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
        namesRate_ = namesRate_ || kbps;
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
        SetMp3ChannelMode(options_, static_cast<qint32>(mode));
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
    const bool goesByQuality = options_.vbrMethod != Mp3NoVbr && options_.vbrMethod != Mp3AverageRate;
    SetMethod(goesByQuality ? options_.vbrMethod : qint32(Mp3UsualVbr));
}

void CommandLineReader::SetMethod(qint32 method) {
    options_.vbrMethod = method;
    setsMethod_ = true;
}

// The bit rate that stood there was meant for a constant one.
void CommandLineReader::SetLeastRate() {
    if (namesRate_ || options_.vbrMethod == Mp3NoVbr) {
        options_.leastVbrBitrate = 0;
    } else if (setsMethod_ && options_.vbrMethod == Mp3AverageRate) {
        options_.bitrate = options_.abrBitrate;
        options_.leastVbrBitrate = 0;
    } else if (setsMethod_) {
        FreeVariableRate(options_);
    }
}

} // namespace

void ApplyCommandLine(Mp3Options& options, const QString& commandLine) {
    options.commandLine = commandLine;
    CommandLineReader(options, QProcess::splitCommand(commandLine)).Read();
}

} // namespace kestrune
