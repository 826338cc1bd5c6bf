// The frame of a WAVE file around coded samples that come one piece after the other.
#pragma once

#include "components/outcome.h"

#include <QByteArray>
#include <QtGlobal>

class QIODevice;

namespace kestrune {

// What the "fmt " chunk of a file says.
struct WaveFormatChunk {
    quint16 tag = 0; // a WaveTag
    int channels = 0;
    int rateHz = 0;
    quint32 bytesPerSecond = 0; // mean
    int blockBytes = 0;
    int bits = 0;          // of a sample; 0 for codings that have none
    QByteArray extra = {}; // what follows the common fields
};

// Of samples that are coded one by one.
WaveFormatChunk PlainWaveFormat(quint16 tag, int channels, int rateHz, int bits);
// False when a field of the header can't hold its figure.
bool FitsWaveHeader(const WaveFormatChunk& format);

// Order of calls: Begin, any number of Write, Finish. Any thread, one at a time.
class WaveWriter {
public:
    // `format` is one that fits. Codings other than plain integers get a "fact" chunk, which tells the
    // length.
    explicit WaveWriter(WaveFormatChunk format);

    // Writes the header, with lengths of 0. `out` is empty and outlives this.
    Outcome Begin(QIODevice& out);
    // WriteFailed also for what would make the file longer than its 32-bit sizes can tell (4 GiB).
    Outcome Write(const char* bytes, qint64 count);
    // Brings the lengths up to date. `frames` is the true length of the sound.
    Outcome Finish(qint64 frames);

    // Where the data begins, in bytes from the start of the file.
    qint64 DataOffset() const;

private:
    QByteArray Header(qint64 frames) const;

    WaveFormatChunk format_;
    QIODevice* out_ = nullptr;
    qint64 dataBytes_ = 0;
};

} // namespace kestrune
