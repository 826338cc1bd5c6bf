// What every writer of a file kind takes: samples of one rate and channel count, in order, until the end.
#pragma once

#include "components/outcome.h"

#include <QtGlobal>

class QIODevice;

namespace kestrune {

// The samples that an encoder wants.
struct EncoderInput {
    int rateHz = 0;           // above 0
    int channels = 0;         // 1 or 2
    bool takesFloats = false; // WriteFloats is called if true, else WriteIntegers
};

// Writes one file. Order of calls: Begin, any number of one of the two Write calls, Finish. After a call that
// is not Ok only the destructor follows. One thread at a time, which may be another one from call to call.
class SampleEncoder {
public:
    SampleEncoder() = default;
    SampleEncoder(const SampleEncoder&) = delete;
    SampleEncoder& operator=(const SampleEncoder&) = delete;
    virtual ~SampleEncoder() = default;

    // Constant from construction on.
    virtual EncoderInput Input() const = 0;
    // Sets the encoder up. `out` is empty, open for reading and writing, can be moved in, and outlives the
    // encoder. NotSupported when the encoder refuses the combination; nothing was written then.
    virtual Outcome Begin(QIODevice& out) = 0;
    // Interleaved frames, full scale 32767. `frames` may be any number, also 0.
    virtual Outcome WriteIntegers(const qint16* /*samples*/, qint64 /*frames*/) {
        return Outcome::NotSupported;
    }
    // Interleaved frames, full scale 1.0; values beyond it occur and are the encoder's to clip.
    virtual Outcome WriteFloats(const float* /*samples*/, qint64 /*frames*/) { return Outcome::NotSupported; }
    // Writes what is still held back and brings the header up to date. A file without a sample is valid.
    virtual Outcome Finish() = 0;
};

} // namespace kestrune
