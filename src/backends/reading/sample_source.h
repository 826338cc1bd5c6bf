// What every reader of a file kind gives: 16-bit samples of a known rate from any position.
#pragma once

#include <QString>
#include <QtGlobal>

#include <vector>

namespace kestrune {

struct SourceInfo {
    QString kind;       // name of the coding, as users read it
    int rateHz = 0;     // above 0
    int channels = 0;   // 1 or 2, of the samples that are given
    int bitrateBps = 0; // of the file; 0 if unknown
};

// Reads one open file. Positions and lengths are frames (one sample of each channel). One thread.
class SampleSource {
public:
    SampleSource() = default;
    SampleSource(const SampleSource&) = delete;
    SampleSource& operator=(const SampleSource&) = delete;
    virtual ~SampleSource() = default;

    virtual const SourceInfo& Info() const = 0;
    // Puts up to `frames` frames into `out`, which has room for them. Fewer only at the end.
    virtual qint64 Read(qint16* out, qint64 frames) = 0;
    // Moves the reader; a place behind the end becomes the end. Gives the new position. `frame` is not
    // negative.
    virtual qint64 SeekTo(qint64 frame) = 0;
    // Frames of the whole file; 0 if unknown.
    virtual qint64 LengthFrames() = 0;
};

// The part that all sources share: a decoder gives pieces of any size in order, this cuts them into what is
// asked, and turns a seek into the nearest place the decoder can start at plus samples thrown away.
class DecodingSource : public SampleSource {
public:
    const SourceInfo& Info() const override { return info_; }
    qint64 Read(qint16* out, qint64 frames) override;
    qint64 SeekTo(qint64 frame) override;
    qint64 LengthFrames() override;

protected:
    // Appends the next piece, whole frames, to `piece`. A call may add nothing. False at the end.
    virtual bool DecodeNext(std::vector<qint16>& piece) = 0;
    // Puts the decoder at the first frame, as if just opened.
    virtual bool Rewind() = 0;
    // Puts the decoder at a place at or before `frame` from which it gives the same samples as a straight
    // decode. Gives that place, or -1 if there is no better place than where it stands (nothing moved then).
    // A place behind the file's end becomes the end.
    virtual qint64 JumpBefore(qint64 /*frame*/) { return -1; }
    // Frames that a straight decode gives; asked once.
    virtual qint64 CountFrames() = 0;

    // Frame at which the next piece of DecodeNext starts.
    qint64 DecodePosition() const { return decodeFrame_; }
    // For a decoder that was put elsewhere.
    void SetDecodePosition(qint64 frame) { decodeFrame_ = frame; }
    // Keeps what was decoded while opening as the next samples to be read.
    void KeepFirstPiece(std::vector<qint16> piece);

    SourceInfo info_; // set before the first Read

private:
    bool FillPiece();
    void DropPiece();
    qint64 PieceFrames() const;

    std::vector<qint16> piece_; // decoded, not yet read from pieceAt_ on
    size_t pieceAt_ = 0;        // samples
    qint64 decodeFrame_ = 0;    // frame behind the piece
    qint64 endFrame_ = -1;      // where a decode met the end; -1 not yet
    qint64 countedFrames_ = -1; // result of CountFrames; -1 not asked yet
};

} // namespace kestrune
