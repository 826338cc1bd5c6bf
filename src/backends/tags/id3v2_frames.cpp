#include "backends/tags/id3v2_frames.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr unsigned char unsynchronisedFlag = 0x80;
constexpr unsigned char extendedFlag = 0x40; // in version 2.2: compressed, by a way that was never told
constexpr unsigned char experimentalFlag = 0x20;
constexpr unsigned char footerFlag = 0x10;
constexpr qint64 spareBytes = 1024;
constexpr qint64 mostTagBytes = 1LL << 28;

unsigned ByteAt(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes[at]);
}

// Big-endian, of `count` bytes with `bits` used in each.
qint64 NumberAt(const QByteArray& bytes, qsizetype at, int count, int bits) {
    qint64 number = 0;
    for (qsizetype end = at + count; at < end; ++at) {
        number = number << bits | (ByteAt(bytes, at) & ((1U << bits) - 1));
    }
    return number;
}

QByteArray NumberBytes(qint64 number, int count, int bits) {
    QByteArray bytes;
    for (int left = count - 1; left >= 0; --left) {
        bytes.append(static_cast<char>(number >> (left * bits) & ((1 << bits) - 1)));
    }
    return bytes;
}

QByteArray WithoutUnsynchronisation(const QByteArray& bytes) {
    QByteArray plain;
    plain.reserve(bytes.size());
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        plain.append(bytes[at]);
        if (bytes[at] == '\xFF' && at + 1 < bytes.size() && bytes[at + 1] == '\0') {
            ++at;
        }
    }
    return plain;
}

// A zero goes behind each 0xFF that would look like the start of a frame of sound, or like such a pair.
QByteArray WithUnsynchronisation(const QByteArray& bytes) {
    QByteArray safe;
    safe.reserve(bytes.size() + 64);
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        safe.append(bytes[at]);
        const bool last = at + 1 == bytes.size();
        if (bytes[at] == '\xFF' && (last || bytes[at + 1] == '\0' || ByteAt(bytes, at + 1) >= 0xE0)) {
            safe.append('\0');
        }
    }
    return safe;
}

int IdBytes(int version) {
    return version == 2 ? 3 : 4;
}

qsizetype FrameHeadBytes(int version) {
    return version == 2 ? 6 : 10;
}

bool IsFrameId(const QByteArray& bytes, qsizetype at, int version) {
    if (at + FrameHeadBytes(version) > bytes.size()) {
        return false;
    }
    return std::all_of(bytes.begin() + at, bytes.begin() + at + IdBytes(version), [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
    });
}

bool MayFollow(const QByteArray& body, qint64 at, int version) {
    return at == body.size() || (at < body.size() && (body[at] == '\0' || IsFrameId(body, at, version)));
}

// Some writers of version 2.4 store plain sizes. The one behind which a frame, padding or the end stands is
// right.
qint64 FrameContentBytes(const QByteArray& body, qsizetype at, int version) {
    if (version == 2) {
        return NumberAt(body, at + 3, 3, 8);
    }
    const qint64 plain = NumberAt(body, at + 4, 4, 8);
    if (version == 3) {
        return plain;
    }
    const qint64 proper = NumberAt(body, at + 4, 4, 7);
    const qint64 content = at + FrameHeadBytes(version);
    const bool isPlain = plain != proper && !MayFollow(body, content + proper, version) &&
                         MayFollow(body, content + plain, version);
    return isPlain ? plain : proper;
}

void TakeFrames(Id3v2Block& block, const QByteArray& body) {
    qsizetype at = 0;
    while (IsFrameId(body, at, block.version)) {
        const qint64 contentBytes = FrameContentBytes(body, at, block.version);
        const qsizetype content = at + FrameHeadBytes(block.version);
        if (contentBytes > body.size() - content) {
            break;
        }
        Id3v2Frame frame;
        frame.id = body.mid(at, IdBytes(block.version));
        frame.flags = block.version == 2 ? QByteArray() : body.mid(at + 8, 2);
        frame.content = body.mid(content, contentBytes);
        block.frames.append(frame);
        at = content + contentBytes;
    }
    while (at < body.size() && body[at] == '\0') {
        ++at;
    }
    block.rest = body.mid(at);
}

// Its check sum and restrictions end with a change of the frames.
QByteArray WithoutExtendedHeader(const QByteArray& body, int version) {
    if (body.size() < 6) {
        return body;
    }
    const qint64 bytes = version == 3 ? NumberAt(body, 0, 4, 8) + 4 : NumberAt(body, 0, 4, 7);
    return bytes < 6 || bytes > body.size() ? body : body.mid(bytes);
}

