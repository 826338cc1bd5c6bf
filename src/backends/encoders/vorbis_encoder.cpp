#include "backends/encoders/vorbis_encoder.h"

#include <QByteArray>
#include <QIODevice>

#include <vorbis/vorbisenc.h>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int bitsPerKbit = 1000;
constexpr int storedBits = 16;
constexpr qint32 highestQuality = 1000;
constexpr float qualityUnit = 1000.0F;
constexpr long unset = -1;
// Always as many, since what the library makes of them depends on how they come.
constexpr int framesAtOnce = 4096;
constexpr qsizetype bytesAtOnce = 256 * 1024;
// The same in each file, so that the same input gives the same file.
constexpr int serialNumber = 1;

long BitsPerSecond(qint32 kbps) {
    return kbps > 0 ? static_cast<long>(kbps) * bitsPerKbit : unset;
}

bool IsByQuality(const VorbisRates& rates) {
    return rates.quality >= 0;
}

bool HoldsRates(const VorbisRates& rates) {
    return rates.minimumKbps > 0 || rates.maximumKbps > 0;
}

bool AreInOrder(const VorbisRates& rates) {
    const bool fitsBelow = rates.maximumKbps <= 0 || rates.nominalKbps <= rates.maximumKbps;
    return rates.nominalKbps > 0 && rates.minimumKbps <= rates.nominalKbps && fitsBelow;
}

class VorbisInfo {
public:
    VorbisInfo() { vorbis_info_init(&info_); }
    ~VorbisInfo() { vorbis_info_clear(&info_); }
    VorbisInfo(const VorbisInfo&) = delete;
    VorbisInfo& operator=(const VorbisInfo&) = delete;

    bool SetUp(const OutputFormat& format) {
        const VorbisRates& rates = format.vorbis;
        if (IsByQuality(rates)) {
            return vorbis_encode_init_vbr(&info_, format.channels, format.rateHz,
                                          static_cast<float>(rates.quality) / qualityUnit) == 0;
        }
        const int refused = vorbis_encode_setup_managed(
            &info_, format.channels, format.rateHz, BitsPerSecond(rates.maximumKbps),
            BitsPerSecond(rates.nominalKbps), BitsPerSecond(rates.minimumKbps));
        if (refused != 0) {
            return false;
        }
        // An average alone is met by the quality that gives it with most music. Holding it by force would
        // take the time of several codings, for less quality.
        if (!HoldsRates(rates) && vorbis_encode_ctl(&info_, OV_ECTL_RATEMANAGE2_SET, nullptr) != 0) {
            return false;
        }
        return vorbis_encode_setup_init(&info_) == 0;
    }

    vorbis_info* Get() { return &info_; }

private:
    vorbis_info info_ = {};
};

class VorbisEncoder : public SampleEncoder {
public:
    explicit VorbisEncoder(OutputFormat format) : format_(std::move(format)) {}
    ~VorbisEncoder() override {
        if (begun_) {
            ogg_stream_clear(&stream_);
            vorbis_block_clear(&block_);
            vorbis_dsp_clear(&dsp_);
        }
    }

    EncoderInput Input() const override { return {format_.rateHz, format_.channels, true}; }

    Outcome Begin(QIODevice& out) override {
        out_ = &out;
        if (!info_.SetUp(format_)) {
            return Outcome::NotSupported;
        }
        vorbis_analysis_init(&dsp_, info_.Get());
        vorbis_block_init(&dsp_, &block_);
        ogg_stream_init(&stream_, serialNumber);
        begun_ = true;
        return WriteHeaders() ? Outcome::Ok : Outcome::WriteFailed;
    }

    Outcome WriteFloats(const float* samples, qint64 frames) override {
        const int channels = format_.channels;
        for (qint64 done = 0; done < frames;) {
            const int count = static_cast<int>(std::min<qint64>(frames - done, framesAtOnce - filled_));
            float** const planes = vorbis_analysis_buffer(&dsp_, framesAtOnce);
            const float* from = samples + done * channels;
            for (int frame = filled_; frame < filled_ + count; ++frame) {
                for (int channel = 0; channel < channels; ++channel) {
                    planes[channel][frame] = *from++;
                }
            }
            filled_ += count;
            done += count;
            if (filled_ == framesAtOnce && !CodeFilled()) {
                return Outcome::WriteFailed;
            }
        }
        return Outcome::Ok;
    }

