// Bytes of a file, for whoever looks into it without owning it.
#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

namespace kestrune {

class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    virtual qint64 SizeBytes() const = 0;
    // Fewer at the end, none behind it or where reading fails.
    virtual QByteArray ReadAt(qint64 position, qint64 bytes) = 0;
};

// What lies behind a place in another, which outlives the object.
class BytesBehind : public ByteSource {
public:
    BytesBehind(ByteSource& source, qint64 start) : source_(source), start_(start) {}

    qint64 SizeBytes() const override { return std::max<qint64>(source_.SizeBytes() - start_, 0); }
    QByteArray ReadAt(qint64 position, qint64 bytes) override {
        return source_.ReadAt(start_ + position, bytes);
    }

private:
    ByteSource& source_;
    qint64 start_;
};

// Of an open device that can seek, which outlives the object. Reads move the device's position.
class DeviceBytes : public ByteSource {
public:
    explicit DeviceBytes(QIODevice& device) : device_(device) {}

    qint64 SizeBytes() const override { return device_.size(); }
    QByteArray ReadAt(qint64 position, qint64 bytes) override {
        return device_.seek(position) ? device_.read(bytes) : QByteArray();
    }

private:
    QIODevice& device_;
};

} // namespace kestrune
