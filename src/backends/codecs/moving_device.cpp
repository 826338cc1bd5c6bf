#include "backends/codecs/moving_device.h"

namespace kestrune {

MovingDevice::MovingDevice() : memory_(std::make_unique<QBuffer>()), place_(memory_.get()) {
    memory_->open(QIODevice::ReadWrite);
    // A buffer of its own would hide where the place stands.
    open(QIODevice::ReadWrite | QIODevice::Unbuffered);
}

bool MovingDevice::MoveTo(QIODevice& place) {
    const QByteArray& written = memory_->data();
    const bool moved = place.write(written) == written.size() && place.seek(pos());
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