    Outcome Finish() override {
        if (filled_ > 0 && !CodeFilled()) {
            return Outcome::WriteFailed;
        }
        vorbis_analysis_wrote(&dsp_, 0);
        return TakeBlocks() && TakePages(ogg_stream_flush) && WriteOut() ? Outcome::Ok : Outcome::WriteFailed;
    }

private:
    bool WriteHeaders() {
        vorbis_comment comment;
        vorbis_comment_init(&comment);
        vorbis_comment_add_tag(&comment, "ENCODER", "Kestrune");
        ogg_packet identification;
        ogg_packet comments;
        ogg_packet books;
        const bool made = vorbis_analysis_headerout(&dsp_, &comment, &identification, &comments, &books) == 0;
        vorbis_comment_clear(&comment);
        if (!made) {
            return false;
        }
        ogg_stream_packetin(&stream_, &identification);
        ogg_stream_packetin(&stream_, &comments);
        ogg_stream_packetin(&stream_, &books);
        // The sound begins on a page of its own.
        return TakePages(ogg_stream_flush);
    }

    bool CodeFilled() {
        vorbis_analysis_wrote(&dsp_, filled_);
        filled_ = 0;
        return TakeBlocks();
    }

    bool TakeBlocks() {
        while (vorbis_analysis_blockout(&dsp_, &block_) == 1) {
            vorbis_analysis(&block_, nullptr);
            vorbis_bitrate_addblock(&block_);
            ogg_packet packet;
            while (vorbis_bitrate_flushpacket(&dsp_, &packet) == 1) {
                ogg_stream_packetin(&stream_, &packet);
            }
            if (!TakePages(ogg_stream_pageout)) {
                return false;
            }
        }
        return true;
    }

    // `next` gives one page after another: whole ones only, or whatever is there.
    bool TakePages(int (*next)(ogg_stream_state*, ogg_page*)) {
        ogg_page page;
        while (next(&stream_, &page) != 0) {
            pages_.append(reinterpret_cast<const char*>(page.header), page.header_len);
            pages_.append(reinterpret_cast<const char*>(page.body), page.body_len);
        }
        return pages_.size() < bytesAtOnce || WriteOut();
    }

    bool WriteOut() {
        const bool written = out_->write(pages_) == pages_.size();
        pages_.resize(0);
        return written;
    }

    const OutputFormat format_;
    QIODevice* out_ = nullptr;
    VorbisInfo info_;
    vorbis_dsp_state dsp_ = {};
    vorbis_block block_ = {};
    ogg_stream_state stream_ = {};
    bool begun_ = false;
    int filled_ = 0;   // frames in the library's buffer that it was not told of yet
    QByteArray pages_; // ready, but not written yet
};

} // namespace

std::optional<OutputFormat> VorbisFormat(qint32 rateHz, qint32 channels, const VorbisRates& rates) {
    const bool figuresFit =
        IsByQuality(rates) ? rates.quality <= highestQuality : rates.quality == -1 && AreInOrder(rates);
    if (rateHz <= 0 || channels < 1 || channels > 2 || !figuresFit) {
        return std::nullopt;
    }
    OutputFormat format;
    format.kind = FormatKind::Vorbis;
    format.rateHz = rateHz;
    format.channels = channels;
    format.bits = storedBits;
    format.vorbis = rates;
    VorbisInfo info;
    if (!info.SetUp(format)) {
        return std::nullopt;
    }
    // What was asked for, or what the quality is meant to come to.
    format.bitrateBps = static_cast<int>(info.Get()->bitrate_nominal);
    return format;
}

std::unique_ptr<SampleEncoder> MakeVorbisEncoder(const OutputFormat& format) {
    return std::make_unique<VorbisEncoder>(format);
}

} // namespace kestrune
