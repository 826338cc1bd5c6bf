#include "backends/reading/lavf_source.h"

#include "backends/formats/codec_names.h"
#include "backends/reading/length_scan.h"
#include "backends/reading/ogg_chain.h"

#include <algorithm>
#include <string_view>

namespace kestrune {

namespace {

// A file that gives no samples in so many packets is taken for one that can't be decoded.
constexpr int packetsUntilHopeless = 400;
// Walking so far ahead costs less than a jump.
constexpr qint64 nearFrames = 8192;

bool IsRawPackets(const LavfInput& input) {
    const std::string_view name = input.ContainerName();
    return name == "mp3" || name == "wav";
}

// True if the container finds the packet of a time by itself, and tells its place to the sample.
bool HasExactTimes(const LavfInput& input) {
    const AVStream& stream = input.Audio();
    const AVRational& base = stream.time_base;
    const AVCodecID codec = stream.codecpar->codec_id;
    const bool flac = codec == AV_CODEC_ID_FLAC && std::string_view(input.ContainerName()) == "flac";
    const bool findsPackets = flac || av_get_exact_bits_per_sample(codec) >= 8;
    return findsPackets && base.num == 1 && base.den == stream.codecpar->sample_rate;
}

} // namespace

LavfSource::LavfSource(QString path) : path_(std::move(path)) {}

std::unique_ptr<LavfSource> LavfSource::Open(const QString& path) {
    std::unique_ptr<LavfSource> source(new LavfSource(path));
    source->input_ = LavfInput::Open(path);
    QFile file(path);
    source->chained_ = file.open(QIODevice::ReadOnly) && IsChainedOgg(file);
    if (!source->input_ || !source->OpenDecoder() || !source->DecodeFirst()) {
        return nullptr;
    }
    return source;
}

bool LavfSource::OpenDecoder() {
    const AVStream& stream = input_->Audio();
    // A chained file changes its decoder's set-up on the way, which a seek must not step over.
    const bool covered = PacketTimeline::Covers(*stream.codecpar, stream.time_base) && !chained_;
    if (covered) {
        timeline_ = std::make_unique<PacketTimeline>(*stream.codecpar);
    }
    drained_ = false;
    return decoder_.Open(*stream.codecpar, stream.time_base,
                         covered ? LavcDecoder::Trimming::ByCaller : LavcDecoder::Trimming::ByDecoder);
}

// The first samples tell rate and channels, which headers may lack or tell wrongly.
bool LavfSource::DecodeFirst() {
    std::vector<qint16> piece;
    for (int packets = 0; packets < packetsUntilHopeless && piece.empty(); ++packets) {
        if (!DecodeNext(piece)) {
            break;
        }
    }
    if (!converter_ || piece.empty()) {
        return false;
    }
    piece.insert(piece.begin(), static_cast<size_t>(lostFrames_ * info_.channels), 0);
    KeepFirstPiece(std::move(piece));
    return true;
}

void LavfSource::Describe(const AVFrame& first) {
    const AVCodecParameters& parameters = *input_->Audio().codecpar;
    info_.kind = CodecName(parameters.codec_id);
    info_.rateHz = first.sample_rate > 0 ? first.sample_rate : parameters.sample_rate;
    info_.channels = std::clamp(first.ch_layout.nb_channels, 1, 2);
    info_.bitrateBps = parameters.bit_rate > 0
                           ? static_cast<int>(std::min<int64_t>(parameters.bit_rate, INT32_MAX))
                           : input_->ContainerBitrate();
    converter_ = std::make_unique<FrameConverter>(info_.channels);
}

bool LavfSource::NextPlaced(PlacedPacket& next) {
    if (!ahead_.empty()) {
        next = std::move(ahead_.front());
        ahead_.pop_front();
        return true;
    }
    next.packet.reset(av_packet_alloc());
    if (!input_->Read(*next.packet)) {
        return false;
    }
    if (startTime_ == AV_NOPTS_VALUE) {
        startTime_ = next.packet->pts;
    }
    next.span = timeline_->Place(*next.packet);
    if (endFrame_ >= 0) {
        next.span.count =
            static_cast<int>(std::clamp<qint64>(endFrame_ - next.span.start, 0, next.span.count));
    }
    return true;
}

bool LavfSource::DecodeNext(std::vector<qint16>& piece) {
    if (!input_) {
        return false;
    }
    return timeline_ ? DecodePlaced(piece) : DecodeRunning(piece);
}

bool LavfSource::DecodePlaced(std::vector<qint16>& piece) {
    PlacedPacket next;
    if (!NextPlaced(next)) {
        return false;
    }
    const size_t before = piece.size();
    qint64 decoded = 0;
    decoder_.Decode(next.packet.get(), [&](const AVFrame& frame) {
        if (!converter_) {
            Describe(frame);
        }
        AppendPlaced(frame, next.span, decoded, piece);
    });
    if (!converter_) {
        lostFrames_ += next.span.count;
    } else {
        const int samples = next.span.count * info_.channels;
        piece.resize(before + static_cast<size_t>(samples), 0);
    }
    return true;
}

void LavfSource::AppendPlaced(const AVFrame& frame, const PacketSpan& span, qint64& decoded,
                              std::vector<qint16>& piece) {
    const qint64 from = std::max<qint64>(span.front, decoded);
    const qint64 to = std::min<qint64>(span.front + span.count, decoded + frame.nb_samples);
    if (from < to) {
        converter_->Convert(FramesOf(frame), static_cast<int>(from - decoded), static_cast<int>(to - from),
                            span.start + from - span.front, piece);
    }
    decoded += frame.nb_samples;
}

void LavfSource::AppendFrame(const AVFrame& frame, std::vector<qint16>& piece) {
    if (!converter_) {
        Describe(frame);
    }
    const qint64 place = DecodePosition() + static_cast<qint64>(piece.size()) / info_.channels;
    converter_->Convert(FramesOf(frame), 0, frame.nb_samples, place, piece);
}

bool LavfSource::DecodeRunning(std::vector<qint16>& piece) {
    if (drained_) {
        return false;
    }
    const PacketPtr packet(av_packet_alloc());
    drained_ = !input_->Read(*packet);
    decoder_.Decode(drained_ ? nullptr : packet.get(),
                    [&](const AVFrame& frame) { AppendFrame(frame, piece); });
    return true;
}

bool LavfSource::Rewind() {
    ahead_.clear();
    endFrame_ = -1;
    input_ = LavfInput::Open(path_);
    return input_ && OpenDecoder();
}

qint64 LavfSource::JumpBefore(qint64 frame) {
    const bool isNear = frame >= DecodePosition() && frame - DecodePosition() < nearFrames;
    if (!input_ || !timeline_ || isNear) {
        return -1;
    }
    if (HasExactTimes(*input_)) {
        const qint64 place = JumpByTime(frame);
        if (place >= 0) {
            return place;
        }
    } else if (IsRawPackets(*input_)) {
        const qint64 place = JumpByIndex(frame);
        if (place >= 0) {
            return place;
        }
    }
    return WalkTo(frame);
}

const PacketIndex& LavfSource::Index() {
    if (!index_) {
        const std::unique_ptr<LavfInput> input = LavfInput::Open(path_);
        index_ = input ? PacketIndex::Of(*input) : PacketIndex();
    }
    return *index_;
}

qint64 LavfSource::JumpByIndex(qint64 frame) {
    const AVCodecID codec = input_->Audio().codecpar->codec_id;
    const PacketIndex::Entry* const entry = Index().Before(frame, PacketTimeline::LeadPackets(codec));
    if (entry == nullptr || !input_->SeekToByte(entry->position)) {
        return -1;
    }
    decoder_.Flush();
    ahead_.clear();
    // Away from the start the demuxer does not mark the padding at the end.
    endFrame_ = Index().Frames();
    timeline_->MoveTo(entry->frame);
    PlacedPacket first;
    if (!NextPlaced(first) || first.packet->pos != entry->position) {
        return -1;
    }
    ahead_.push_back(std::move(first));
    return entry->frame;
}

qint64 LavfSource::JumpByTime(qint64 frame) {
    if (startTime_ == AV_NOPTS_VALUE || !input_->SeekToTime(startTime_ + frame)) {
        return -1;
    }
    decoder_.Flush();
    ahead_.clear();
    PlacedPacket first;
    first.packet.reset(av_packet_alloc());
    if (!input_->Read(*first.packet) || first.packet->pts == AV_NOPTS_VALUE ||
        first.packet->pts - startTime_ > frame || first.packet->pts < startTime_) {
        return -1;
    }
    timeline_->MoveTo(first.packet->pts - startTime_);
    first.span = timeline_->Place(*first.packet);
    const qint64 place = first.span.start;
    ahead_.push_back(std::move(first));
    return place;
}

// Takes packets without decoding them until the target is reached, and keeps the last few.
qint64 LavfSource::WalkTo(qint64 frame) {
    const bool fromStart = frame < DecodePosition() || endFrame_ >= 0 || HasExactTimes(*input_);
    if (fromStart && !Rewind()) {
        return 0;
    }
    const int lead = PacketTimeline::LeadPackets(input_->Audio().codecpar->codec_id);
    std::deque<PlacedPacket> kept;
    PlacedPacket next;
    bool leftOut = false;
    while (NextPlaced(next)) {
        const bool reached = next.span.start + next.span.count > frame;
        kept.push_back(std::move(next));
        if (reached) {
            break;
        }
        if (kept.size() > static_cast<size_t>(lead) + 1) {
            kept.pop_front();
            leftOut = true;
        }
    }
    if (leftOut) {
        decoder_.Flush();
    }
    ahead_ = std::move(kept);
    return ahead_.empty() ? timeline_->Position() : ahead_.front().span.start;
}

qint64 LavfSource::CountFrames() {
    if (!input_) {
        return 0;
    }
    if (!timeline_) {
        return ScanLength(path_, info_.rateHz);
    }
    if (HasHeaderLength(*input_)) {
        return HeaderLength(*input_);
    }
    return Index().Frames();
}

} // namespace kestrune
