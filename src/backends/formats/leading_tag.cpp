#include "backends/formats/leading_tag.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr qsizetype headBytes = 10;
constexpr int mostTags = 16;

// The size of a tag is four bytes of seven bits each, without its head and without the foot that a flag
// tells.
qint64 TagBytes(const QByteArray& head) {
    constexpr qsizetype flagsAt = 5;
    constexpr qsizetype sizeAt = 6;
    constexpr int footFlag = 0x10;
    if (head.size() < headBytes || !head.startsWith("ID3")) {
        return 0;
    }
    qint64 bytes = 0;
    for (qsizetype at = sizeAt; at < headBytes; ++at) {
        bytes = bytes << 7 | (static_cast<uchar>(head[at]) & 0x7F);
    }
    const bool hasFoot = (head[flagsAt] & footFlag) != 0;
    return bytes + headBytes + (hasFoot ? headBytes : 0);
}

} // namespace

qint64 LeadingTagBytes(ByteSource& bytes) {
    qint64 at = 0;
    for (int tag = 0; tag < mostTags; ++tag) {
        const qint64 tagBytes = TagBytes(bytes.ReadAt(at, headBytes));
        if (tagBytes == 0) {
            break;
        }
        at += tagBytes;
    }
    return std::min(at, bytes.SizeBytes());
}

} // namespace kestrune
