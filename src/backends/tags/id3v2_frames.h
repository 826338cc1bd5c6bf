// An ID3v2 tag taken apart into frames, and put together again.
#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace kestrune {

// A frame as it stands in the tag. What nobody changes is written as it was read, whatever it holds.
struct Id3v2Frame {
    QByteArray id;      // three letters in version 2.2, four later
    QByteArray flags;   // two bytes; none in version 2.2
    QByteArray content; // without the frame's head
};

// Versions 2.2 to 2.4 (id3.org: id3v2-00, id3v2.3.0, id3v2.4.0-structure).
struct Id3v2Block {
    int version = 3;              // 2, 3 or 4
    bool unsynchronised = false;  // as a whole (2.2, 2.3), or all frames of it (2.4)
    unsigned char otherFlags = 0; // experimental
    QList<Id3v2Frame> frames;
    QByteArray rest; // what follows the frames and is neither a frame nor padding
};

inline constexpr qint64 id3v2HeadBytes = 10;

// Size of the tag that `head` begins, in bytes with its head and footer; 0 if it begins none.
qint64 Id3v2SizeOf(const QByteArray& head);
// Whether `head` tells that the tag has a footer.
bool Id3v2HasFooter(const QByteArray& head);

// The content as the frame's kind defines it; empty for one that is compressed, encrypted or of a group.
std::optional<QByteArray> ReadableContent(const Id3v2Frame& frame, int version);

// A whole tag, from its head on. Empty for another version, or if it is cut.
std::optional<Id3v2Block> ParseId3v2(const QByteArray& tag);

// The tag in exactly `wantedBytes` if it fits into them, else in what it takes and some room for later.
// Empty bytes for a tag without frames; nothing for what is too large for a tag (256 MiB) or a frame of it.
std::optional<QByteArray> RenderId3v2(const Id3v2Block& block, qint64 wantedBytes);

} // namespace kestrune
