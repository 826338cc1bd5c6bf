// Owners of what libavcodec gives out.
#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace kestrune {

struct PacketDeleter {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FrameDeleter {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct ParametersDeleter {
    void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
};
using PacketPtr = std::unique_ptr<AVPacket, PacketDeleter>;
using FramePtr = std::unique_ptr<AVFrame, FrameDeleter>;
using ParametersPtr = std::unique_ptr<AVCodecParameters, ParametersDeleter>;

} // namespace kestrune
