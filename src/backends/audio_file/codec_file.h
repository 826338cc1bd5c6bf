// Reading of audio files of every supported kind, and writing of those that have an encoder.
#pragma once

#include "backends/encoders/format_choice.h"
#include "backends/reading/decode_cache.h"
#include "backends/writing/ahead_outputs.h"
#include "backends/writing/encoding_output.h"
#include "backends/writing/encoding_pool.h"
#include "components/audio_file.h"

#include <memory>
#include <optional>

namespace kestrune {

// An audio file object over FFmpeg, libmpcdec, spandsp, LAME, twolame, libvorbis and libsndfile.
//
// Lengths are those of a whole decode. Once a decode has come to the end, its own count is given. Before
// that, a few kinds give an estimate: a FLAC or Musepack file that was cut tells the length it had; MPEG
// audio above 256 MiB goes by its header frame or its bit rate; Matroska counts milliseconds; coded kinds
// that length_scan.h does not name add up the durations of their packets. Where the header does not tell
// (MPEG audio, AVI, Windows Media) the first call of GetLengthBytes reads through the file without decoding
// it: about 5 ms for five minutes.
//
// Seeks are exact for every kind. Windows Media, AAC, Opus, Musepack with noise filling and the headerless
// speech kinds can't jump: they decode from the start to go back, and all that lies between to go ahead.
//
// A stream that changes its sample rate keeps the rate of its first frame: what follows is converted.
//
// Written samples are mixed to the channels of the format, converted to its rate and encoded
// (encoding_pipeline.h); output_file.h tells how the file comes to its name. SetSourceFormat may be called
// before Create or after it, up to the first block, and holds for one file. Without it the blocks are taken
// to have the format's own rate and channels. A format that is set while a file is written holds from the
// next Create on.
class CodecFile : public KSTAudioFile2, public FormatChoice {
public:
    CodecFile();
    ~CodecFile() override;

    Outcome OpenRead(const QString& file, qint32 first = 0, qint32 second = 1) override;
    Outcome CloseFile() override;
    QByteArray ReadBlock(qint64 size) override;
    qint64 SeekTo(qint64 position, qint32 whence = 3) override;

    qint32 GetFormatId() const override;
    qint64 GetLengthBytes() override;
    qint64 GetLengthMs() override;
    qint32 GetChannels() const override;
    qint32 GetWaveFormat() const override;
    QString GetFormatText() const override;
    qint32 BlockDivisor() const override;

    Outcome Create(const QString& file, qint32 first = 0) override;
    void SetSourceFormat(qint32 waveFormat, qint32 channels) override;
    Outcome WriteBlock(const QByteArray& block) override;
    void ExpectOutput(const QString& file) override;
    void ForgetExpectedOutputs() override;

    void SetBlockOption(qint32 option, qint32 value) override;
    void SetFlag(qint32 value) override;
    void HoldInputFormats(bool hold) override;

private:
    Outcome Open(EncodingOutput& output, const QString& file, const OutputFormat& format);
    Outcome CloseOutput();
    // What encodes while whole files are converted; else null.
    EncodingPool* Pool();

    DecodeCache input_;
    std::optional<HeaderlessFormats> heldHeaderless_; // in the place of those chosen, while they are held
    SampleShape sourceShape_;                         // of the file that is or will be written
    bool wholeFiles_ = false;
    // Made with the first file that is written while whole files are. Each uses those above it.
    std::unique_ptr<EncodingPool> pool_;
    std::unique_ptr<AheadOutputs> ahead_;
    std::unique_ptr<EncodingOutput> output_; // null unless a file is written
    bool feedsAhead_ = false;                // its blocks go also to what is expected
    bool startedAhead_ = false;
};

std::unique_ptr<KSTAudioFile2> MakeAudioFile();

} // namespace kestrune
