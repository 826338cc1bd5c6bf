// Decoding and encoding of audio files by blocks.
#pragma once

#include "components/outcome.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace kestrune {

// The settings of an MPEG layer 3 encoder. Who sets Preset, AltPreset or CommandLine does it by ApplyPreset
// and its kin of mp3_presets.h, which bring the other fields in line: only those are encoded by.
struct Mp3Options {
    QString commandLine;
    qint16 preset = 0;          // 1 to 11, 0 none
    qint16 altPreset = 0;       // 1 to 5, 0 none
    qint32 maxVbrBitrate = 320; // kbit/s
    qint16 vbrQuality = 4;      // 0 best to 9
    qint32 vbrMethod = -1;      // -1 none, 0 default, 1 old, 2 new, 3 MTRH, 4 ABR
    qint16 abrBitrate = 128;    // kbit/s, 4 to 320
    qint32 channelMode = 1;     // 0 mono, 1 stereo, 2 joint, 3 forced joint, 4 dual
    qint16 quality = 5;         // 0 best to 9
    bool writeVbrHeader = true;
    bool bitReservoir = true;
    bool blockTypesDiffer = true;
    bool shortBlocks = true;
    qint32 deEmphasis = 0; // 0 none, 1 50/15 microseconds, 2 CCITT J.17
    bool isoCompliance = false;
    bool enforceMinBitrate = false;
    qint32 athControl = 0;        // 0 default, 1 only, 2 disabled, 3 only for short blocks
    qint32 lowpassFrequency = -1; // Hz, -1 off
    qint32 highpassFrequency = -1;
    qint32 lowpassWidth = 0; // Hz
    qint32 highpassWidth = 0;
    bool crcProtection = false;
    qint32 frequency = 44100; // Hz
    qint32 channels = 2;
    qint32 bitrate = 128; // kbit/s
    // The least one of a rate that varies, where `bitrate` only says about how much comes of it; 0:
    // `bitrate`.
    qint32 leastVbrBitrate = 0;
    bool operator==(const Mp3Options&) const = default;
};

// Type codes of headerless data.
enum RawType : qint32 { RawPcm = 1, RawALaw = 2, RawMuLaw = 3 };

// One object either reads one file or writes one file at a time. OpenRead and Create close what was open.
// Samples are 16-bit interleaved, one or two channels (see pcm.h); deeper sources are dithered down, more
// channels are mixed down, and 16-bit sources pass untouched. Positions and lengths are bytes of those
// samples. Thread: all calls from one thread. Calls block for the time of file access and coding; they run no
// events.
class KSTAudioFile2 {
public:
    virtual ~KSTAudioFile2() = default;

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
    // Text of the open input, or of the output format. Names the rate as "44,100" and the bit rate as "128
    // kbps".
    virtual QString GetFormatText() const = 0;
    // Divides a count of decoded bytes into the unit of GetLengthBytes: 1.
    virtual qint32 BlockDivisor() const = 0;
    virtual qint32 GetFormatBits() const = 0; // bits a sample of the set output format
    virtual qint32 GetRawType() const = 0;    // of the set headerless format

    // --- Writing ---

    // Creates a file in the current output format, or in the one that its extension names for ".mp3", ".mp2"
    // and ".ogg", by the last SetFormat call of that kind. An existing file is written beside and replaced by
    // CloseFile, so that it may be the very file that is being read. On failure GetFormatId is negative.
    // NotSupported for a format that cannot be written.
    virtual Outcome Create(const QString& file, qint32 first = 0) = 0;
    // What the samples given to WriteBlock look like: sample rate in Hz, channels.
    virtual void SetSourceFormat(qint32 waveFormat, qint32 channels) = 0;
    virtual Outcome WriteBlock(const QByteArray& block) = 0;
    // A hint for speed on which nothing else depends: after the outputs that were expected before it, `file`
    // will be created in the current format (or in the one that its extension names) and given the same
    // samples as the next file that is created. What is expected in vain, or comes with other samples or in
    // another format, costs time only; no file appears before its Create. ForgetExpectedOutputs drops what is
    // still expected.
    virtual void ExpectOutput(const QString& file) = 0;
    virtual void ForgetExpectedOutputs() = 0;

    // --- Output formats. Each replaces the current one; for reading they set the format of headerless files.
    // NotSupported when the kind does not offer the combination; GetFormatText is then empty. ---

    virtual Outcome SetFormatFromFile(const QString& file) = 0;
    virtual Outcome SetFormatPCMFreq(qint32 frequency, qint32 channels, qint32 bits) = 0;
    virtual Outcome SetFormatRaw(qint32 type, qint32 frequency, qint32 channels, qint32 bits) = 0;
    virtual Outcome SetFormatADPCM(qint32 frequency, qint32 channels) = 0;
    virtual Outcome SetFormatGSM(qint32 frequency) = 0;
    virtual Outcome SetFormatVOX(qint32 frequency) = 0;
    virtual Outcome SetFormatDSP() = 0;
    virtual Outcome SetFormatMP2(qint32 frequency, qint32 bitrateKbps, qint32 channels) = 0;
    virtual Outcome SetFormatMP3(qint32 frequency, qint32 bitrateKbps, qint32 channels) = 0;
    virtual Outcome SetFormatMP3Options(const Mp3Options& options) = 0;
    virtual Outcome SetFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                       qint32 minimumKbps, qint32 maximumKbps,
                                       qint32 quality) = 0; // quality -1: by bit rate
    virtual bool IsAvailableFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                            qint32 minimumKbps, qint32 maximumKbps) = 0;
    virtual Outcome SetFormatWMA(qint32 profile) = 0;
    virtual Outcome SetFormatG721(qint32 frequency) = 0;
    virtual Outcome SetFormatG723(qint32 frequency, qint32 bits) = 0;
    virtual Outcome SetFormatG726(qint32 frequency, qint32 bits) = 0;
    // Lets the component itself ask for a format. Nothing is offered: NotSupported.
    virtual Outcome SelectFormat() = 0;

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
