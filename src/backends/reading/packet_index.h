// What a pass over a file's packets finds out without decoding them.
#pragma once

#include "backends/reading/lavf_input.h"

#include <QtGlobal>

#include <vector>

namespace kestrune {

class PacketIndex {
public:
    struct Entry {
        qint64 frame = 0;    // place of the packet's first frame in the file
        qint64 position = 0; // byte of the file that the packet begins at
    };

    // Reads all packets of a file whose codec PacketTimeline covers.
    static PacketIndex Of(LavfInput& input);

    qint64 Frames() const { return frames_; }
    // The entry that lies at least `packets` packets before the one that holds `frame`; null if that would be
    // the file's start, or if packets have no place of their own.
    const Entry* Before(qint64 frame, int packets) const;

private:
    std::vector<Entry> entries_; // one of every few packets
    qint64 frames_ = 0;
};

} // namespace kestrune
