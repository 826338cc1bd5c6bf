#include "backends/formats/wave_header.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

// A file of zeros would be read as chunks without an end.
constexpr int mostChunks = 4096;
constexpr int mostChannels = 64;
constexpr int highestRateHz = 1000000;
constexpr qint64 wrapBytes = Q_INT64_C(1) << 32;
constexpr quint32 openSize = 0xFFFFFFFF;

template <typename Number>
Number Little(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

bool ParseFormat(const QByteArray& chunk, WaveHeader& header) {
    constexpr qsizetype plainBytes = 16;
    constexpr qsizetype extensibleBytes = 40;
    if (chunk.size() < plainBytes) {
        return false;
    }
    header.tag = Little<quint16>(chunk, 0);
    header.channels = Little<quint16>(chunk, 2);
    header.rateHz = Little<qint32>(chunk, 4);
    header.bytesPerSecond = std::max(Little<qint32>(chunk, 8), 0);
    header.blockBytes = Little<quint16>(chunk, 12);
    header.bits = Little<quint16>(chunk, 14);
    if (header.tag == WaveTagExtensible && chunk.size() >= extensibleBytes) {
        header.speakerMask = Little<quint32>(chunk, 20);
        header.tag = Little<quint16>(chunk, 24);
    }
    return header.channels >= 1 && header.channels <= mostChannels && header.rateHz >= 1 &&
           header.rateHz <= highestRateHz;
}

// What the data chunk really holds, of the size that its header claims. Writers put that in last, so one that
// was interrupted leaves 0.
qint64 TrueDataBytes(quint32 claimed, qint64 claimed64, bool wide, qint64 remaining) {
    if (wide && claimed == openSize) {
        return claimed64 > 0 ? std::min(claimed64, remaining) : remaining;
    }
    if (claimed == openSize || claimed == 0) {
        return remaining;
    }
    qint64 bytes = claimed;
    if (!wide && remaining - bytes >= wrapBytes) {
        bytes += (remaining - bytes) / wrapBytes * wrapBytes;
    }
    return std::min(bytes, remaining);
}

} // namespace

std::optional<WaveHeader> ReadWaveHeader(QIODevice& device) {
    constexpr qint64 riffBytes = 12;
    constexpr qint64 chunkHeadBytes = 8;
    constexpr qint64 longestFormatBytes = 4096;
    if (!device.seek(0)) {
        return {};
    }
    const QByteArray riff = device.read(riffBytes);
    const bool wide = riff.startsWith("RF64") || riff.startsWith("BW64");
    if (riff.size() < riffBytes || !(wide || riff.startsWith("RIFF")) || riff.mid(8, 4) != "WAVE") {
        return {};
    }
    WaveHeader header;
    bool formatSeen = false;
    qint64 claimed64 = 0;
    qint64 at = riffBytes;
    for (int chunk = 0; chunk < mostChunks; ++chunk) {
        if (!device.seek(at)) {
            return {};
        }
        const QByteArray head = device.read(chunkHeadBytes);
        if (head.size() < chunkHeadBytes) {
            return {};
        }
        at += chunkHeadBytes;
        const auto bytes = Little<quint32>(head, 4);
        if (head.startsWith("ds64")) {
            const QByteArray sizes = device.read(16);
            claimed64 = sizes.size() == 16 ? Little<qint64>(sizes, 8) : 0;
        } else if (head.startsWith("fmt ")) {
            header.format = device.read(std::min<qint64>(bytes, longestFormatBytes));
            formatSeen = ParseFormat(header.format, header);
        } else if (head.startsWith("data")) {
            if (!formatSeen) {
                return {};
            }
            header.dataOffset = at;
            header.dataBytes = TrueDataBytes(bytes, claimed64, wide, std::max<qint64>(device.size() - at, 0));
            return header;
        }
        at += bytes + (bytes & 1U);
    }
    return {};
}

} // namespace kestrune
