// The 128 bytes at the end of an MPEG file.
#pragma once

#include "components/audio_information.h"

#include <QByteArray>

#include <optional>

namespace kestrune {

inline constexpr int id3v1Bytes = 128;

// Fields of an ID3v1 or ID3v1.1 block; empty if the bytes are none. Text ends at the first zero byte and
// loses its trailing blanks; bytes that are not UTF-8 are taken as Windows-1252.
std::optional<TagFields> ParseId3v1(const QByteArray& block);

// A block with the fields of `to` where they differ from those of the old block, which may be empty; all else
// stays as it was. A text is written in the coding that the old one was read in, else in that of the other
// texts of the block, else in Windows-1252, in which other characters become "?". What is too long is cut
// (30 bytes, a comment beside a track 28). Numbers that the block has no room for are left out. Empty when no
// field is left.
QByteArray RenderId3v1(const QByteArray& oldBlock, const TagFields& to);

} // namespace kestrune
