// Which frames of a file each packet stands for, without decoding it.
#pragma once

#include <QtGlobal>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavcodec/vorbis_parser.h>
}

namespace kestrune {

// The part of a packet's decoded samples that belongs to the file's audio.
struct PacketSpan {
    qint64 start = 0; // place of its first frame in the file
    int front = 0;    // decoded frames to leave out before it
    int count = 0;    // frames that the packet gives to the file
};

// Adds up packets in the order of the file. Start and end padding that the demuxer marked is left out.
class PacketTimeline {
public:
    // `parameters` is of a stream that is covered, and outlives this.
    explicit PacketTimeline(const AVCodecParameters& parameters);
    ~PacketTimeline();
    PacketTimeline(const PacketTimeline&) = delete;
    PacketTimeline& operator=(const PacketTimeline&) = delete;

    // True if a packet of this stream tells how many frames its decoding gives, and gives them at once.
    static bool Covers(const AVCodecParameters& parameters, AVRational timeBase);
    // Packets before a place that have to be decoded so that the decoder gives there what it would give in a
    // straight decode.
    static int LeadPackets(AVCodecID codec);

    // Takes the next packet.
    PacketSpan Place(const AVPacket& packet);
    // Where the next packet begins.
    qint64 Position() const { return position_; }
    // Back to the first packet of the file.
    void Restart();
    // To a packet that is known to begin at `frame` and is not the first of the file.
    void MoveTo(qint64 frame);

private:
    int DecodedFrames(const AVPacket& packet);
    int BlockFrames(int bytes) const;

    const AVCodecParameters& parameters_;
    AVVorbisParseContext* vorbis_ = nullptr;
    qint64 position_ = 0;
    int padding_ = 0; // start padding still to be left out
    bool first_ = true;
};

} // namespace kestrune
