#include "backends/tags/writable_stream.h"

#include "app/file_bytes.h"

#include <algorithm>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

constexpr qint64 blockBytes = 1024 * 1024;

} // namespace

TagLib::ByteVector WritableStream::readBlock(unsigned long length) {
    const qint64 left = std::max<qint64>(this->length() - position_, 0);
    const qint64 wanted =
        std::min<qint64>(static_cast<qint64>(std::min<unsigned long>(length, 0x7FFFFFFFUL)), left);
    TagLib::ByteVector block(static_cast<unsigned int>(wanted), '\0');
    const qint64 got = ReadAt(file_, block.data(), wanted, position_);
    block.resize(static_cast<unsigned int>(got));
    position_ += got;
    return block;
}

void WritableStream::Put(const char* bytes, qint64 count, qint64 position) {
    failed_ = failed_ || !WriteAt(file_, bytes, count, position);
}

void WritableStream::writeBlock(const TagLib::ByteVector& data) {
    Put(data.data(), data.size(), position_);
    position_ += data.size();
}

void WritableStream::MoveTail(qint64 from, qint64 to) {
    const qint64 tailBytes = length() - from;
    if (tailBytes <= 0 || from == to) {
        return;
    }
    std::vector<char> block(static_cast<size_t>(std::min(tailBytes, blockBytes)));
    for (qint64 moved = 0; moved < tailBytes && !failed_;) {
        const qint64 count = std::min(tailBytes - moved, blockBytes);
        // Behind to front when it grows, so that nothing is overwritten before it was read.
        const qint64 offset = to > from ? tailBytes - moved - count : moved;
        if (ReadAt(file_, block.data(), count, from + offset) != count) {
            failed_ = true;
            return;
        }
        Put(block.data(), count, to + offset);
        moved += count;
    }
}

void WritableStream::insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) {
    const qint64 oldBytes = length();
    const auto at = static_cast<qint64>(start);
    const qint64 behind = std::min(at + static_cast<qint64>(replace), std::max<qint64>(oldBytes, at));
    MoveTail(behind, at + data.size());
    Put(data.data(), data.size(), at);
    const qint64 tailBytes = std::max<qint64>(oldBytes - behind, 0);
    truncate(static_cast<long>(at + data.size() + tailBytes));
    position_ = static_cast<long>(at + data.size());
}

void WritableStream::removeBlock(unsigned long start, unsigned long length) {
    insert(TagLib::ByteVector(), start, length);
}

void WritableStream::seek(long offset, Position from) {
    const long base = from == Beginning ? 0 : from == Current ? position_ : length();
    position_ = std::max(base + offset, 0L);
}

long WritableStream::length() {
    struct stat facts {};
    return ::fstat(file_, &facts) == 0 ? facts.st_size : 0;
}

void WritableStream::truncate(long length) {
    if (!failed_ && ::ftruncate(file_, length) != 0) {
        failed_ = true;
    }
}

} // namespace kestrune
