// What the fuzz targets of tags share: files in memory.
#pragma once

#include "fuzz_support.h"

#include "app/file_pieces.h"

#include <QString>

#include <sys/mman.h>
#include <unistd.h>

namespace kestrune::fuzz {

// A file without a place on a disk, with a path to open it by.
class MemoryFile {
public:
    MemoryFile() : file_(::memfd_create("fuzz", MFD_CLOEXEC)) {
        Holds(file_ >= 0, "there is memory for a file");
    }
    ~MemoryFile() { ::close(file_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    QString Path() const { return QStringLiteral("/proc/self/fd/%1").arg(file_); }
    void Write(const QByteArray& bytes) const {
        Holds(::ftruncate(file_, 0) == 0 &&
                  ::pwrite(file_, bytes.constData(), static_cast<size_t>(bytes.size()), 0) == bytes.size(),
              "the file in memory takes the bytes");
    }

private:
    int file_;
};

// The file that the pieces of an old one make.
inline QByteArray Joined(const FilePieces& pieces, const QByteArray& old) {
    QByteArray bytes;
    for (const FilePiece& piece : pieces.All()) {
        bytes += piece.bytes.isEmpty() ? old.mid(piece.offset, piece.lengthBytes) : piece.bytes;
    }
    return bytes;
}

} // namespace kestrune::fuzz
