#include "backends/codecs/lavc_decoder.h"

namespace kestrune {

LavcDecoder::~LavcDecoder() {
    avcodec_free_context(&context_);
}

bool LavcDecoder::Open(const AVCodecParameters& parameters, AVRational timeBase, Trimming trimming) {
    avcodec_free_context(&context_);
    const AVCodec* const codec = avcodec_find_decoder(parameters.codec_id);
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
