#include "output_choice.h"

#include <QDir>
#include <QFileInfo>

#include <functional>
#include <utility>

namespace kestrune {

namespace {

// The figures of a format in their order; the ones left out are taken from `defaults`.
class Figures {
public:
    Figures(const QStringList& words, QList<qint32> defaults) : values_(std::move(defaults)) {
        for (qsizetype at = 1; at < words.size() && at <= values_.size(); ++at) {
            bool isNumber = false;
            const qint32 value = words[at].toInt(&isNumber);
            valid_ = valid_ && isNumber;
            values_[at - 1] = value;
        }
        valid_ = valid_ && words.size() <= values_.size() + 1;
    }
    bool Valid() const { return valid_; }
    qint32 operator[](qsizetype at) const { return values_[at]; }

private:
    QList<qint32> values_;
    bool valid_ = true;
};

struct Kind {
    const char* name;
    const char* figures;
    QList<qint32> defaults;
    std::function<Outcome(KSTAudioFile2&, const Figures&)> set;
};

// MPEG layer 3 with all that its options tell, of which these figures are the ones that matter to speed and
// sound. VBR method as in Mp3Options.
Outcome SetMp3Options(KSTAudioFile2& file, const Figures& f) {
    Mp3Options options;
    options.frequency = f[0];
    options.bitrate = f[1];
    options.channels = f[2];
    options.channelMode = f[2] == 1 ? 0 : 2;
    options.quality = static_cast<qint16>(f[3]);
    options.vbrMethod = f[4];
    options.vbrQuality = static_cast<qint16>(f[5]);
    return file.SetFormatMP3Options(options);
}

const std::vector<Kind>& Kinds() {
    using File = KSTAudioFile2;
    static const std::vector<Kind> kinds = {
        {"pcm",
         "rate:channels:bits",
         {44100, 2, 16},
         [](File& file, const Figures& f) { return file.SetFormatPCMFreq(f[0], f[1], f[2]); }},
        {"raw",
         "rate:channels:bits",
         {44100, 2, 16},
         [](File& file, const Figures& f) { return file.SetFormatRaw(RawPcm, f[0], f[1], f[2]); }},
        {"alaw",
         "rate:channels",
         {44100, 2},
         [](File& file, const Figures& f) { return file.SetFormatRaw(RawALaw, f[0], f[1], 16); }},
        {"mulaw",
         "rate:channels",
         {44100, 2},
         [](File& file, const Figures& f) { return file.SetFormatRaw(RawMuLaw, f[0], f[1], 16); }},
        {"adpcm",
         "rate:channels",
         {44100, 2},
         [](File& file, const Figures& f) { return file.SetFormatADPCM(f[0], f[1]); }},
        {"gsm", "rate", {44100}, [](File& file, const Figures& f) { return file.SetFormatGSM(f[0]); }},
        {"vox", "rate", {44100}, [](File& file, const Figures& f) { return file.SetFormatVOX(f[0]); }},
        {"dsp", "", {}, [](File& file, const Figures& /*f*/) { return file.SetFormatDSP(); }},
        {"mp2",
         "rate:kbit/s:channels",
         {44100, 192, 2},
         [](File& file, const Figures& f) { return file.SetFormatMP2(f[0], f[1], f[2]); }},
        {"mp3",
         "rate:kbit/s:channels",
         {44100, 128, 2},
         [](File& file, const Figures& f) { return file.SetFormatMP3(f[0], f[1], f[2]); }},
        {"mp3x",
         "rate:kbit/s:channels:quality:vbr method:vbr quality",
         {44100, 128, 2, 5, -1, 4},
         SetMp3Options},
        {"ogg",
         "rate:channels:kbit/s:least:most:quality",
         {44100, 2, 128, 0, 0, -1},
         [](File& file, const Figures& f) {
             return file.SetFormatOggVorbis(f[0], f[1], f[2], f[3], f[4], f[5]);
         }},
        {"wma", "profile", {39}, [](File& file, const Figures& f) { return file.SetFormatWMA(f[0]); }},
        {"g721", "rate", {44100}, [](File& file, const Figures& f) { return file.SetFormatG721(f[0]); }},
        {"g723",
         "rate:bits",
         {44100, 5},
         [](File& file, const Figures& f) { return file.SetFormatG723(f[0], f[1]); }},
        {"g726",
         "rate:bits",
         {44100, 4},
         [](File& file, const Figures& f) { return file.SetFormatG726(f[0], f[1]); }},
    };
    return kinds;
}

} // namespace

QStringList FormatHelp() {
    QStringList lines;
    for (const Kind& kind : Kinds()) {
        const QString name = QLatin1String(kind.name);
        lines += *kind.figures != '\0' ? name + QLatin1Char(':') + QLatin1String(kind.figures) : name;
    }
    lines += QStringLiteral("template:FILE.wav");
    return lines;
}

Outcome SetFormat(KSTAudioFile2& file, const QString& format) {
    const QString templateMark = QStringLiteral("template:");
    if (format.startsWith(templateMark)) {
        return file.SetFormatFromFile(format.mid(templateMark.size()));
    }
    const QStringList words = format.split(QLatin1Char(':'));
    for (const Kind& kind : Kinds()) {
        if (words[0] == QLatin1String(kind.name)) {
            const Figures figures(words, kind.defaults);
            return figures.Valid() ? kind.set(file, figures) : Outcome::NotSupported;
        }
    }
    return Outcome::NotSupported;
}

std::vector<OutputChoice> EveryKind(const QString& input, const QString& folder) {
    struct Ending {
        const char* suffix;
        const char* format;
    };
    static constexpr Ending endings[] = {
        {"_39.wma", "wma"}, {".mp3", "mp3"},   {"_ADPCM.wav", "adpcm"}, {"_DSP.wav", "dsp"},
        {".mp2", "mp2"},    {".vox", "vox"},   {".ogg", "ogg"},         {"_GSM.wav", "gsm"},
        {".g726", "g726"},  {".g723", "g723"}, {".g721", "g721"},       {"_ULAW.raw", "alaw"},
    };
    const QString head = QDir(folder).filePath(QFileInfo(input).completeBaseName());
    std::vector<OutputChoice> outputs;
    for (const Ending& ending : endings) {
        outputs.push_back({head + QLatin1String(ending.suffix), QLatin1String(ending.format)});
    }
    return outputs;
}

} // namespace kestrune
