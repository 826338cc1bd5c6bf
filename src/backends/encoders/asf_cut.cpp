#include "backends/encoders/asf_cut.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

// Of the objects of the Advanced Systems Format: an identifier of 16 bytes, then the size of the whole.
constexpr qint64 objectHeadBytes = 24;
constexpr qint64 headerHeadBytes = objectHeadBytes + 6;
constexpr qint64 dataHeadBytes = objectHeadBytes + 26;
constexpr qsizetype sizeAt = 16;
// "File properties", and where its fields begin.
constexpr char fileProperties[] = "\xA1\xDC\xAB\x8C\x47\xA9\xCF\x11\x8E\xE4\x00\xC0\x0C\x20\x53\x65";
constexpr qsizetype identifierBytes = 16;
constexpr qsizetype fileSizeAt = 40;
constexpr qsizetype packetsAt = 56;
constexpr qsizetype playTimeAt = 64;
constexpr qsizetype sendTimeAt = 72;
constexpr qsizetype prerollAt = 80;
constexpr qsizetype packetBytesAt = 92;
constexpr qsizetype propertiesBytes = 104;
// Of the data object.
constexpr qsizetype dataPacketsAt = 40;
// Of a full packet: error correction, flags, times, then how many payloads there are.
constexpr qsizetype payloadsAt = 11;
constexpr uchar payloadsMask = 63;

constexpr qint64 timeUnitsPerSecond = 10000000;
constexpr qint64 timeUnitsPerMs = 10000;
// At the start, which a decoder throws away.
constexpr int lostFrames = 2;
constexpr qint64 largestHeaderBytes = Q_INT64_C(1) << 20;

int FrameLength(int rateHz) {
    constexpr int lowHz = 16000;
    constexpr int middleHz = 22050;
    return rateHz <= lowHz ? 512 : rateHz <= middleHz ? 1024 : 2048;
}

qint64 Little64(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<qint64>(bytes.constData() + at);
}

void Put(QByteArray& bytes, qsizetype at, qint64 value) {
    qToLittleEndian(value, bytes.data() + at);
}

QByteArray ReadAt(QIODevice& file, qint64 position, qint64 bytes) {
    return file.seek(position) ? file.read(bytes) : QByteArray();
}

bool WriteAt(QIODevice& file, qint64 position, const QByteArray& bytes) {
    return file.seek(position) && file.write(bytes) == bytes.size();
}

qint64 RoundedUp(qint64 value, qint64 by) {
    return (value + by - 1) / by;
}

} // namespace

std::optional<qint64> AsfCut(QIODevice& file, qint64 frames, int rateHz) {
    const QByteArray top = ReadAt(file, 0, headerHeadBytes);
    const qint64 headerBytes = top.size() == headerHeadBytes ? Little64(top, sizeAt) : 0;
    if (headerBytes <= 0 || headerBytes > largestHeaderBytes || rateHz <= 0) {
        return {};
    }
    QByteArray header = ReadAt(file, 0, headerBytes + dataHeadBytes);
    const qsizetype properties = header.indexOf(QByteArray(fileProperties, identifierBytes));
    if (header.size() < headerBytes + dataHeadBytes || properties < 0 ||
        properties + propertiesBytes > headerBytes) {
        return {};
    }
    const qint64 packetBytes = qFromLittleEndian<qint32>(header.constData() + properties + packetBytesAt);
    const qint64 packetsThere =
        packetBytes > 0 ? (file.size() - headerBytes - dataHeadBytes) / packetBytes : 0;
    const QByteArray first = ReadAt(file, headerBytes + dataHeadBytes, payloadsAt + 1);
    const int payloads = first.size() > payloadsAt ? static_cast<uchar>(first[payloadsAt]) & payloadsMask : 0;
    if (packetsThere < 1 || payloads < 1) {
        return {};
    }
    const qint64 wanted = RoundedUp(RoundedUp(frames, FrameLength(rateHz)) + lostFrames, payloads);
    // Of a single packet it is not known whether it is full.
    const qint64 packets = packetsThere == 1 ? 1 : std::min(wanted, packetsThere);
    const qint64 bytes = headerBytes + dataHeadBytes + packets * packetBytes;
    const qint64 time = frames * timeUnitsPerSecond / rateHz;
    Put(header, properties + fileSizeAt, bytes);
    Put(header, properties + packetsAt, packets);
    Put(header, properties + playTimeAt, time + Little64(header, properties + prerollAt) * timeUnitsPerMs);
    Put(header, properties + sendTimeAt, time);
    Put(header, headerBytes + sizeAt, dataHeadBytes + packets * packetBytes);
    Put(header, headerBytes + dataPacketsAt, packets);
    return WriteAt(file, 0, header) ? std::optional(bytes) : std::nullopt;
}

} // namespace kestrune
