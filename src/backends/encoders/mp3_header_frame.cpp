#include "backends/encoders/mp3_header_frame.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

constexpr qsizetype headerBytes = 4;
constexpr qsizetype placesCount = 100;
// Mark, what follows, frames, bytes, places, quality.
constexpr qsizetype countsBytes = 4 + 4 + 4 + 4 + placesCount + 4;
constexpr quint32 allFollow = 15;
constexpr qsizetype encoderBlockBytes = 36;
constexpr qsizetype encoderNameBytes = 9;
constexpr quint8 constantRate = 1;
constexpr int largestTwelveBits = 4095;
constexpr int largestByte = 255;

constexpr std::array ratesOfMpeg1{32, 40, 48, 56, 64, 80, 96, 112, 128};
constexpr std::array ratesOfOthers{8, 16, 24, 32, 40, 48, 56, 64};
constexpr std::array frequencies{44100, 48000, 32000};

// What the four bytes say that is needed here.
struct FrameKind {
    explicit FrameKind(const QByteArray& header) {
        const auto second = static_cast<uchar>(header.at(1));
        const auto third = static_cast<uchar>(header.at(2));
        const int version = second >> 3 & 3; // 3 MPEG-1, 2 MPEG-2, 0 half of that
        isFull = version == 3;
        const int index = std::min(third >> 2 & 3, 2);
        const int divisor = isFull ? 1 : version == 2 ? 2 : 4;
        rateHz = frequencies[static_cast<size_t>(index)] / divisor;
        isMono = static_cast<uchar>(header.at(3)) >> 6 == 3;
    }
    qsizetype SideBytes() const {
        if (isFull) {
            return isMono ? 17 : 32;
        }
        return isMono ? 9 : 17;
    }
    qsizetype FrameBytes(int kbps) const { return (isFull ? 144 : 72) * 1000 * kbps / rateHz; }

    bool isFull = false;
    bool isMono = false;
    int rateHz = 0;
};

struct ChosenRate {
    int index = 0; // of the header
    qsizetype frameBytes = 0;
};

// The lowest one whose frame holds it all.
ChosenRate RateFor(const FrameKind& kind) {
    const qsizetype needed = headerBytes + kind.SideBytes() + countsBytes + encoderBlockBytes;
    ChosenRate chosen;
    const auto take = [&](int kbps) {
        if (chosen.frameBytes < needed) {
            chosen = {chosen.index + 1, kind.FrameBytes(kbps)};
        }
    };
    if (kind.isFull) {
        std::for_each(ratesOfMpeg1.begin(), ratesOfMpeg1.end(), take);
    } else {
        std::for_each(ratesOfOthers.begin(), ratesOfOthers.end(), take);
    }
    return chosen;
}

template <typename Number>
void AppendBig(QByteArray& bytes, Number value) {
    const Number big = qToBigEndian(value);
    bytes.append(reinterpret_cast<const char*>(&big), sizeof big);
}

// The header of the frames with sound with another bit rate, without padding and checksum.
QByteArray HeaderWith(const QByteArray& soundHeader, int rateIndex) {
    QByteArray header = soundHeader.left(headerBytes);
    header[1] = static_cast<char>(header.at(1) | 1);
    header[2] = static_cast<char>((static_cast<uchar>(header.at(2)) & 0x0D) | rateIndex << 4);
    header[3] = static_cast<char>(static_cast<uchar>(header.at(3)) & 0xCF);
    return header;
}

void AppendCounts(QByteArray& frame, const Mp3HeaderFacts& facts, quint32 fileBytes) {
    frame += "Info";
    AppendBig(frame, allFollow);
    AppendBig(frame, facts.frames);
    AppendBig(frame, fileBytes);
    // At a constant rate each hundredth of the time is at that of the bytes, which are counted by 256ths.
    for (qsizetype place = 0; place < placesCount; ++place) {
        frame += static_cast<char>(place * 256 / placesCount);
    }
    AppendBig(frame, static_cast<quint32>(facts.figure));
}

quint8 SourceMark(int rateHz) {
    if (rateHz <= 32000) {
        return 0;
    }
    return rateHz <= 44100 ? 1 : 2;
}

