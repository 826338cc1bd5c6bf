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
// Lengths are those that a decode to the end gives, and turn into what was met once a decode came to the end.
// Until then these are estimates: FLAC and Musepack files that were cut tell their old length; MPEG audio
// above 256 MiB goes by its header frame or its bit rate; Matroska counts milliseconds; coded kinds of FFmpeg
// outside the ones that length_scan.h names go by the durations of their packets. The first call of
// GetLengthBytes reads through files whose header does not tell (MPEG audio, AVI, Windows Media) without
// decoding them, about 5 ms for five minutes.
//
// Seeks are exact for every kind. Windows Media, AAC, Opus, Musepack with noise filling and the headerless
// speech kinds decode from the start when they go back, and through what lies between when they go ahead.
//
// A stream that changes its sample rate on the way is given on at the rate of its first frame.
//
// Written samples are mixed to the channels of the format, converted to its rate and given to its encoder
// (encoding_pipeline.h); what happens to files is told in output_file.h. SetSourceFormat counts from before
// Create or until the first block, for one file; without it the blocks are taken as the format's own rate and
// channels. A format that is set while a file is written counts from the next Create on.
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
