// Programs that are not ours, asked what a written file is and how it sounds.
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <vector>

namespace kestrune {

// What `ffprobe` says of the first stream: "pcm_s16le,44100,2". Empty, with a test failure, if it refuses.
QString ProbedBy(const QString& file);

// The samples that a program decodes, 16 bit, interleaved. Empty, with a test failure, if it refuses.
std::vector<qint16> DecodedByFfmpeg(const QString& file, const QStringList& inputOptions = {});
// `typeOptions` stand before the file: {"-t", "vox", "-r", "8000"}.
std::vector<qint16> DecodedBySox(const QString& file, const QStringList& typeOptions = {});
std::vector<qint16> DecodedByLame(const QString& file);
std::vector<qint16> DecodedByOggdec(const QString& file);

// How near a decoded sound is to the one that was coded.
struct Likeness {
    int delayFrames = 0; // the decoded sound is later by these, as the best match tells
    double gain = 0;     // by which the decoded sound is louder
    // Over the frames that both have, once delay and gain are taken out.
    double signalToNoiseDb = 0;
};
// Looks for a delay of up to `mostDelay` frames either way.
Likeness Compared(const std::vector<qint16>& original, const std::vector<qint16>& decoded, int channels,
                  int mostDelay);

} // namespace kestrune
