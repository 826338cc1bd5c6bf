#include "backends/reading/chunk_source.h"

#include <cstring>

namespace kestrune {

namespace {

struct ChunkShape {
    AVCodecID codec;
    int bytes;
    int frames;
};

ChunkShape ShapeOf(ChunkSource::Coding coding) {
    switch (coding) {
    case ChunkSource::Coding::Gsm:
        return {AV_CODEC_ID_GSM, 33, 160};
    case ChunkSource::Coding::OkiAdpcm:
        return {AV_CODEC_ID_ADPCM_IMA_OKI, 1, 2};
    case ChunkSource::Coding::ImaAdpcm:
        break;
    }
    // The plain form of the coding: no block headers, first sample in the high bits.
    return {AV_CODEC_ID_ADPCM_IMA_APC, 1, 2};
}

// Of the codings whose chunks are single bytes, so many are decoded at once.
constexpr int bytesAtOnce = 1024;

} // namespace

ChunkSource::ChunkSource(std::unique_ptr<QFile> file, Coding coding, const QString& kind, int rateHz)
    : file_(std::move(file)), coding_(coding), parameters_(avcodec_parameters_alloc()), converter_(1) {
    const ChunkShape shape = ShapeOf(coding);
    parameters_->codec_type = AVMEDIA_TYPE_AUDIO;
    parameters_->codec_id = shape.codec;
    parameters_->sample_rate = rateHz;
    av_channel_layout_default(&parameters_->ch_layout, 1);
    info_.kind = kind;
    info_.rateHz = rateHz;
    info_.channels = 1;
    info_.bitrateBps = static_cast<int>(rateHz * 8LL * shape.bytes / shape.frames);
}

std::unique_ptr<ChunkSource> ChunkSource::Open(std::unique_ptr<QFile> file, Coding coding,
                                               const QString& kind, int rateHz) {
    std::unique_ptr<ChunkSource> source(new ChunkSource(std::move(file), coding, kind, rateHz));
    return source->Rewind() ? std::move(source) : nullptr;
}

bool ChunkSource::Rewind() {
    return file_->seek(0) && decoder_.Open(*parameters_, AVRational{1, parameters_->sample_rate},
                                           LavcDecoder::Trimming::ByDecoder);
}

bool ChunkSource::DecodeNext(std::vector<qint16>& piece) {
    const ChunkShape shape = ShapeOf(coding_);
    const bool single = shape.bytes == 1;
    const QByteArray bytes = file_->read(single ? bytesAtOnce : shape.bytes);
    if (bytes.size() < shape.bytes) {
        return false;
    }
    const PacketPtr packet(av_packet_alloc());
    if (av_new_packet(packet.get(), static_cast<int>(bytes.size())) < 0) {
        return false;
    }
    std::memcpy(packet->data, bytes.constData(), static_cast<size_t>(bytes.size()));
    const size_t before = piece.size();
    decoder_.Decode(packet.get(), [&](const AVFrame& frame) {
        const qint64 place = DecodePosition() + static_cast<qint64>(piece.size() - before);
        converter_.Convert(FramesOf(frame), 0, frame.nb_samples, place, piece);
    });
    // A chunk that could not be decoded is silent, so that all that follows keeps its place.
    piece.resize(before + static_cast<size_t>(bytes.size() / shape.bytes * shape.frames), 0);
    return true;
}

qint64 ChunkSource::CountFrames() {
    const ChunkShape shape = ShapeOf(coding_);
    return file_->size() / shape.bytes * shape.frames;
}

} // namespace kestrune
