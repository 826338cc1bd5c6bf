#include "backends/reading/lavc_decoder.h"

namespace kestrune {

namespace {

// The usual decoder of MPEG layers I and II rounds with an error that it carries on from the first frame, so
// that a decode from the middle differs. The ones in floating point do not.
const AVCodec* DecoderOf(AVCodecID codec) {
    const char* name = nullptr;
    switch (codec) {
    case AV_CODEC_ID_MP1:
        name = "mp1float";
        break;
    case AV_CODEC_ID_MP2:
        name = "mp2float";
        break;
    case AV_CODEC_ID_MP3:
        name = "mp3float";
        break;
    default:
        break;
    }
    const AVCodec* const decoder = name == nullptr ? nullptr : avcodec_find_decoder_by_name(name);
    return decoder != nullptr ? decoder : avcodec_find_decoder(codec);
}

} // namespace

LavcDecoder::~LavcDecoder() {
    avcodec_free_context(&context_);
}

bool LavcDecoder::Open(const AVCodecParameters& parameters, AVRational timeBase, Trimming trimming) {
    avcodec_free_context(&context_);
    const AVCodec* const codec = DecoderOf(parameters.codec_id);
    if (codec == nullptr) {
        return false;
    }
    frame_.reset(av_frame_alloc());
    context_ = avcodec_alloc_context3(codec);
    if (context_ == nullptr || avcodec_parameters_to_context(context_, &parameters) < 0) {
        return false;
    }
    context_->pkt_timebase = timeBase;
    // Threads of the decoder would hold frames back, and one packet would no longer give its own frame.
    context_->thread_count = 1;
    if (trimming == Trimming::ByCaller) {
        context_->flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
    }
    return avcodec_open2(context_, codec, nullptr) >= 0;
}

void LavcDecoder::Decode(const AVPacket* packet, const std::function<void(const AVFrame&)>& take) {
    if (avcodec_send_packet(context_, packet) < 0) {
        return;
    }
    int error = 0;
    while (error >= 0) {
        error = avcodec_receive_frame(context_, frame_.get());
        if (error >= 0) {
            take(*frame_);
            av_frame_unref(frame_.get());
        }
    }
}

void LavcDecoder::Flush() {
    avcodec_flush_buffers(context_);
}

} // namespace kestrune
