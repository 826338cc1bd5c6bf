#include "backends/reading/ogg_chain.h"

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

namespace kestrune {

namespace {

// A page is never longer than this (RFC 3533: 27 + 255 bytes of header, 255 * 255 of body).
constexpr qint64 longestPageBytes = 65307;
constexpr qsizetype serialAt = 14;
constexpr qsizetype serialBytes = 4;

} // namespace

bool IsChainedOgg(QIODevice& device) {
    if (!device.seek(0)) {
        return false;
    }
    const QByteArray head = device.read(serialAt + serialBytes);
    if (!head.startsWith("OggS")) {
        return false;
    }
    if (!device.seek(std::max<qint64>(device.size() - longestPageBytes, 0))) {
        return false;
    }
    const QByteArray tail = device.read(longestPageBytes);
    const qsizetype last = tail.lastIndexOf("OggS");
    if (last < 0 || last + serialAt + serialBytes > tail.size()) {
        return false;
    }
    return tail.mid(last + serialAt, serialBytes) != head.mid(serialAt, serialBytes);
}

} // namespace kestrune
