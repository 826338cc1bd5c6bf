#include "backends/writing/moving_device.h"

#include <algorithm>

namespace kestrune {

MovingDevice::MovingDevice() : memory_(std::make_unique<QBuffer>()), place_(memory_.get()) {
    memory_->open(QIODevice::ReadWrite);
    // A buffer of its own would hide where the place stands.
    open(QIODevice::ReadWrite | QIODevice::Unbuffered);
}

bool MovingDevice::MoveTo(QIODevice& place, const Progress& onProgress) {
    constexpr qint64 pieceBytes = Q_INT64_C(1) << 20;
    const QByteArray& written = memory_->data();
    bool moved = true;
    bool goesOn = true;
    for (qint64 at = 0; at < written.size() && moved && goesOn; at += pieceBytes) {
        const qint64 bytes = std::min<qint64>(pieceBytes, written.size() - at);
        moved = place.write(written.constData() + at, bytes) == bytes;
        goesOn = !moved || !onProgress || onProgress(at + bytes);
    }
    moved = moved && place.seek(pos());
    place_ = &place;
    memory_.reset();
    return moved;
}

qint64 MovingDevice::size() const {
    return place_->size();
}

bool MovingDevice::seek(qint64 position) {
    return QIODevice::seek(position) && place_->seek(position);
}

qint64 MovingDevice::readData(char* data, qint64 bytes) {
    return place_->read(data, bytes);
}

qint64 MovingDevice::writeData(const char* data, qint64 bytes) {
    return place_->write(data, bytes);
}

} // namespace kestrune
