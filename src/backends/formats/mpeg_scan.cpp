#include "backends/formats/mpeg_scan.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

constexpr qint64 headerBytes = 4;
// Frames that must follow each other: where a stream should start, and behind bytes that are none of it.
// Tables of programs hold short chains of false frames.
constexpr int framesAtStart = 3;
constexpr int framesBehindOther = 12;

using BitrateRow = std::array<int, 15>;

// kbit/s by the header's index; rows: MPEG 1 layers 1, 2, 3, then MPEG 2 layer 1, layers 2 and 3.
constexpr std::array<BitrateRow, 5> bitratesKbps = {{
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
}};

constexpr std::array<int, 3> mpeg1RatesHz = {44100, 48000, 32000};

unsigned ByteAt(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes[at]);
}

int SamplesPerFrame(int layer, bool mpeg1) {
    if (layer == 1) {
        return 384;
    }
    return layer == 3 && !mpeg1 ? 576 : 1152;
}

bool SameStream(const MpegFrame& a, const MpegFrame& b) {
    return a.layer == b.layer && a.rateHz == b.rateHz && a.mpeg1 == b.mpeg1 && a.channels == b.channels;
}

bool IsClosingTag(const QByteArray& bytes) {
    return bytes.startsWith("TAG") || bytes.startsWith("APET") || bytes.startsWith("LYRI");
}

// Whether enough frames of the same stream follow each other from `first` on. At the start of a file the
// chain may be shorter if the file ends with it.
bool ChainHolds(ByteSource& source, const MpegFrame& first, bool atStart) {
    const int framesWanted = atStart ? framesAtStart : framesBehindOther;
    qint64 next = first.offset + first.frameBytes;
    for (int seen = 1; seen < framesWanted; ++seen) {
        if (next > source.SizeBytes()) {
            return atStart && seen > 1;
        }
        const QByteArray bytes = source.ReadAt(next, headerBytes);
        if (bytes.isEmpty() || IsClosingTag(bytes)) {
            return atStart;
        }
        if (bytes.size() < headerBytes) {
            return atStart && seen > 1;
        }
        const std::optional<MpegFrame> frame = ParseMpegHeader(bytes);
        if (!frame || !SameStream(first, *frame)) {
            return false;
        }
        next += frame->frameBytes;
    }
    return true;
}

} // namespace

std::optional<MpegFrame> ParseMpegHeader(const QByteArray& bytes) {
    if (bytes.size() < headerBytes || ByteAt(bytes, 0) != 0xFF || (ByteAt(bytes, 1) & 0xE0U) != 0xE0U) {
        return std::nullopt;
    }
    const unsigned version = ByteAt(bytes, 1) >> 3U & 3U; // 0: MPEG 2.5, 2: MPEG 2, 3: MPEG 1
    const unsigned layerCode = ByteAt(bytes, 1) >> 1U & 3U;
    const unsigned bitrateIndex = ByteAt(bytes, 2) >> 4U;
    const unsigned rateIndex = ByteAt(bytes, 2) >> 2U & 3U;
    if (version == 1 || layerCode == 0 || bitrateIndex == 0 || bitrateIndex == 15 || rateIndex == 3 ||
        (ByteAt(bytes, 3) & 3U) == 2) {
        return std::nullopt;
    }
    MpegFrame frame;
    frame.layer = 4 - static_cast<int>(layerCode);
    frame.mpeg1 = version == 3;
    frame.rateHz = mpeg1RatesHz[rateIndex] / (version == 3 ? 1 : version == 2 ? 2 : 4);
    frame.channels = (ByteAt(bytes, 3) >> 6U) == 3 ? 1 : 2;
    const int row = frame.mpeg1 ? frame.layer - 1 : frame.layer == 1 ? 3 : 4;
    frame.bitrateBps = bitratesKbps[row][bitrateIndex] * 1000;
    frame.samples = SamplesPerFrame(frame.layer, frame.mpeg1);
    const int padding = static_cast<int>(ByteAt(bytes, 2) >> 1U & 1U);
    frame.frameBytes = frame.layer == 1 ? (12 * frame.bitrateBps / frame.rateHz + padding) * 4
                                        : frame.samples / 8 * frame.bitrateBps / frame.rateHz + padding;
    return frame;
}

