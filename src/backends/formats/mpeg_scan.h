// Finds the first true frame of an MPEG audio stream.
#pragma once

#include "backends/formats/byte_source.h"

#include <optional>

namespace kestrune {

struct MpegFrame {
    qint64 offset = 0; // bytes from the start of the file
    int layer = 0;     // 1 to 3
    bool mpeg1 = true; // false for the half (MPEG 2) and quarter (MPEG 2.5) sample rates
    int rateHz = 0;
    int channels = 0;
    int bitrateBps = 0;
    int frameBytes = 0;
    int samples = 0; // sample frames in a frame
};

// Decodes the four bytes of a frame header (ISO 11172-3, 2.4.2.3); empty if they are none. Streams of free
// bit rate are not recognised. `offset` of the result is 0.
std::optional<MpegFrame> ParseMpegHeader(const QByteArray& bytes);

inline constexpr qint64 mpegSearchBytes = 128 * 1024;

// Looks from `start` on, in so many bytes, for a frame that begins a chain of its kind: behind nothing but
// zero bytes a chain of three, or what fits before the end or closing tag of a short file; behind other bytes
// one of twelve. Such a chain hardly comes about by chance in data of another kind.
std::optional<MpegFrame> FindMpegFrame(ByteSource& source, qint64 start);
// The same, search after search, to the end of what can be read or of `mostBytes` from the start.
std::optional<MpegFrame> FindMpegFrameAnywhere(ByteSource& source, qint64 mostBytes);

// What the encoder left in a first frame that carries no sound.
struct GaplessData {
    bool isThere = false;
    bool constantBitrate = false; // the frame says that all others have one bit rate
    qint64 codedFrames = 0;       // that follow; 0 if not told
    qint64 bytes = 0;             // of all, with this one; 0 if not told
    // Sample frames that the encoder adds at both ends.
    int delayFrames = 0;
    int paddingFrames = 0;
};

GaplessData ReadGaplessData(ByteSource& source, const MpegFrame& first);

} // namespace kestrune
