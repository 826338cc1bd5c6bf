#include "backends/reading/packet_index.h"

#include "backends/reading/packet_timeline.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr int packetsPerEntry = 8;

} // namespace

PacketIndex PacketIndex::Of(LavfInput& input) {
    PacketIndex index;
    PacketTimeline timeline(*input.Audio().codecpar);
    const PacketPtr packet(av_packet_alloc());
    qint64 count = 0;
    while (input.Read(*packet)) {
        const PacketSpan span = timeline.Place(*packet);
        if (count++ % packetsPerEntry == 0) {
            index.entries_.push_back({span.start, packet->pos});
        }
        av_packet_unref(packet.get());
    }
    index.frames_ = timeline.Position();
    return index;
}

const PacketIndex::Entry* PacketIndex::Before(qint64 frame, int packets) const {
    const auto behind =
        std::upper_bound(entries_.begin(), entries_.end(), frame,
                         [](qint64 value, const Entry& entry) { return value < entry.frame; });
    const qint64 at = behind - entries_.begin() - 1;
    const qint64 back = (packets + packetsPerEntry - 1) / packetsPerEntry;
    // The first entry is the start of the file, which has padding and is reached by opening it anew.
    if (at - back < 1) {
        return nullptr;
    }
    const Entry& entry = entries_[static_cast<size_t>(at - back)];
    return entry.position >= 0 && entry.frame > 0 ? &entry : nullptr;
}

} // namespace kestrune
