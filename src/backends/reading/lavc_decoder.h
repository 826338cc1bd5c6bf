// One decoder of libavcodec.
#pragma once

#include "backends/formats/lavc_pointers.h"
#include "backends/reading/frame_converter.h"

#include <QtGlobal>

#include <functional>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace kestrune {

class LavcDecoder {
public:
    // What leaves out the padding that a file marks at its ends.
    enum class Trimming { ByDecoder, ByCaller };

    LavcDecoder() = default;
    ~LavcDecoder();
    LavcDecoder(const LavcDecoder&) = delete;
    LavcDecoder& operator=(const LavcDecoder&) = delete;

    // Opens a decoder; one that is open is closed first. `timeBase` is that of the packets. False if there is
    // none for these parameters.
    bool Open(const AVCodecParameters& parameters, AVRational timeBase, Trimming trimming);
    // Decodes one packet (null: gives out what the decoder still holds) and calls `take` for each frame that
    // comes of it. Damaged packets give no frame or a concealed one.
    void Decode(const AVPacket* packet, const std::function<void(const AVFrame&)>& take);
    // Forgets what it holds, to go on at another place.
    void Flush();

private:
    AVCodecContext* context_ = nullptr;
    FramePtr frame_;
};

// The samples of a decoded frame, for the converter. The frame stays the owner.
inline RawFrames FramesOf(const AVFrame& frame) {
    return {frame.extended_data, static_cast<AVSampleFormat>(frame.format), &frame.ch_layout,
            frame.nb_samples};
}

} // namespace kestrune
