#include "backends/tags/mpeg_length.h"

#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace kestrune {

namespace {

constexpr qint64 headerBytes = 4;
constexpr int places = 5; // that are looked at between the first frame and the end
// Holds four of the longest frames, and some twenty usual ones.
constexpr qint64 placeBytes = 8192;
constexpr qsizetype longestFrameBytes = 2016;
constexpr qint64 pieceBytes = 256 * 1024;
// Frames in a row that are sound, once the row was broken.
constexpr int framesInRow = 3;

bool IsAlike(const MpegFrame& one, const MpegFrame& other) {
    return one.layer == other.layer && one.rateHz == other.rateHz && one.mpeg1 == other.mpeg1;
}

std::optional<MpegFrame> FrameIn(const QByteArray& bytes, qint64 at) {
    return at >= 0 && at + headerBytes <= bytes.size()
               ? ParseMpegHeader(QByteArray::fromRawData(bytes.constData() + at, headerBytes))
               : std::nullopt;
}

// Bytes of the tag that ends at `end`: ID3v1, APE or Lyrics3. 0 without one.
qint64 ClosingTagBytes(BoundedFile& file, qint64 end) {
    constexpr qint64 id3v1Bytes = 128;
    constexpr qint64 apeFootBytes = 32;
    constexpr qint64 lyricsFootBytes = 15; // a size of six digits, and the mark
    if (file.ReadAt(std::max<qint64>(end - id3v1Bytes, 0), 3) == "TAG") {
        return id3v1Bytes;
    }
    const QByteArray foot = file.ReadAt(std::max<qint64>(end - apeFootBytes, 0), apeFootBytes);
    if (foot.size() == apeFootBytes && foot.startsWith("APETAGEX")) {
        const bool hasHead = qFromLittleEndian<quint32>(foot.constData() + 20) >> 31 != 0;
        return qFromLittleEndian<quint32>(foot.constData() + 12) + (hasHead ? apeFootBytes : 0);
    }
    if (foot.endsWith("LYRICS200")) {
        return foot.mid(foot.size() - lyricsFootBytes, 6).toLongLong() + lyricsFootBytes;
    }
    return 0;
}

qint64 EndOfSound(BoundedFile& file, qint64 start) {
    constexpr int mostTags = 4;
    qint64 end = file.SizeBytes();
    for (int tag = 0; tag < mostTags; ++tag) {
        const qint64 bytes = ClosingTagBytes(file, end);
        if (bytes <= 0 || end - bytes <= start) {
            break;
        }
        end -= bytes;
    }
    return end;
}

// Whether `bytes` are frames of the stream from `at` on, one where the other ends; with a bit rate, of that
// one.
bool IsChain(const QByteArray& bytes, qsizetype at, const MpegFrame& like, int bitrateBps) {
    int frames = 0;
    while (at + headerBytes <= bytes.size()) {
        const std::optional<MpegFrame> frame = FrameIn(bytes, at);
        if (!frame || !IsAlike(*frame, like) || (bitrateBps > 0 && frame->bitrateBps != bitrateBps)) {
            return false;
        }
        at += frame->frameBytes;
        ++frames;
    }
    return frames > 1;
}

bool IsSoundAt(BoundedFile& file, qint64 place, const MpegFrame& like, int bitrateBps) {
    const QByteArray bytes = file.ReadAt(place, placeBytes);
    for (qsizetype at = bytes.indexOf('\xFF'); at >= 0; at = bytes.indexOf('\xFF', at + 1)) {
        if (IsChain(bytes, at, like, bitrateBps)) {
            return at <= longestFrameBytes;
        }
    }
    return false;
}

// Whether there is sound of this stream all over the file; with a bit rate, of that one.
bool IsSoundAllOver(BoundedFile& file, const MpegFrame& first, qint64 end, int bitrateBps) {
    for (int place = 1; place <= places; ++place) {
        const qint64 at = first.offset + (end - first.offset) * place / (places + 1);
        if (at + placeBytes > end) {
            continue;
        }
        if (!IsSoundAt(file, at, first, bitrateBps)) {
            return false;
        }
    }
    return true;
}

int MeanBps(qint64 bytes, qint64 samples, int rateHz) {
    if (samples <= 0) {
        return 0;
    }
    const double bps = static_cast<double>(bytes) * 8 * rateHz / static_cast<double>(samples);
    return static_cast<int>(std::min(bps + 0.5, 1e9));
}

// Goes over the coded frames of a stream, and over what lies between them.
class FrameCount {
public:
    FrameCount(BoundedFile& file, const MpegFrame& first, qint64 end)
        : file_(file), first_(first), end_(end), next_(first.offset) {}

    void Count() {
        while (next_ < end_) {
            const std::optional<MpegFrame> frame = At(next_);
            if (frame && IsAlike(*frame, first_) && (inRow_ || IsRow(next_, *frame))) {
                Take(*frame);
                inRow_ = true;
            } else if (!SkipToHeader()) {
                break;
            }
        }
    }
    qint64 Samples() const { return samples_; }
    qint64 Bytes() const { return bytes_; }
    qint64 CodedFrames() const { return codedFrames_; }
    bool HasOneBitrate() const { return hasOneBitrate_; }
    // As far as the file could be read.
    qint64 SeenTo() const { return std::min(next_, end_); }

private:
    std::optional<MpegFrame> At(qint64 position) {
        if (position < pieceStart_ || position + headerBytes > pieceStart_ + piece_.size()) {
            pieceStart_ = position;
            piece_ = file_.ReadAt(position, pieceBytes);
        }
        return FrameIn(piece_, position - pieceStart_);
    }

