#include "backends/encoders/ogg_cut.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <vorbis/codec.h>

#include <algorithm>
#include <vector>

namespace kestrune {

namespace {

constexpr qsizetype headBytes = 27;
constexpr qsizetype flagsAt = 5;
constexpr qsizetype granuleAt = 6;
constexpr qsizetype sumAt = 22;
constexpr qsizetype segmentsAt = 26;
constexpr unsigned char continuedFlag = 1;
constexpr char endFlag = 4;
constexpr unsigned char fullSegment = 255;
constexpr int headerPackets = 3;

struct Page {
    qint64 start = 0;
    QByteArray head; // with the table of segments
    QByteArray body;

    bool IsThere() const { return !head.isEmpty(); }
    qint64 Granule() const { return qFromLittleEndian<qint64>(head.constData() + granuleAt); }
    qint64 End() const { return start + head.size() + body.size(); }
    bool IsContinued() const { return (static_cast<uchar>(head[flagsAt]) & continuedFlag) != 0; }
    // Of each packet that ends here; the bytes of one that goes on are left out.
    std::vector<qsizetype> PacketBytes() const {
        std::vector<qsizetype> packets;
        qsizetype bytes = 0;
        for (qsizetype at = headBytes; at < head.size(); ++at) {
            const auto segment = static_cast<uchar>(head[at]);
            bytes += segment;
            if (segment != fullSegment) {
                packets.push_back(bytes);
                bytes = 0;
            }
        }
        return packets;
    }
};

Page PageAt(QIODevice& file, qint64 position) {
    Page page;
    page.start = position;
    QByteArray head = file.seek(position) ? file.read(headBytes) : QByteArray();
    if (head.size() < headBytes || !head.startsWith("OggS")) {
        return {};
    }
    head += file.read(static_cast<uchar>(head[segmentsAt]));
    qint64 bodyBytes = 0;
    for (qsizetype at = headBytes; at < head.size(); ++at) {
        bodyBytes += static_cast<uchar>(head[at]);
    }
    page.body = file.read(bodyBytes);
    page.head = page.body.size() == bodyBytes ? head : QByteArray();
    return page;
}

ogg_packet PacketOf(QByteArray& bytes, qint64 number) {
    ogg_packet packet = {};
    packet.packet = reinterpret_cast<unsigned char*>(bytes.data());
    packet.bytes = static_cast<long>(bytes.size());
    packet.b_o_s = number == 0 ? 1 : 0;
    packet.packetno = number;
    return packet;
}

// What the headers tell: how many samples a packet stands for.
class Headers {
public:
    Headers() {
        vorbis_info_init(&info_);
        vorbis_comment_init(&comment_);
    }
    ~Headers() {
        vorbis_comment_clear(&comment_);
        vorbis_info_clear(&info_);
    }
    Headers(const Headers&) = delete;
    Headers& operator=(const Headers&) = delete;

    // Gives the place behind them, or nothing.
    std::optional<qint64> Read(QIODevice& file) {
        qint64 at = 0;
        QByteArray open; // the beginning of a packet that goes on
        for (int packets = 0; packets < headerPackets;) {
            const Page page = PageAt(file, at);
            if (!page.IsThere()) {
                return {};
            }
            at = page.End();
            qsizetype from = 0;
            for (const qsizetype bytes : page.PacketBytes()) {
                QByteArray whole = open + page.body.mid(from, bytes);
                open.clear();
                from += bytes;
                ogg_packet packet = PacketOf(whole, packets++);
                if (vorbis_synthesis_headerin(&info_, &comment_, &packet) != 0) {
                    return {};
                }
            }
            open += page.body.mid(from);
        }
        return at;
    }

    long BlockFrames(QByteArray packetBytes) {
        ogg_packet packet = PacketOf(packetBytes, headerPackets);
        return std::max<long>(vorbis_packet_blocksize(&info_, &packet), 0);
    }

private:
    vorbis_info info_ = {};
    vorbis_comment comment_ = {};
};

// Leaves the packets out that are not needed for so many frames.
void DropPackets(Page& page, qint64 frames, Headers& headers) {
    std::vector<qsizetype> packets = page.PacketBytes();
    std::vector<long> blocks;
    qsizetype from = 0;
    for (const qsizetype bytes : packets) {
        blocks.push_back(headers.BlockFrames(page.body.mid(from, bytes)));
        from += bytes;
    }
    // Two neighbours overlap by half: a packet brings a quarter of both.
    qint64 behind = page.Granule();
    while (packets.size() > 1) {
        const size_t last = packets.size() - 1;
        const qint64 before = behind - (blocks[last - 1] + blocks[last]) / 4;
        if (before < frames) {
            break;
        }
        behind = before;
        packets.pop_back();
    }
    qsizetype segments = 0;
    qsizetype bytes = 0;
    for (const qsizetype packet : packets) {
        segments += packet / fullSegment + 1;
        bytes += packet;
    }
    page.head.resize(headBytes + segments);
    page.head[segmentsAt] = static_cast<char>(segments);
    page.body.resize(bytes);
}

void End(Page& page, qint64 granule) {
    page.head[flagsAt] = static_cast<char>(page.head[flagsAt] | endFlag);
    qToLittleEndian(granule, page.head.data() + granuleAt);
    ogg_page raw;
    raw.header = reinterpret_cast<unsigned char*>(page.head.data());
    raw.header_len = static_cast<long>(page.head.size());
    raw.body = reinterpret_cast<unsigned char*>(page.body.data());
    raw.body_len = static_cast<long>(page.body.size());
    static_assert(sumAt == 22, "the sum is stored by the library");
    ogg_page_checksum_set(&raw);
}

} // namespace

std::optional<qint64> OggCut(QIODevice& file, qint64 frames) {
    Headers headers;
    const std::optional<qint64> sound = headers.Read(file);
    Page page;
    // Pages on which no packet ends tell no place.
    for (qint64 at = sound.value_or(-1); at >= 0 && (!page.IsThere() || page.Granule() < frames);) {
        Page next = PageAt(file, at);
        if (!next.IsThere()) {
            break;
        }
        at = next.End();
        page = std::move(next);
    }
    if (!page.IsThere()) {
        return {};
    }
    if (page.Granule() > frames && !page.IsContinued()) {
        DropPackets(page, frames, headers);
    }
    End(page, std::min(page.Granule(), frames));
    const QByteArray bytes = page.head + page.body;
    const bool written = file.seek(page.start) && file.write(bytes) == bytes.size();
    return written ? std::optional(page.End()) : std::nullopt;
}

} // namespace kestrune
