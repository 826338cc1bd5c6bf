#include "support/judges.h"

#include "support/test_files.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrune {

namespace {

std::vector<qint16> SamplesBy(const QString& program, const QStringList& arguments) {
    QByteArray bytes;
    if (!RunTool(program, arguments, &bytes)) {
        return {};
    }
    std::vector<qint16> samples(static_cast<size_t>(bytes.size()) / sizeof(qint16));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(qint16));
    return samples;
}

// The one channel of frames that the delay is looked for in.
std::vector<double> Mono(const std::vector<qint16>& samples, int channels) {
    std::vector<double> mono(samples.size() / static_cast<size_t>(channels));
    for (size_t at = 0; at < mono.size() * static_cast<size_t>(channels); ++at) {
        mono[at / static_cast<size_t>(channels)] += samples[at];
    }
    return mono;
}

int DelayOf(const std::vector<double>& original, const std::vector<double>& decoded, int mostDelay) {
    constexpr int windowFrames = 3000;
    const int frames = static_cast<int>(std::min(original.size(), decoded.size()));
    const int from = std::clamp(frames / 3, std::min(mostDelay, frames), frames);
    const int window = std::min(windowFrames, frames - from - mostDelay);
    double best = -1.0;
    int delay = 0;
    for (int tried = -mostDelay; tried <= mostDelay && window > 0; ++tried) {
        double product = 0.0;
        double energy = 1.0;
        for (int at = from; at < from + window; ++at) {
            const double value = decoded[static_cast<size_t>(at + tried)];
            product += original[static_cast<size_t>(at)] * value;
            energy += value * value;
        }
        if (product / std::sqrt(energy) > best) {
            best = product / std::sqrt(energy);
            delay = tried;
        }
    }
    return delay;
}

} // namespace

QString ProbedBy(const QString& file) {
    QByteArray said;
    RunTool(QStringLiteral("ffprobe"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
             QStringLiteral("stream=codec_name,sample_rate,channels"), QStringLiteral("-of"),
             QStringLiteral("csv=p=0"), file},
            &said);
    return QString::fromLatin1(said).trimmed();
}

std::vector<qint16> DecodedByFfmpeg(const QString& file, const QStringList& inputOptions) {
    return SamplesBy(QStringLiteral("ffmpeg"),
                     QStringList{QStringLiteral("-v"), QStringLiteral("error")} + inputOptions +
                         QStringList{QStringLiteral("-i"), file, QStringLiteral("-f"),
                                     QStringLiteral("s16le"), QStringLiteral("-")});
}

std::vector<qint16> DecodedBySox(const QString& file, const QStringList& typeOptions) {
    return SamplesBy(QStringLiteral("sox"),
                     QStringList{QStringLiteral("-D")} + typeOptions +
                         QStringList{file, QStringLiteral("-t"), QStringLiteral("raw"), QStringLiteral("-e"),
                                     QStringLiteral("signed"), QStringLiteral("-b"), QStringLiteral("16"),
                                     QStringLiteral("-")});
}

std::vector<qint16> DecodedByLame(const QString& file) {
    return SamplesBy(QStringLiteral("lame"), {QStringLiteral("--quiet"), QStringLiteral("--decode"),
                                              QStringLiteral("-t"), file, QStringLiteral("-")});
}

std::vector<qint16> DecodedByOggdec(const QString& file) {
    return SamplesBy(QStringLiteral("oggdec"), {QStringLiteral("-Q"), QStringLiteral("-R"),
                                                QStringLiteral("-o"), QStringLiteral("-"), file});
}

Likeness Compared(const std::vector<qint16>& original, const std::vector<qint16>& decoded, int channels,
                  int mostDelay) {
    Likeness likeness;
    likeness.delayFrames = DelayOf(Mono(original, channels), Mono(decoded, channels), mostDelay);
    const qint64 shift = static_cast<qint64>(likeness.delayFrames) * channels;
    double original2 = 1e-9;
    double product = 0.0;
    double decoded2 = 0.0;
    for (qint64 at = std::max<qint64>(0, -shift);
         at < static_cast<qint64>(original.size()) && at + shift < static_cast<qint64>(decoded.size());
         ++at) {
        const double value = original[static_cast<size_t>(at)];
        const double result = decoded[static_cast<size_t>(at + shift)];
        original2 += value * value;
        product += value * result;
        decoded2 += result * result;
    }
    likeness.gain = product / original2;
    const double signal = likeness.gain * product;
    likeness.signalToNoiseDb = 10.0 * std::log10((signal + 1e-9) / (std::max(decoded2 - signal, 0.0) + 1e-6));
    return likeness;
}

} // namespace kestrune