std::optional<MpegFrame> FindMpegFrame(ByteSource& source, qint64 start) {
    const QByteArray window = source.ReadAt(start, mpegSearchBytes);
    qsizetype paddingBytes = 0;
    while (paddingBytes < window.size() && window[paddingBytes] == '\0') {
        ++paddingBytes;
    }
    for (qsizetype at = window.indexOf('\xFF'); at >= 0; at = window.indexOf('\xFF', at + 1)) {
        std::optional<MpegFrame> frame = ParseMpegHeader(window.mid(at, headerBytes));
        if (frame) {
            frame->offset = start + at;
            if (ChainHolds(source, *frame, at == paddingBytes)) {
                return frame;
            }
        }
    }
    return std::nullopt;
}

std::optional<MpegFrame> FindMpegFrameAnywhere(ByteSource& source, qint64 mostBytes) {
    // A header may lie across two searches.
    constexpr qint64 step = mpegSearchBytes - headerBytes;
    const qint64 end = std::min(source.SizeBytes(), mostBytes);
    for (qint64 start = 0; start < end; start += step) {
        if (const std::optional<MpegFrame> frame = FindMpegFrame(source, start)) {
            return frame;
        }
    }
    return std::nullopt;
}

GaplessData ReadGaplessData(ByteSource& source, const MpegFrame& first) {
    constexpr qint64 otherMarkAt = 32; // of one that tells less
    const int sideBytes = first.mpeg1 ? (first.channels == 1 ? 17 : 32) : (first.channels == 1 ? 9 : 17);
    const QByteArray other = source.ReadAt(first.offset + headerBytes + otherMarkAt, 18);
    GaplessData data;
    if (first.layer != 3) {
        return data;
    }
    if (other.startsWith("VBRI") && other.size() == 18) {
        data.isThere = true;
        data.bytes = qFromBigEndian<quint32>(other.constData() + 10);
        data.codedFrames = qFromBigEndian<quint32>(other.constData() + 14);
        return data;
    }
    const QByteArray bytes = source.ReadAt(first.offset + headerBytes + sideBytes, 160);
    if (!(bytes.startsWith("Xing") || bytes.startsWith("Info")) || bytes.size() < 16) {
        return data;
    }
    data.isThere = true;
    data.constantBitrate = bytes.startsWith("Info");
    const unsigned flags = ByteAt(bytes, 7); // frame count, byte count, seek table, quality
    const int bytesAt = 8 + ((flags & 1U) != 0 ? 4 : 0);
    data.codedFrames = (flags & 1U) != 0 ? qFromBigEndian<quint32>(bytes.constData() + 8) : 0;
    data.bytes = (flags & 2U) != 0 ? qFromBigEndian<quint32>(bytes.constData() + bytesAt) : 0;
    const int encoderAt =
        bytesAt + ((flags & 2U) != 0 ? 4 : 0) + ((flags & 4U) != 0 ? 100 : 0) + ((flags & 8U) != 0 ? 4 : 0);
    const QByteArray encoder = bytes.mid(encoderAt, 4);
    const int delayAt = encoderAt + 21;
    if (!(encoder == "LAME" || encoder == "Lavf" || encoder == "Lavc") || bytes.size() < delayAt + 3) {
        return data;
    }
    const unsigned packed =
        ByteAt(bytes, delayAt) << 16U | ByteAt(bytes, delayAt + 1) << 8U | ByteAt(bytes, delayAt + 2);
    data.delayFrames = static_cast<int>(packed >> 12U);
    data.paddingFrames = static_cast<int>(packed & 0xFFFU);
    return data;
}

} // namespace kestrune
