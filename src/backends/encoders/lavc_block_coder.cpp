#include "backends/encoders/lavc_block_coder.h"

#include <algorithm>
#include <vector>

extern "C" {
#include <libavutil/opt.h>
}

namespace kestrune {

bool LavcBlockCoder::Open(const Setup& setup) {
    const AVCodec* const codec = avcodec_find_encoder(setup.codec);
    coder_.reset(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (!coder_) {
        return false;
    }
    channels_ = setup.channels;
    coder_->sample_fmt = codec->sample_fmts[0];
    coder_->sample_rate = setup.rateHz;
    coder_->time_base = {1, setup.rateHz};
    // Speech codings at other rates than the standard's.
    coder_->strict_std_compliance = FF_COMPLIANCE_UNOFFICIAL;
    if (setup.bitrateBps > 0) {
        coder_->bit_rate = setup.bitrateBps;
    }
    av_channel_layout_default(&coder_->ch_layout, channels_);
    const bool known = coder_->sample_fmt == AV_SAMPLE_FMT_S16 || coder_->sample_fmt == AV_SAMPLE_FMT_S16P;
    const bool set =
        setup.option == nullptr || av_opt_set_int(coder_->priv_data, setup.option, setup.value, 0) >= 0;
    return known && set && avcodec_open2(coder_.get(), codec, nullptr) >= 0 && coder_->frame_size > 0 &&
           MakeFrame();
}

bool LavcBlockCoder::MakeFrame() {
    frame_.reset(av_frame_alloc());
    packet_.reset(av_packet_alloc());
    if (!frame_ || !packet_) {
        return false;
    }
    frame_->format = coder_->sample_fmt;
    frame_->sample_rate = coder_->sample_rate;
    frame_->nb_samples = coder_->frame_size;
    return av_channel_layout_copy(&frame_->ch_layout, &coder_->ch_layout) >= 0 &&
           av_frame_get_buffer(frame_.get(), 0) >= 0;
}

// Coders differ in how they want their channels.
void LavcBlockCoder::Take(const qint16* samples, int count) {
    if (coder_->sample_fmt == AV_SAMPLE_FMT_S16) {
        std::copy_n(samples, count * channels_,
                    reinterpret_cast<qint16*>(frame_->data[0]) + filled_ * channels_);
    } else {
        for (int channel = 0; channel < channels_; ++channel) {
            auto* const plane = reinterpret_cast<qint16*>(frame_->extended_data[channel]) + filled_;
            for (int at = 0; at < count; ++at) {
                plane[at] = samples[at * channels_ + channel];
            }
        }
    }
    filled_ += count;
}

Outcome LavcBlockCoder::EncodeBlock(const Sink& sink) {
    frame_->nb_samples = filled_;
    filled_ = 0;
    const bool coded = avcodec_send_frame(coder_.get(), frame_.get()) >= 0 &&
                       avcodec_receive_packet(coder_.get(), packet_.get()) >= 0;
    if (!coded || av_frame_make_writable(frame_.get()) < 0) {
        return Outcome::WriteFailed;
    }
    const Outcome outcome = sink(reinterpret_cast<const char*>(packet_->data), packet_->size);
    av_packet_unref(packet_.get());
    return outcome;
}

Outcome LavcBlockCoder::Write(const qint16* samples, qint64 frames, const Sink& sink) {
    for (qint64 at = 0; at < frames;) {
        const int count = static_cast<int>(std::min<qint64>(frames - at, coder_->frame_size - filled_));
        Take(samples + at * channels_, count);
        at += count;
        if (filled_ == coder_->frame_size) {
            if (const Outcome outcome = EncodeBlock(sink); outcome != Outcome::Ok) {
                return outcome;
            }
        }
    }
    return Outcome::Ok;
}

Outcome LavcBlockCoder::Flush(int frames, const Sink& sink) {
    if (filled_ == 0) {
        return Outcome::Ok;
    }
    const int missing = frames - filled_;
    Take(std::vector<qint16>(static_cast<size_t>(missing * channels_)).data(), missing);
    return EncodeBlock(sink);
}

} // namespace kestrune