    bool IsRow(qint64 position, const MpegFrame& frame) {
        qint64 next = position + frame.frameBytes;
        for (int seen = 1; seen < framesInRow && next + headerBytes <= end_; ++seen) {
            // Reading on would lose the piece that is searched.
            const std::optional<MpegFrame> following = ParseMpegHeader(file_.ReadAt(next, headerBytes));
            if (!following || !IsAlike(*following, frame)) {
                return false;
            }
            next += following->frameBytes;
        }
        return true;
    }

    void Take(const MpegFrame& frame) {
        const qint64 held = std::min<qint64>(frame.frameBytes, end_ - next_);
        next_ += frame.frameBytes;
        // Of a frame that was cut there is no sound.
        if (held == frame.frameBytes) {
            hasOneBitrate_ = hasOneBitrate_ && (bitrateBps_ == 0 || frame.bitrateBps == bitrateBps_);
            // The first one may tell of the others, and have a bit rate of its own.
            bitrateBps_ = codedFrames_ > 0 ? frame.bitrateBps : 0;
            samples_ += frame.samples;
            bytes_ += held;
            ++codedFrames_;
        }
    }

    // To the next place that may be a header. False at the end of what can be read.
    bool SkipToHeader() {
        inRow_ = false;
        At(next_ + 1);
        const qsizetype found = piece_.indexOf('\xFF', next_ + 1 - pieceStart_);
        next_ = found >= 0 ? pieceStart_ + found : pieceStart_ + piece_.size();
        return !piece_.isEmpty();
    }

    BoundedFile& file_;
    const MpegFrame first_;
    const qint64 end_;
    qint64 next_;
    bool inRow_ = true;
    QByteArray piece_;
    qint64 pieceStart_ = 0;
    qint64 samples_ = 0;
    qint64 bytes_ = 0;
    qint64 codedFrames_ = 0;
    int bitrateBps_ = 0;
    bool hasOneBitrate_ = true;
};

// What the first frame tells, if the file is as long as it says.
std::optional<MpegLength> AsTold(BoundedFile& file, const MpegFrame& first, const GaplessData& told,
                                 qint64 end) {
    if (told.codedFrames <= 0 || told.bytes <= 0) {
        return std::nullopt;
    }
    const qint64 off = std::abs(end - first.offset - told.bytes);
    const qint64 mostOff = std::max<qint64>(told.bytes / 200, qint64{2} * first.frameBytes);
    if (off > mostOff || !IsSoundAllOver(file, first, end, 0)) {
        return std::nullopt;
    }
    const qint64 coded = told.codedFrames * first.samples;
    const std::optional<MpegFrame> second =
        ParseMpegHeader(file.ReadAt(first.offset + first.frameBytes, headerBytes));
    const int bps =
        told.constantBitrate && second ? second->bitrateBps : MeanBps(told.bytes, coded, first.rateHz);
    return MpegLength{std::max<qint64>(coded - told.delayFrames - told.paddingFrames, 0), bps};
}

std::optional<MpegLength> AsCounted(BoundedFile& file, const MpegFrame& first, const GaplessData& told,
                                    qint64 end) {
    // What a decoder of layer 3 is behind its input; it is left out with the encoder's delay.
    constexpr qint64 decoderDelay = 529;
    file.RenewBudget();
    FrameCount count(file, first, end);
    count.Count();
    qint64 samples = count.Samples();
    if (told.isThere) {
        const bool isWhole = count.CodedFrames() - 1 == told.codedFrames;
        samples -= first.samples;
        if (told.delayFrames > 0) {
            samples -= isWhole ? told.delayFrames + told.paddingFrames : told.delayFrames + decoderDelay;
        }
    }
    if (samples <= 0) {
        return std::nullopt;
    }
    const int mean = MeanBps(count.Bytes(), count.Samples(), first.rateHz);
    const qint64 seenBytes = count.SeenTo() - first.offset;
    if (count.SeenTo() < end && seenBytes > 0) {
        samples += static_cast<qint64>(static_cast<double>(end - count.SeenTo()) /
                                       static_cast<double>(seenBytes) * static_cast<double>(samples));
    }
    return MpegLength{samples, count.HasOneBitrate() && !told.isThere ? first.bitrateBps : mean};
}

} // namespace

std::optional<MpegLength> MeasureMpeg(BoundedFile& file, const MpegFrame& first) {
    const GaplessData told = ReadGaplessData(file, first);
    const qint64 end = EndOfSound(file, first.offset);
    if (const std::optional<MpegLength> length = AsTold(file, first, told, end)) {
        return length;
    }
    if (!told.isThere && IsSoundAllOver(file, first, end, first.bitrateBps)) {
        const qint64 frames = (end - first.offset) * 8 * first.rateHz / first.bitrateBps;
        return MpegLength{frames, first.bitrateBps};
    }
    return AsCounted(file, first, told, end);
}

std::optional<MpegLength> FindAndMeasureMpeg(BoundedFile& file) {
    file.RenewBudget();
    const std::optional<MpegFrame> first = FindMpegFrameAnywhere(file, file.SizeBytes());
    return first ? MeasureMpeg(file, *first) : std::nullopt;
}

} // namespace kestrune
