#include "backends/tags/sound_check.h"

#include "backends/formats/leading_tag.h"
#include "backends/tags/id3v1_block.h"
#include "backends/tags/lavf_reader.h"

#include <QtEndian>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace kestrune {

namespace {

// A reader that goes back and forth in a broken file comes to an end by this.
constexpr qint64 mostTimesRead = 4;
constexpr qint64 spareBytes = 64 * 1024 * 1024;

struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using PacketPtr = std::unique_ptr<AVPacket, FreePacket>;

// The packets of a file's sound.
class SoundPackets {
public:
    explicit SoundPackets(const QString& path) : file_(path), input_(file_), packet_(av_packet_alloc()) {}

    bool Open() {
        if (!packet_ || file_.Open() != Outcome::Ok) {
            return false;
        }
        file_.SetBudget(file_.SizeBytes() * mostTimesRead + spareBytes);
        return input_.Open();
    }
    const AVCodecParameters& Coding() const { return *input_.Sound()->codecpar; }
    // The next one, this object's until the next call; null at the end.
    const AVPacket* Next() {
        do {
            av_packet_unref(packet_.get());
            if (av_read_frame(&input_.Context(), packet_.get()) < 0) {
                return nullptr;
            }
        } while (packet_->stream_index != input_.Sound()->index);
        return packet_.get();
    }

private:
    BoundedFile file_;
    LavfReader input_;
    PacketPtr packet_;
};

bool IsSameCoding(const AVCodecParameters& a, const AVCodecParameters& b) {
    if (a.codec_id != b.codec_id || a.sample_rate != b.sample_rate ||
        a.ch_layout.nb_channels != b.ch_layout.nb_channels || a.block_align != b.block_align) {
        return false;
    }
    // With Vorbis the comments are among it.
    return a.codec_id == AV_CODEC_ID_VORBIS ||
           (a.extradata_size == b.extradata_size &&
            (a.extradata_size == 0 ||
             std::memcmp(a.extradata, b.extradata, static_cast<size_t>(a.extradata_size)) == 0));
}

// How many samples at the start and the end of it are not heard.
QByteArrayView Trim(const AVPacket& packet) {
    size_t bytes = 0;
    const uint8_t* told = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &bytes);
    return {reinterpret_cast<const char*>(told), static_cast<qsizetype>(told != nullptr ? bytes : 0)};
}

bool IsSamePacket(const AVPacket& a, const AVPacket& b) {
    return Trim(a) == Trim(b) && a.size == b.size && a.pts == b.pts &&
           (a.size == 0 || std::memcmp(a.data, b.data, static_cast<size_t>(a.size)) == 0);
}

// Where the tags at the end begin (Musepack developers: APE tags, version 2).
qint64 SoundEnd(BoundedFile& file) {
    constexpr qint64 footerBytes = 32;
    constexpr qsizetype sizeAt = 12;
    constexpr qsizetype flagsAt = 20;
    constexpr quint32 hasHead = 1U << 31U;
    qint64 end = file.SizeBytes();
    if (file.ReadAt(end - id3v1Bytes, 3) == "TAG") {
        end -= id3v1Bytes;
    }
    const QByteArray footer = end >= footerBytes ? file.ReadAt(end - footerBytes, footerBytes) : QByteArray();
    if (footer.startsWith("APETAGEX")) {
        end -= qFromLittleEndian<quint32>(footer.constData() + sizeAt);
        end -= (qFromLittleEndian<quint32>(footer.constData() + flagsAt) & hasHead) != 0 ? footerBytes : 0;
    }
    return end;
}

} // namespace

bool DiffersOnlyInTagsBehind(const QString& oldPath, const QString& newPath) {
    BoundedFile before(oldPath);
    BoundedFile after(newPath);
    if (before.Open() != Outcome::Ok || after.Open() != Outcome::Ok) {
        return false;
    }
    const qint64 end = SoundEnd(before);
    if (end < 0 || end != SoundEnd(after)) {
        return false;
    }
    before.SetBudget(std::numeric_limits<qint64>::max());
    after.SetBudget(std::numeric_limits<qint64>::max());
    constexpr qint64 blockBytes = 1024 * 1024;
    for (qint64 at = 0; at < end; at += blockBytes) {
        const qint64 count = std::min(end - at, blockBytes);
        if (before.ReadAt(at, count) != after.ReadAt(at, count)) {
            return false;
        }
    }
    return true;
}

bool HoldsWholeMonkeysSound(const QString& path) {
    BoundedFile file(path);
    if (file.Open() != Outcome::Ok) {
        return false;
    }
    // Since version 3.98 the head tells the sizes of all parts; older ones do not.
    constexpr quint16 firstWithSizes = 3980;
    constexpr qsizetype versionAt = 4;
    constexpr qsizetype sizesAt = 8;
    constexpr qsizetype sizes = 5; // of descriptor, head, table, copied head, sound
    constexpr qsizetype headBytes = sizesAt + 4 * sizes;
    const qint64 start = LeadingTagBytes(file);
    const QByteArray head = file.ReadAt(start, headBytes);
    if (head.size() < headBytes) {
        return false;
    }
    if (qFromLittleEndian<quint16>(head.constData() + versionAt) < firstWithSizes) {
        return true;
    }
    qint64 end = start;
    for (qsizetype size = 0; size < sizes; ++size) {
        end += qFromLittleEndian<quint32>(head.constData() + sizesAt + 4 * size);
    }
    return end <= SoundEnd(file);
}

bool HoldsSameSound(const QString& oldPath, const QString& newPath, qint64 mostBytes) {
    SoundPackets before(oldPath);
    if (!before.Open()) {
        return true;
    }
    SoundPackets after(newPath);
    if (!after.Open() || !IsSameCoding(before.Coding(), after.Coding())) {
        return false;
    }
    for (qint64 bytes = 0; bytes < mostBytes;) {
        const AVPacket* old = before.Next();
        const AVPacket* now = after.Next();
        if (old == nullptr || now == nullptr) {
            return old == now;
        }
        if (!IsSamePacket(*old, *now)) {
            return false;
        }
        bytes += old->size;
    }
    return true;
}

} // namespace kestrune
