// An encoder of libavcodec that takes 16-bit samples in blocks of one length.
#pragma once

#include "backends/formats/lavc_pointers.h"
#include "components/outcome.h"

#include <QtGlobal>

#include <functional>
#include <memory>

namespace kestrune {

// Order of calls: Open, any number of Write, Flush. One thread at a time.
class LavcBlockCoder {
public:
    struct Setup {
        AVCodecID codec = AV_CODEC_ID_NONE;
        int rateHz = 0;
        int channels = 0;
        qint64 bitrateBps = 0; // 0 where the coding has but one
        // What only this coding knows; null for nothing.
        const char* option = nullptr;
        int value = 0;
    };
    // Takes coded bytes; anything but Ok ends the call that gave them.
    using Sink = std::function<Outcome(const char* bytes, qint64 count)>;

    // False if the library has no encoder for this.
    bool Open(const Setup& setup);
    int BlockFrames() const { return coder_->frame_size; }
    // Frames of the block that is not full.
    int HeldFrames() const { return filled_; }
    // Interleaved frames.
    Outcome Write(const qint16* samples, qint64 frames, const Sink& sink);
    // Codes the block that is not full, with silence up to `frames` of it; nothing if it is empty. `frames`
    // is at least HeldFrames, and less than a whole block only for coders that take a short last one.
    Outcome Flush(int frames, const Sink& sink);

private:
    struct ContextDeleter {
        void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    };

    bool MakeFrame();
    void Take(const qint16* samples, int count);
    Outcome EncodeBlock(const Sink& sink);

    std::unique_ptr<AVCodecContext, ContextDeleter> coder_;
    FramePtr frame_; // the block that is being filled
    PacketPtr packet_;
    int channels_ = 0;
    int filled_ = 0;
};

} // namespace kestrune
