#include "backends/encoders/mpeg_cut.h"

#include "backends/encoders/mp3_header_frame.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <vector>

namespace kestrune {

namespace {

constexpr qsizetype headerBytes = 4;
constexpr qint64 readBytes = Q_INT64_C(1) << 20;
constexpr int placesCount = 100;
// What the decoder of layer 3 is behind its input.
constexpr int decoderDelay = 529;
constexpr int lameDelay = 576;
constexpr int bitsPerKbit = 1000;

struct FrameFacts {
    int bytes = 0; // 0: no header of a frame
    int samples = 0;
    qsizetype sideBytes = 0; // of layer 3
};

int Kbps(bool isFull, int layer, unsigned index) {
    constexpr std::array full2{0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0};
    constexpr std::array full3{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    constexpr std::array others{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
    if (!isFull) {
        return others[index];
    }
    return layer == 2 ? full2[index] : full3[index];
}

FrameFacts FactsOf(const char* header) {
    constexpr std::array frequencies{44100, 48000, 32000};
    const auto at = [header](int place) { return static_cast<unsigned>(static_cast<uchar>(header[place])); };
    const unsigned version = at(1) >> 3 & 3; // 3 MPEG-1, 2 MPEG-2, 0 half of that
    const int layer = 4 - static_cast<int>(at(1) >> 1 & 3);
    const unsigned rateIndex = at(2) >> 2 & 3;
    if (at(0) != 0xFF || at(1) < 0xE0 || version == 1 || (layer != 2 && layer != 3) || rateIndex == 3) {
        return {};
    }
    const bool isFull = version == 3;
    const int rateHz = frequencies[rateIndex] / (isFull ? 1 : version == 2 ? 2 : 4);
    const bool isMono = at(3) >> 6 == 3;
    FrameFacts facts;
    facts.samples = layer == 3 && !isFull ? 576 : 1152;
    facts.sideBytes = isFull ? (isMono ? 17 : 32) : (isMono ? 9 : 17);
    const int kbps = Kbps(isFull, layer, at(2) >> 4);
    facts.bytes =
        kbps == 0 ? 0 : facts.samples / 8 * kbps * bitsPerKbit / rateHz + static_cast<int>(at(2) >> 1 & 1);
    return facts;
}

FrameFacts FrameAt(QIODevice& file, qint64 position) {
    const QByteArray header = file.seek(position) ? file.read(headerBytes) : QByteArray();
    return header.size() == headerBytes ? FactsOf(header.constData()) : FrameFacts();
}

// Goes over coded frames and keeps where they begin.
class FrameWalk {
public:
    FrameWalk(QIODevice& file, qint64 start) : file_(file), next_(start) {}

    // As far as there are so many. False if something else comes first.
    bool Walk(qint64 count) {
        std::vector<char> bytes(static_cast<size_t>(readBytes));
        qint64 at = next_; // of the bytes in the file
        qint64 got = 0;
        while (static_cast<qint64>(starts_.size()) < count) {
            if (next_ + headerBytes > at + got) {
                at = next_;
                got = file_.seek(at) ? file_.read(bytes.data(), readBytes) : 0;
                if (got < headerBytes) {
                    return got <= 0;
                }
            }
            const FrameFacts facts = FactsOf(bytes.data() + (next_ - at));
            if (facts.bytes == 0) {
                return false;
            }
            starts_.push_back(next_);
            next_ += facts.bytes;
        }
        return true;
    }
    // Of each coded frame; and the byte behind the last.
    const std::vector<qint64>& Starts() const { return starts_; }
    qint64 End() const { return std::min(next_, file_.size()); }

private:
    QIODevice& file_;
    std::vector<qint64> starts_;
    qint64 next_;
};

qint64 CountFor(qint64 frames, const FrameFacts& kind) {
    return (frames + kind.samples - 1) / kind.samples;
}

template <typename Number>
void PutBig(QByteArray& bytes, qsizetype at, Number value) {
    qToBigEndian(value, bytes.data() + at);
}

// The sum that LAME makes of all the sound.
std::optional<quint16> SumOf(QIODevice& file, qint64 from, qint64 to) {
    if (!file.seek(from)) {
        return {};
    }
    quint16 sum = 0;
    for (qint64 at = from; at < to;) {
        const QByteArray bytes = file.read(std::min(readBytes, to - at));
        if (bytes.isEmpty()) {
            return {};
        }
        sum = Mp3Sum(sum, reinterpret_cast<const unsigned char*>(bytes.constData()), bytes.size());
        at += bytes.size();
    }
    return sum;
}

// The first frame of an MPEG layer 3 file that tells its length, as LAME and mp3_header_frame.h make it.
class LengthFrame {
public:
    LengthFrame(QByteArray bytes, const FrameFacts& facts)
        : bytes_(std::move(bytes)), facts_(facts), mark_(headerBytes + facts.sideBytes) {}

    bool IsThere() const {
        const QByteArray mark = bytes_.mid(mark_, 4);
        return bytes_.size() >= sumAt() + 2 && (mark == "Xing" || mark == "Info") &&
               qFromBigEndian<quint32>(bytes_.constData() + mark_ + 4) == allFollow;
    }
    int Delay() const { return At(delayAt()) << 4 | At(delayAt() + 1) >> 4; }

    void Tell(const FrameWalk& walk, qint64 frames, quint16 soundSum) {
        const auto count = static_cast<qint64>(walk.Starts().size());
        const auto fileBytes = static_cast<quint32>(walk.End());
        PutBig(bytes_, mark_ + 8, static_cast<quint32>(count));
        PutBig(bytes_, mark_ + 12, fileBytes);
        for (int place = 0; place < placesCount; ++place) {
            const auto start = walk.Starts()[static_cast<size_t>(count * place / placesCount)];
            bytes_[mark_ + 16 + place] = static_cast<char>(std::min<qint64>(start * 256 / fileBytes, 255));
        }
        const qint64 padding =
            std::clamp<qint64>(count * facts_.samples - Delay() - frames, 0, largestTwelveBits);
        const int delay = Delay();
        bytes_[delayAt() + 1] = static_cast<char>((delay & 15) << 4 | static_cast<int>(padding >> 8));
        bytes_[delayAt() + 2] = static_cast<char>(padding & 255);
        PutBig(bytes_, delayAt() + 7, fileBytes);
        PutBig(bytes_, delayAt() + 11, soundSum);
        PutBig(bytes_, sumAt(),
               Mp3Sum(0, reinterpret_cast<const unsigned char*>(bytes_.constData()), sumAt()));
    }
    const QByteArray& Bytes() const { return bytes_; }

private:
    static constexpr quint32 allFollow = 15;
    static constexpr qint64 largestTwelveBits = 4095;
    // Behind mark, flags, frames, bytes, places and quality; name, revision, lowpass, peak, gains, flags,
    // rate.
    qsizetype delayAt() const { return mark_ + 120 + 21; }
    qsizetype sumAt() const { return mark_ + 120 + 34; }
    int At(qsizetype at) const { return static_cast<uchar>(bytes_[at]); }

    QByteArray bytes_;
    FrameFacts facts_;
    qsizetype mark_;
};

} // namespace

std::optional<qint64> MpegCut(QIODevice& file, qint64 start, qint64 frames, int delay) {
    const FrameFacts kind = FrameAt(file, start);
    if (kind.bytes == 0) {
        return {};
    }
    FrameWalk walk(file, start);
    return walk.Walk(CountFor(frames + delay, kind)) ? std::optional(walk.End()) : std::nullopt;
}

std::optional<qint64> Mp3Cut(QIODevice& file, qint64 frames) {
    const FrameFacts first = FrameAt(file, 0);
    if (first.bytes == 0 || !file.seek(0)) {
        return {};
    }
    LengthFrame told(file.read(first.bytes), first);
    if (!told.IsThere()) {
        return MpegCut(file, 0, frames, lameDelay + decoderDelay);
    }
    FrameWalk walk(file, first.bytes);
    if (!walk.Walk(CountFor(frames + told.Delay() + decoderDelay, first)) || walk.Starts().empty()) {
        return {};
    }
    const std::optional<quint16> sum = SumOf(file, first.bytes, walk.End());
    if (!sum) {
        return {};
    }
    told.Tell(walk, frames, *sum);
    const bool written = file.seek(0) && file.write(told.Bytes()) == told.Bytes().size();
    return written ? std::optional(walk.End()) : std::nullopt;
}

} // namespace kestrune
