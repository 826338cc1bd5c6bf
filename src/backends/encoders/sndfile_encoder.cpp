#include "backends/encoders/sndfile_encoder.h"

#include "app/failure_log.h"

#include <QIODevice>

#include <sndfile.h>

#include <cstdio>
#include <limits>

namespace kestrune {

// The device as the library sees it. Keeps in mind whether all that it was given was written.
class SndfileEncoder::Target {
public:
    explicit Target(QIODevice& out) : out_(out) {}

    bool Failed() const { return failed_; }

    static SF_VIRTUAL_IO Calls() { return {Size, Seek, Read, Write, Position}; }

private:
    static Target& Of(void* self) { return *static_cast<Target*>(self); }

    static sf_count_t Size(void* self) { return Of(self).out_.size(); }

    static sf_count_t Position(void* self) { return Of(self).out_.pos(); }

    static sf_count_t Seek(sf_count_t offset, int whence, void* self) {
        QIODevice& out = Of(self).out_;
        const qint64 base = whence == SEEK_CUR ? out.pos() : whence == SEEK_END ? out.size() : 0;
        return out.seek(base + offset) ? out.pos() : -1;
    }

    static sf_count_t Read(void* bytes, sf_count_t count, void* self) {
        return Of(self).out_.read(static_cast<char*>(bytes), count);
    }

    static sf_count_t Write(const void* bytes, sf_count_t count, void* self) {
        Target& target = Of(self);
        // What the 32-bit sizes of a header can tell.
        constexpr qint64 mostBytes = std::numeric_limits<quint32>::max() - 1;
        if (target.out_.pos() + count > mostBytes) {
            target.failed_ = true;
            return 0;
        }
        const qint64 written = target.out_.write(static_cast<const char*>(bytes), count);
        target.failed_ = target.failed_ || written != count;
        return written < 0 ? 0 : written;
    }

    QIODevice& out_;
    bool failed_ = false;
};

SndfileEncoder::SndfileEncoder(int format, int rateHz, int channels, int groupSamples)
    : format_(format),
      rateHz_(rateHz),
      channels_(channels),
      groupSamples_(static_cast<size_t>(groupSamples)) {}

SndfileEncoder::~SndfileEncoder() {
    if (file_ != nullptr) {
        sf_close(file_);
    }
}

Outcome SndfileEncoder::Begin(QIODevice& out) {
    SF_INFO info = {};
    info.samplerate = rateHz_;
    info.channels = channels_;
    info.format = format_;
    if (channels_ != 1 || rateHz_ < 1 || sf_format_check(&info) == 0) {
        return Outcome::NotSupported;
    }
    target_ = std::make_unique<Target>(out);
    SF_VIRTUAL_IO calls = Target::Calls();
    file_ = sf_open_virtual(&calls, SFM_WRITE, &info, target_.get());
    if (file_ == nullptr) {
        qCWarning(logCodecs) << "libsndfile does not write this:" << sf_strerror(nullptr);
        return target_->Failed() ? Outcome::WriteFailed : Outcome::NotSupported;
    }
    return target_->Failed() ? Outcome::WriteFailed : Outcome::Ok;
}

bool SndfileEncoder::Put(const qint16* samples, qint64 count) {
    return sf_write_short(file_, samples, count) == count && !target_->Failed();
}

Outcome SndfileEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    if (file_ == nullptr) {
        return Outcome::NotOpen;
    }
    const qint16* const end = samples + frames;
    if (!held_.empty()) {
        while (samples < end && held_.size() < groupSamples_) {
            held_.push_back(*samples++);
        }
        if (held_.size() < groupSamples_) {
            return Outcome::Ok;
        }
        if (!Put(held_.data(), static_cast<qint64>(held_.size()))) {
            return Outcome::WriteFailed;
        }
        held_.clear();
    }
    const auto group = static_cast<qint64>(groupSamples_);
    const qint64 whole = (end - samples) / group * group;
    held_.assign(samples + whole, end);
    return Put(samples, whole) ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome SndfileEncoder::Finish() {
    if (file_ == nullptr) {
        return Outcome::NotOpen;
    }
    bool written = true;
    if (!held_.empty()) {
        held_.resize(groupSamples_);
        written = Put(held_.data(), static_cast<qint64>(held_.size()));
    }
    written = sf_close(file_) == 0 && written && !target_->Failed();
    file_ = nullptr;
    return written ? Outcome::Ok : Outcome::WriteFailed;
}

} // namespace kestrune
