#include "backends/reading/mpc_source.h"

#include "backends/formats/codec_names.h"

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

// The first that tells of itself.
constexpr mpc_uint32_t tellingVersion = 8;

MpcSource::Window& WindowOf(mpc_reader* reader) {
    return *static_cast<MpcSource::Window*>(reader->data);
}

mpc_int32_t ReadBytes(mpc_reader* reader, void* target, mpc_int32_t bytes) {
    return static_cast<mpc_int32_t>(
        std::max<qint64>(WindowOf(reader).file->read(static_cast<char*>(target), bytes), 0));
}

mpc_bool_t SeekByte(mpc_reader* reader, mpc_int32_t position) {
    const MpcSource::Window& window = WindowOf(reader);
    return position >= 0 && window.file->seek(window.start + position) ? MPC_TRUE : MPC_FALSE;
}

mpc_int32_t TellByte(mpc_reader* reader) {
    return static_cast<mpc_int32_t>(WindowOf(reader).file->pos() - WindowOf(reader).start);
}

mpc_int32_t SizeBytes(mpc_reader* reader) {
    return static_cast<mpc_int32_t>(WindowOf(reader).file->size() - WindowOf(reader).start);
}

mpc_bool_t CanSeek(mpc_reader*) {
    return MPC_TRUE;
}

} // namespace

MpcSource::MpcSource(std::unique_ptr<QFile> file, qint64 start) : window_{std::move(file), start} {
    reader_.read = ReadBytes;
    reader_.seek = SeekByte;
    reader_.tell = TellByte;
    reader_.get_size = SizeBytes;
    reader_.canseek = CanSeek;
    reader_.data = &window_;
}

MpcSource::~MpcSource() {
    if (demuxer_ != nullptr) {
        mpc_demux_exit(demuxer_);
    }
    av_channel_layout_uninit(&speakers_);
}

std::unique_ptr<MpcSource> MpcSource::Open(std::unique_ptr<QFile> file, qint64 start) {
    // The library counts bytes in 32 bits.
    if (file->size() > std::numeric_limits<mpc_int32_t>::max()) {
        return nullptr;
    }
    std::unique_ptr<MpcSource> source(new MpcSource(std::move(file), start));
    if (!source->Rewind()) {
        return nullptr;
    }
    const mpc_streaminfo& stream = source->stream_;
    if (stream.sample_freq == 0 || stream.channels < 1 || stream.channels > 2) {
        return nullptr;
    }
    source->info_.kind =
        CodecName(stream.stream_version >= tellingVersion ? AV_CODEC_ID_MUSEPACK8 : AV_CODEC_ID_MUSEPACK7);
    source->info_.rateHz = static_cast<int>(stream.sample_freq);
    source->info_.channels = static_cast<int>(stream.channels);
    source->info_.bitrateBps = static_cast<int>(std::clamp(stream.average_bitrate, 0.0, 2e9));
    av_channel_layout_default(&source->speakers_, source->info_.channels);
    source->converter_ = std::make_unique<FrameConverter>(source->info_.channels);
    return source;
}

bool MpcSource::Rewind() {
    if (demuxer_ != nullptr) {
        mpc_demux_exit(demuxer_);
        demuxer_ = nullptr;
    }
    if (!window_.file->seek(window_.start)) {
        return false;
    }
    demuxer_ = mpc_demux_init(&reader_);
    if (demuxer_ == nullptr) {
        return false;
    }
    mpc_demux_get_info(demuxer_, &stream_);
    decoded_.resize(MPC_DECODER_BUFFER_LENGTH);
    return true;
}

qint64 MpcSource::JumpBefore(qint64 frame) {
    constexpr qint64 nearFrames = 8192;
    // Only a profile shows that the encoder told anything about itself.
    const bool knownWithoutNoise =
        stream_.stream_version == tellingVersion && stream_.profile > 0.0F && stream_.pns == 0;
    const bool isNear = frame >= DecodePosition() && frame - DecodePosition() < nearFrames;
    if (demuxer_ == nullptr || !knownWithoutNoise || isNear || frame >= LengthFrames()) {
        return -1;
    }
    // From a fresh start, since a damaged frame leaves its traces in the demuxer.
    if (!Rewind()) {
        return 0;
    }
    if (frame > 0 && mpc_demux_seek_sample(demuxer_, static_cast<mpc_uint64_t>(frame)) == MPC_STATUS_OK) {
        return frame;
    }
    return Rewind() ? 0 : -1;
}

bool MpcSource::DecodeNext(std::vector<qint16>& piece) {
    if (demuxer_ == nullptr) {
        return false;
    }
    mpc_frame_info frame = {};
    frame.buffer = decoded_.data();
    if (mpc_demux_decode(demuxer_, &frame) != MPC_STATUS_OK || frame.bits == -1) {
        return false;
    }
    const auto* plane = reinterpret_cast<const uint8_t*>(decoded_.data());
    const int frames = static_cast<int>(frame.samples);
    const RawFrames raw{&plane, AV_SAMPLE_FMT_FLT, &speakers_, frames};
    return converter_->Convert(raw, 0, frames, DecodePosition(), piece);
}

qint64 MpcSource::CountFrames() {
    return mpc_streaminfo_get_length_samples(&stream_);
}

} // namespace kestrune
