#include "conversion.h"

#include "backends/codecs/codec_file.h"

#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace kestrune {

namespace {

constexpr qint32 wholeFiles = -1;

// The longest times between two places where a window would let its events run.
class Waits {
public:
    Waits() { clock_.start(); }
    void EventsRun() {
        longestNs_ = std::max(longestNs_, clock_.nsecsElapsed());
        clock_.start();
    }
    double LongestMs() const { return static_cast<double>(longestNs_) / 1e6; }

private:
    QElapsedTimer clock_;
    qint64 longestNs_ = 0;
};

Outcome CopySamples(KSTAudioFile2& in, KSTAudioFile2& out, Waits& waits) {
    out.SetSourceFormat(in.GetWaveFormat(), in.GetChannels());
    const qint64 blockBytes = static_cast<qint64>(in.GetChannels()) * in.GetWaveFormat();
    for (QByteArray block = in.ReadBlock(blockBytes); !block.isEmpty(); block = in.ReadBlock(blockBytes)) {
        if (const Outcome outcome = out.WriteBlock(block); outcome != Outcome::Ok) {
            out.CloseFile();
            return outcome;
        }
        waits.EventsRun();
    }
    return out.CloseFile();
}

Outcome ConvertOne(KSTAudioFile2& in, KSTAudioFile2& out, const QString& input, const OutputChoice& choice,
                   Waits& waits) {
    if (const Outcome outcome = SetFormat(out, choice.format); outcome != Outcome::Ok) {
        return outcome;
    }
    if (const Outcome outcome = in.OpenRead(input, 0, 1); outcome != Outcome::Ok) {
        return outcome;
    }
    const Outcome created = out.Create(choice.file, 0);
    const Outcome outcome = created == Outcome::Ok ? CopySamples(in, out, waits) : created;
    in.CloseFile();
    return outcome;
}

} // namespace

int Convert(const QString& input, const std::vector<OutputChoice>& outputs,
            const ConversionOptions& options) {
    const std::unique_ptr<KSTAudioFile2> in = MakeAudioFile();
    const std::unique_ptr<KSTAudioFile2> out = MakeAudioFile();
    if (options.whole) {
        in->SetFlag(wholeFiles);
        out->SetFlag(wholeFiles);
    }
    for (const OutputChoice& choice : outputs) {
        if (options.expect && SetFormat(*out, choice.format) == Outcome::Ok) {
            out->ExpectOutput(choice.file);
        }
    }
    QTextStream errors(stderr);
    QTextStream times(stdout);
    int failures = 0;
    Waits waits;
    for (const OutputChoice& choice : outputs) {
        QElapsedTimer clock;
        clock.start();
        const Outcome outcome = ConvertOne(*in, *out, input, choice, waits);
        if (outcome != Outcome::Ok) {
            ++failures;
            errors << choice.file << " as " << choice.format << ": outcome " << static_cast<int>(outcome)
                   << Qt::endl;
        } else if (options.timed) {
            times << choice.format << ' ' << clock.elapsed() / 1000.0 << " s" << Qt::endl;
        }
    }
    waits.EventsRun();
    if (options.timed) {
        times << "longest wait of an event " << waits.LongestMs() << " ms" << Qt::endl;
    }
    return failures;
}

} // namespace kestrune
