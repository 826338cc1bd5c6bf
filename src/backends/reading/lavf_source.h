// Any file that libavformat can take apart and libavcodec can decode.
#pragma once

#include "backends/reading/lavc_decoder.h"
#include "backends/reading/lavf_input.h"
#include "backends/reading/packet_index.h"
#include "backends/reading/packet_timeline.h"
#include "backends/reading/sample_source.h"

#include <deque>
#include <memory>
#include <optional>

namespace kestrune {

// Codecs that PacketTimeline covers are placed by their packets: a seek decodes a few packets before its
// target, and a packet that fails to decode leaves silence of its own length, so that all that follows keeps
// its place. All others carry state from the first packet on, and a seek backward decodes from the start.
class LavfSource : public DecodingSource {
public:
    // Null if the file holds no audio that can be decoded.
    static std::unique_ptr<LavfSource> Open(const QString& path);

protected:
    bool DecodeNext(std::vector<qint16>& piece) override;
    bool Rewind() override;
    qint64 JumpBefore(qint64 frame) override;
    qint64 CountFrames() override;

private:
    struct PlacedPacket {
        PacketPtr packet;
        PacketSpan span;
    };

    explicit LavfSource(QString path);
    bool OpenDecoder();
    bool DecodeFirst();
    void Describe(const AVFrame& first);
    bool NextPlaced(PlacedPacket& next);
    bool DecodePlaced(std::vector<qint16>& piece);
    bool DecodeRunning(std::vector<qint16>& piece);
    void AppendPlaced(const AVFrame& frame, const PacketSpan& span, qint64& decoded,
                      std::vector<qint16>& piece);
    void AppendFrame(const AVFrame& frame, std::vector<qint16>& piece);
    qint64 JumpByIndex(qint64 frame);
    qint64 JumpByTime(qint64 frame);
    qint64 WalkTo(qint64 frame);
    const PacketIndex& Index();

    QString path_;
    std::unique_ptr<LavfInput> input_;
    LavcDecoder decoder_;
    std::unique_ptr<FrameConverter> converter_;
    std::unique_ptr<PacketTimeline> timeline_; // only for codecs that it covers
    std::deque<PlacedPacket> ahead_;           // taken from the file, to be decoded first
    std::optional<PacketIndex> index_;
    qint64 startTime_ = AV_NOPTS_VALUE; // of the first packet, in units of the stream
    qint64 endFrame_ = -1;              // where the padding at the end begins, when the demuxer can't tell
    qint64 lostFrames_ = 0;             // of packets that failed before the first one that did not
    bool chained_ = false;
    bool drained_ = false;
};

} // namespace kestrune
