#include "conversion.h"

#include "backends/audio_file/codec_file.h"

#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace kestrune {

namespace {

// The longest times between two places where a window would let its events run.
class Waits {
public:
    Waits() { clock_.start(); }
    // `before` is what was done since the last place.
    void EventsRun(const QString& before) {
        if (clock_.nsecsElapsed() > longestNs_) {
            longestNs_ = clock_.nsecsElapsed();
            longest_ = before;
        }
        clock_.start();
    }
    double LongestMs() const { return static_cast<double>(longestNs_) / 1e6; }
    const QString& Longest() const { return longest_; }

private:
    QElapsedTimer clock_;
    qint64 longestNs_ = 0;
    QString longest_;
};

Outcome CopySamples(KSTAudioFile2& in, KSTAudioFile2& out, const QString& format, Waits& waits) {
    out.SetSourceFormat(in.GetWaveFormat(), in.GetChannels());
    const qint64 blockBytes = static_cast<qint64>(in.GetChannels()) * in.GetWaveFormat();
    int number = 0;
    for (QByteArray block = in.ReadBlock(blockBytes); !block.isEmpty(); block = in.ReadBlock(blockBytes)) {
        if (const Outcome outcome = out.WriteBlock(block); outcome != Outcome::Ok) {
            out.CloseFile();
            return outcome;
        }
        waits.EventsRun(QStringLiteral("block %1 of %2").arg(++number).arg(format));
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
    const Outcome outcome = created == Outcome::Ok ? CopySamples(in, out, choice.format, waits) : created;
    in.CloseFile();
    return outcome;
}

} // namespace

int Convert(const QString& input, const std::vector<OutputChoice>& outputs,
            const ConversionOptions& options) {
    const std::unique_ptr<KSTAudioFile2> in = MakeAudioFile();
    const std::unique_ptr<KSTAudioFile2> out = MakeAudioFile();
    if (options.whole) {
        in->SetFlag(outputs.size() > 1 ? KSTAudioFile2::wholeFilesAgain : KSTAudioFile2::wholeFiles);
        out->SetFlag(KSTAudioFile2::wholeFiles);
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
    waits.EventsRun(QStringLiteral("the end"));
    if (options.timed) {
        times << "longest wait of an event " << waits.LongestMs() << " ms, for " << waits.Longest()
              << Qt::endl;
    }
    return failures;
}

} // namespace kestrune