QByteArray RenderFrames(const Id3v2Block& block) {
    QByteArray body;
    for (const Id3v2Frame& frame : block.frames) {
        body += frame.id;
        body += block.version == 2   ? NumberBytes(frame.content.size(), 3, 8)
                : block.version == 3 ? NumberBytes(frame.content.size(), 4, 8)
                                     : NumberBytes(frame.content.size(), 4, 7);
        body += frame.flags;
        body += frame.content;
    }
    return body;
}

} // namespace

qint64 Id3v2SizeOf(const QByteArray& head) {
    if (head.size() < id3v2HeadBytes || !head.startsWith("ID3")) {
        return 0;
    }
    return id3v2HeadBytes + NumberAt(head, 6, 4, 7) + (Id3v2HasFooter(head) ? id3v2HeadBytes : 0);
}

std::optional<QByteArray> ReadableContent(const Id3v2Frame& frame, int version) {
    const unsigned flags = version == 2 ? 0 : ByteAt(frame.flags, 1);
    if (version < 4) {
        return (flags & 0xE0U) != 0 ? std::nullopt : std::make_optional(frame.content);
    }
    if ((flags & 0x4CU) != 0) {
        return std::nullopt;
    }
    const QByteArray content = (flags & 1U) != 0 ? frame.content.mid(4) : frame.content; // behind a length
    return (flags & 2U) != 0 ? WithoutUnsynchronisation(content) : content;
}

bool Id3v2HasFooter(const QByteArray& head) {
    return head.size() >= id3v2HeadBytes && ByteAt(head, 3) == 4 && (ByteAt(head, 5) & footerFlag) != 0;
}

std::optional<Id3v2Block> ParseId3v2(const QByteArray& tag) {
    const qint64 sizeBytes = Id3v2SizeOf(tag) - (Id3v2HasFooter(tag) ? id3v2HeadBytes : 0);
    if (sizeBytes <= 0 || sizeBytes > tag.size()) {
        return std::nullopt;
    }
    Id3v2Block block;
    block.version = static_cast<int>(ByteAt(tag, 3));
    const unsigned flags = ByteAt(tag, 5);
    if (block.version < 2 || block.version > 4 || (block.version == 2 && (flags & extendedFlag) != 0)) {
        return std::nullopt;
    }
    block.unsynchronised = (flags & unsynchronisedFlag) != 0;
    block.otherFlags = block.version == 2 ? 0 : flags & experimentalFlag;
    QByteArray body = tag.mid(id3v2HeadBytes, NumberAt(tag, 6, 4, 7));
    if (block.unsynchronised && block.version < 4) {
        body = WithoutUnsynchronisation(body);
    }
    if (block.version > 2 && (flags & extendedFlag) != 0) {
        body = WithoutExtendedHeader(body, block.version);
    }
    TakeFrames(block, body);
    return block;
}

std::optional<QByteArray> RenderId3v2(const Id3v2Block& block, qint64 wantedBytes) {
    if (block.frames.isEmpty() && block.rest.isEmpty()) {
        return QByteArray();
    }
    const qint64 mostFrameBytes = block.version == 2 ? 1LL << 24 : mostTagBytes;
    for (const Id3v2Frame& frame : block.frames) {
        if (frame.content.size() >= mostFrameBytes) {
            return std::nullopt;
        }
    }
    const bool coded = block.unsynchronised && block.version < 4;
    const QByteArray frames = RenderFrames(block);
    QByteArray body = coded ? WithUnsynchronisation(frames) : frames;
    const QByteArray rest = coded ? WithUnsynchronisation(block.rest) : block.rest;
    // In front of the rest, which may go on behind the tag.
    const qint64 room = wantedBytes - id3v2HeadBytes - body.size() - rest.size();
    const qint64 growthBytes = rest.isEmpty() ? spareBytes : 0;
    body.append(room >= 0 ? room : growthBytes, '\0');
    body += rest;
    if (body.size() >= mostTagBytes) {
        return std::nullopt;
    }
    const unsigned flags = (block.unsynchronised ? unsynchronisedFlag : 0U) | block.otherFlags;
    QByteArray tag = "ID3";
    tag.append(static_cast<char>(block.version)).append('\0').append(static_cast<char>(flags));
    return tag + NumberBytes(body.size(), 4, 7) + body;
}

} // namespace kestrune
