#include "backends/reading/sample_source.h"

#include <algorithm>

namespace kestrune {

qint64 DecodingSource::PieceFrames() const {
    return static_cast<qint64>(piece_.size() - pieceAt_) / info_.channels;
}

void DecodingSource::DropPiece() {
    piece_.clear();
    pieceAt_ = 0;
}

void DecodingSource::KeepFirstPiece(std::vector<qint16> piece) {
    piece_ = std::move(piece);
    pieceAt_ = 0;
    decodeFrame_ = PieceFrames();
}

// Replaces the read-out piece by the next one that holds something.
bool DecodingSource::FillPiece() {
    DropPiece();
    while (DecodeNext(piece_)) {
        const qint64 frames = PieceFrames();
        decodeFrame_ += frames;
        if (frames > 0) {
            return true;
        }
    }
    endFrame_ = decodeFrame_;
    return false;
}

qint64 DecodingSource::Read(qint16* out, qint64 frames) {
    qint64 done = 0;
    while (done < frames && (PieceFrames() > 0 || FillPiece())) {
        const qint64 part = std::min(PieceFrames(), frames - done);
        const auto from = piece_.begin() + static_cast<std::ptrdiff_t>(pieceAt_);
        std::copy_n(from, part * info_.channels, out + done * info_.channels);
        pieceAt_ += static_cast<size_t>(part * info_.channels);
        done += part;
    }
    return done;
}

qint64 DecodingSource::SeekTo(qint64 frame) {
    // A decode that met the end knows it better than any header.
    const qint64 target = endFrame_ >= 0 ? std::min(frame, endFrame_) : frame;
    const qint64 pieceStart = decodeFrame_ - static_cast<qint64>(piece_.size()) / info_.channels;
    if (target >= pieceStart && target <= decodeFrame_) {
        pieceAt_ = static_cast<size_t>((target - pieceStart) * info_.channels);
        return target;
    }
    const qint64 place = JumpBefore(target);
    if (place >= 0) {
        DropPiece();
        decodeFrame_ = place;
    } else if (target < pieceStart) {
        DropPiece();
        decodeFrame_ = 0;
        if (!Rewind()) {
            endFrame_ = 0;
            return 0;
        }
    }
    while (decodeFrame_ <= target) {
        if (!FillPiece()) {
            return decodeFrame_;
        }
    }
    const qint64 start = decodeFrame_ - static_cast<qint64>(piece_.size()) / info_.channels;
    pieceAt_ = static_cast<size_t>((target - start) * info_.channels);
    return target;
}

qint64 DecodingSource::LengthFrames() {
    if (endFrame_ >= 0) {
        return endFrame_;
    }
    if (countedFrames_ < 0) {
        countedFrames_ = std::max<qint64>(CountFrames(), 0);
    }
    return countedFrames_;
}

} // namespace kestrune
