// Decoding and encoding of audio files by blocks.
#pragma once

#include "components/audio_format.h"
#include "components/outcome.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace kestrune {

// One object either reads one file or writes one file at a time. OpenRead and Create close what was open.
// Samples are 16-bit interleaved, one or two channels (see pcm.h); deeper sources are dithered down, more
// channels are mixed down, and 16-bit sources pass untouched. Positions and lengths are bytes of those
// samples. Thread: all calls from one thread. Calls block for the time of file access and coding; they run no
// events. As an AudioFormat it holds what the next file is written in, and what headerless files are read as;
// while a file is open for reading, GetFormatText tells of that file.
class KSTAudioFile2 : public virtual AudioFormat {
public:
    // --- Reading ---

    // Opens a file of any supported kind. The two figures after the path are passed on as they are and have
    // no effect. Headerless kinds (.vox .raw .pcm .gsm .g721 .g723 .g726 .adpcm) go by their extension and
    // take the format that the matching SetFormat call left, or their default. On failure GetFormatId is
    // negative.
    virtual Outcome OpenRead(const QString& file, qint32 first = 0, qint32 second = 1) = 0;
    // Closes the open file. Closing a file that is written finishes it; WriteFailed when that did not
    // succeed.
    virtual Outcome CloseFile() = 0;
    // The next bytes, whole frames, at most `size`; fewer only before the end, empty at the end or when
    // nothing is open.
    virtual QByteArray ReadBlock(qint64 size) = 0;
    // Moves the reader. `whence` 3 is from the start, the only one in use. The position is brought into the
    // file and cut to a whole frame; returns the new position, or -1 when nothing is open. The next block
    // equals the same place of a straight decode.
    virtual qint64 SeekTo(qint64 position, qint32 whence = 3) = 0;

    // --- What is open, or the format set for writing ---

    // Not negative for an open file; negative after a failed OpenRead or Create, and while nothing was
    // opened.
    virtual qint32 GetFormatId() const = 0;
    virtual qint64 GetLengthBytes() = 0; // of the whole open input; 0 if it is not known
    virtual qint64 GetLengthMs() = 0;
    virtual qint32 GetChannels() const = 0;   // 1 or 2
    virtual qint32 GetWaveFormat() const = 0; // sample rate in Hz
    // Divides a count of decoded bytes into the unit of GetLengthBytes: 1.
    virtual qint32 BlockDivisor() const = 0;

    // --- Writing ---

    // Creates a file in the current output format, or in the one that its extension names for ".mp3", ".mp2"
    // and ".ogg", by the last SetFormat call of that kind. An existing file is written beside and replaced by
    // CloseFile, so that it may be the very file that is being read. On failure GetFormatId is negative.
    // NotSupported for a format that cannot be written.
    virtual Outcome Create(const QString& file, qint32 first = 0) = 0;
    // What the samples given to WriteBlock look like: sample rate in Hz, channels.
    virtual void SetSourceFormat(qint32 waveFormat, qint32 channels) = 0;
    virtual Outcome WriteBlock(const QByteArray& block) = 0;
    // A hint for speed: after the outputs that were expected before it, `file` will be created in the current
    // format (or in the one that its extension names) and given the same samples as the next file that is
    // created. What is expected in vain, or comes with other samples or in another format, costs time only;
    // no file appears before its Create. One that is closed after fewer samples is as long as without the
    // hint, but where its coding has blocks the last one may hold what the others had there instead of
    // silence. ForgetExpectedOutputs drops what is still expected.
    virtual void ExpectOutput(const QString& file) = 0;
    virtual void ForgetExpectedOutputs() = 0;

    // Two settings of the reader that the start-up passes on (1: true, 2: 2): kept, without effect. Two flags
    // say that whole files are converted: a reader then reads ahead, a writer codes while its caller goes on.
    // With wholeFilesAgain each file is read several times, and a reader keeps what it decoded for the next
    // OpenRead of the same file. What is read and written is the same.
    static constexpr qint32 wholeFiles = -1;
    static constexpr qint32 wholeFilesAgain = -2;
    virtual void SetBlockOption(qint32 option, qint32 value) = 0;
    virtual void SetFlag(qint32 value) = 0;
    // While true, headerless files go on to be read as they were before: what the SetFormat calls leave
    // meanwhile counts for reading from the next false on. For writing it counts at once.
    virtual void HoldInputFormats(bool hold) = 0;
};

} // namespace kestrune