void AppendEncoderBlock(QByteArray& frame, const Mp3HeaderFacts& facts, quint32 fileBytes) {
    // By channel mode: mono, stereo, joint, forced joint, dual.
    constexpr std::array<quint8, 5> stereoMarks{0, 1, 3, 4, 2};
    frame += QByteArray("LAME3.100").left(encoderNameBytes);
    AppendBig(frame, constantRate);
    AppendBig(frame, static_cast<quint8>(std::clamp(facts.lowpassHz / 100, 0, largestByte)));
    // Peak, gains, flags: not measured.
    frame += QByteArray(4 + 2 + 2 + 1, '\0');
    AppendBig(frame, static_cast<quint8>(std::clamp(facts.kbps, 0, largestByte)));
    const int delay = std::clamp(facts.delay, 0, largestTwelveBits);
    const int padding = std::clamp(facts.padding, 0, largestTwelveBits);
    AppendBig(frame, static_cast<quint8>(delay >> 4));
    AppendBig(frame, static_cast<quint8>((delay & 15) << 4 | padding >> 8));
    AppendBig(frame, static_cast<quint8>(padding & 255));
    const FrameKind kind(facts.soundHeader);
    const quint8 stereo = kind.isMono ? 0 : stereoMarks[static_cast<size_t>(facts.channelMode)];
    AppendBig(frame, static_cast<quint8>(stereo << 2 | SourceMark(kind.rateHz) << 6));
    // Gain of the file and preset: none.
    frame += QByteArray(1 + 2, '\0');
    AppendBig(frame, fileBytes);
    AppendBig(frame, facts.soundSum);
}

// Bytes that are taken at once: the sum goes over all of a file while a window waits.
constexpr qsizetype sumStep = 8;
using SumTables = std::array<std::array<quint16, 256>, sumStep>;

// What a byte comes to with so many zeros behind it.
constexpr SumTables MakeSumTables() {
    constexpr unsigned polynomial = 0xA001; // 8005 with its lowest bit first
    SumTables tables = {};
    for (unsigned byte = 0; byte < 256; ++byte) {
        unsigned sum = byte;
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & 1) != 0 ? sum >> 1 ^ polynomial : sum >> 1;
        }
        tables[0][byte] = static_cast<quint16>(sum);
    }
    for (size_t zeros = 1; zeros < tables.size(); ++zeros) {
        for (size_t byte = 0; byte < 256; ++byte) {
            const unsigned before = tables[zeros - 1][byte];
            tables[zeros][byte] = static_cast<quint16>(before >> 8 ^ tables[0][before & 255]);
        }
    }
    return tables;
}

} // namespace

quint16 Mp3Sum(quint16 sum, const unsigned char* bytes, qsizetype count) {
    static constexpr SumTables tables = MakeSumTables();
    const auto after = [&](size_t zeros, unsigned byte) { return unsigned{tables[zeros][byte & 255]}; };
    unsigned running = sum;
    qsizetype at = 0;
    for (; at + sumStep <= count; at += sumStep) {
        running ^= bytes[at] | bytes[at + 1] << 8;
        running = after(7, running) ^ after(6, running >> 8) ^ after(5, bytes[at + 2]) ^
                  after(4, bytes[at + 3]) ^ after(3, bytes[at + 4]) ^ after(2, bytes[at + 5]) ^
                  after(1, bytes[at + 6]) ^ after(0, bytes[at + 7]);
    }
    for (; at < count; ++at) {
        running = running >> 8 ^ after(0, running ^ bytes[at]);
    }
    return static_cast<quint16>(running);
}

qsizetype Mp3HeaderBytes(const QByteArray& soundHeader) {
    return RateFor(FrameKind(soundHeader)).frameBytes;
}

QByteArray Mp3HeaderFrame(const Mp3HeaderFacts& facts) {
    const FrameKind kind(facts.soundHeader);
    const ChosenRate rate = RateFor(kind);
    const auto fileBytes = static_cast<quint32>(rate.frameBytes) + facts.soundBytes;
    QByteArray frame = HeaderWith(facts.soundHeader, rate.index);
    frame += QByteArray(kind.SideBytes(), '\0');
    AppendCounts(frame, facts, fileBytes);
    AppendEncoderBlock(frame, facts, fileBytes);
    AppendBig(frame, Mp3Sum(0, reinterpret_cast<const unsigned char*>(frame.constData()), frame.size()));
    return frame.leftJustified(rate.frameBytes, '\0');
}

} // namespace kestrune
