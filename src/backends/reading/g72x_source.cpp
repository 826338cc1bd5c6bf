#include "backends/reading/g72x_source.h"

#include <spandsp.h>

namespace kestrune {

namespace {

// The coder counts its bit rate at the rate that the standard is made for, whatever rate the data has.
constexpr int standardRateHz = 8000;
constexpr qint64 blockBytes = 2560;

} // namespace

G72xSource::G72xSource(std::unique_ptr<QFile> file, const QString& kind, int rateHz, int bits)
    : file_(std::move(file)), bits_(bits) {
    info_.kind = kind;
    info_.rateHz = rateHz;
    info_.channels = 1;
    info_.bitrateBps = rateHz * bits;
    G72xSource::Rewind();
}

G72xSource::~G72xSource() {
    g726_free(decoder_);
}

bool G72xSource::Rewind() {
    if (decoder_ != nullptr) {
        g726_free(decoder_);
    }
    decoder_ = g726_init(nullptr, standardRateHz * bits_, G726_ENCODING_LINEAR, G726_PACKING_LEFT);
    return decoder_ != nullptr && file_->seek(0);
}

bool G72xSource::DecodeNext(std::vector<qint16>& piece) {
    const QByteArray bytes = file_->read(blockBytes);
    if (bytes.isEmpty() || decoder_ == nullptr) {
        return false;
    }
    const size_t before = piece.size();
    // The decoder may bring a sample whose first bits came with the block before.
    piece.resize(before + static_cast<size_t>(bytes.size() * 8 / bits_ + 1));
    const int samples =
        g726_decode(decoder_, piece.data() + before, reinterpret_cast<const uint8_t*>(bytes.constData()),
                    static_cast<int>(bytes.size()));
    piece.resize(before + static_cast<size_t>(samples));
    return true;
}

qint64 G72xSource::CountFrames() {
    return file_->size() * 8 / bits_;
}

} // namespace kestrune
