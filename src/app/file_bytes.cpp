#include "app/file_bytes.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

constexpr qint64 blockBytes = 256 * 1024;

bool AppendByBlocks(int from, qint64 offset, qint64 lengthBytes, int to) {
    std::vector<char> block(static_cast<size_t>(std::min(lengthBytes, blockBytes)));
    while (lengthBytes > 0) {
        const qint64 wanted = std::min(lengthBytes, blockBytes);
        if (ReadAt(from, block.data(), wanted, offset) != wanted || !WriteOn(to, block.data(), wanted)) {
            return false;
        }
        offset += wanted;
        lengthBytes -= wanted;
    }
    return true;
}

} // namespace

qint64 ReadAt(int file, char* bytes, qint64 count, qint64 position) {
    qint64 total = 0;
    while (total < count) {
        const ssize_t got = TEMP_FAILURE_RETRY(
            ::pread(file, bytes + total, static_cast<size_t>(count - total), position + total));
        if (got <= 0) {
            break;
        }
        total += got;
    }
    return total;
}

bool WriteAt(int file, const char* bytes, qint64 count, qint64 position) {
    while (count > 0) {
        const ssize_t written =
            TEMP_FAILURE_RETRY(::pwrite(file, bytes, static_cast<size_t>(count), position));
        if (written <= 0) {
            return false;
        }
        bytes += written;
        count -= written;
        position += written;
    }
    return true;
}

bool WriteOn(int file, const char* bytes, qint64 count) {
    while (count > 0) {
        const ssize_t written = TEMP_FAILURE_RETRY(::write(file, bytes, static_cast<size_t>(count)));
        if (written <= 0) {
            return false;
        }
        bytes += written;
        count -= written;
    }
    return true;
}

qint64 FileSize(int file) {
    struct stat facts {};
    return ::fstat(file, &facts) == 0 ? facts.st_size : -1;
}

bool AppendStretch(int from, qint64 offset, qint64 lengthBytes, int to) {
    while (lengthBytes > 0) {
        off_t at = offset;
        const ssize_t copied = TEMP_FAILURE_RETRY(
            ::copy_file_range(from, &at, to, nullptr, static_cast<size_t>(lengthBytes), 0));
        if (copied <= 0) {
            return AppendByBlocks(from, offset, lengthBytes, to);
        }
        offset += copied;
        lengthBytes -= copied;
    }
    return true;
}

} // namespace kestrune
