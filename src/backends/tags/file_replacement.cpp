#include "backends/tags/file_replacement.h"

#include "backends/tags/logging.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace kestrune {

namespace {

constexpr size_t blockBytes = 256 * 1024;
// Leftovers of killed processes may have taken some.
constexpr int mostNames = 1000;

bool WriteAll(int file, const char* bytes, qint64 count) {
    while (count > 0) {
        const ssize_t written = ::write(file, bytes, static_cast<size_t>(count));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes += written;
        count -= written;
    }
    return true;
}

// Access lists and what users attach to files. Kinds that the system keeps to itself cannot be set; that is
// no failure.
void CopyExtendedAttributes(int from, int to) {
    const ssize_t namesBytes = ::flistxattr(from, nullptr, 0);
    if (namesBytes <= 0) {
        return;
    }
    std::vector<char> names(static_cast<size_t>(namesBytes));
    const ssize_t got = ::flistxattr(from, names.data(), names.size());
    for (ssize_t at = 0; at < got; at += static_cast<ssize_t>(std::strlen(names.data() + at)) + 1) {
        const char* name = names.data() + at;
        const ssize_t valueBytes = ::fgetxattr(from, name, nullptr, 0);
        if (valueBytes < 0) {
            continue;
        }
        std::vector<char> value(static_cast<size_t>(valueBytes));
        const ssize_t read = ::fgetxattr(from, name, value.data(), value.size());
        if (read >= 0 && ::fsetxattr(to, name, value.data(), static_cast<size_t>(read), 0) != 0) {
            qCDebug(logTags) << "attribute not taken over:" << name;
        }
    }
}

} // namespace

FileReplacement::FileReplacement(const QString& path)
    : target_(QFile::encodeName(QFileInfo(path).canonicalFilePath())),
      folder_(target_.left(target_.lastIndexOf('/') + 1)) {}

FileReplacement::~FileReplacement() {
    CloseAll();
    if (!temporary_.isEmpty()) {
        ::unlink(temporary_.constData());
    }
}

void FileReplacement::CloseAll() {
    for (int* file : {&from_, &to_}) {
        if (*file >= 0) {
            ::close(*file);
            *file = -1;
        }
    }
}

Outcome FileReplacement::Begin() {
    struct stat facts {};
    if (target_.isEmpty() || (from_ = ::open(target_.constData(), O_RDONLY | O_CLOEXEC)) < 0 ||
        ::fstat(from_, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return Outcome::NotFound;
    }
    // A rename would get round the write protection of the file.
    if (::access(target_.constData(), W_OK) != 0) {
        return Outcome::WriteFailed;
    }
    oldSizeBytes_ = facts.st_size;
    // Without a name until it is whole, where the file system can do that: then a kill leaves nothing behind.
    to_ = ::open(folder_.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (to_ < 0) {
        QByteArray name = folder_ + replacementPrefix + "XXXXXX" + replacementSuffix;
        to_ = ::mkostemps(name.data(), static_cast<int>(std::strlen(replacementSuffix)), O_CLOEXEC);
        temporary_ = to_ < 0 ? QByteArray() : name;
    }
    if (to_ < 0) {
        qCDebug(logTags) << "no file can be made in" << folder_;
        return Outcome::WriteFailed;
    }
    return Outcome::Ok;
}

QString FileReplacement::PathOfNew() const {
    return temporary_.isEmpty() ? QStringLiteral("/proc/self/fd/%1").arg(to_) : QFile::decodeName(temporary_);
}

// A rename needs a name to start from.
bool FileReplacement::NameIt() {
    const QByteArray nameless = "/proc/self/fd/" + QByteArray::number(to_);
    for (int number = 0; temporary_.isEmpty() && number < mostNames; ++number) {
        const QByteArray name = folder_ + replacementPrefix + QByteArray::number(::getpid()) + '-' +
                                QByteArray::number(number) + replacementSuffix;
        if (::linkat(AT_FDCWD, nameless.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0) {
            temporary_ = name;
        } else if (errno != EEXIST) {
            return false;
        }
    }
    return !temporary_.isEmpty();
}

Outcome FileReplacement::Fill(const FilePieces& pieces) {
    for (const FilePiece& piece : pieces.All()) {
        const bool written = piece.bytes.isEmpty()
                                 ? CopyRange(piece.offset, piece.lengthBytes)
                                 : WriteAll(to_, piece.bytes.constData(), piece.bytes.size());
        if (!written) {
            qCDebug(logTags) << "cannot write" << temporary_;
            return Outcome::WriteFailed;
        }
    }
    return Outcome::Ok;
}

// The system shares the blocks of both files, or copies inside, where it can.
bool FileReplacement::CopyRange(qint64 offset, qint64 lengthBytes) {
    while (lengthBytes > 0) {
        off_t from = offset;
        const ssize_t copied =
            ::copy_file_range(from_, &from, to_, nullptr, static_cast<size_t>(lengthBytes), 0);
        if (copied < 0 && errno == EINTR) {
            continue;
        }
        if (copied <= 0) {
            return CopyByBlocks(offset, lengthBytes);
        }
        offset += copied;
        lengthBytes -= copied;
    }
    return true;
}

bool FileReplacement::CopyByBlocks(qint64 offset, qint64 lengthBytes) {
    std::vector<char> block(blockBytes);
    while (lengthBytes > 0) {
        const auto wanted = static_cast<size_t>(std::min<qint64>(lengthBytes, blockBytes));
        const ssize_t got = ::pread(from_, block.data(), wanted, offset);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0 || !WriteAll(to_, block.data(), got)) {
            return false;
        }
        offset += got;
        lengthBytes -= got;
    }
    return true;
}

bool FileReplacement::TakeOverAttributes() {
    struct stat facts {};
    if (::fstat(from_, &facts) != 0) {
        return false;
    }
    // The owner first, since a change of owner takes the set-id bits away. Without the right to give files
    // away, the group may still be one of the user's.
    if (::fchown(to_, facts.st_uid, facts.st_gid) != 0 &&
        ::fchown(to_, static_cast<uid_t>(-1), facts.st_gid) != 0) {
        qCDebug(logTags) << "owner not taken over of" << target_;
    }
    if (::fchmod(to_, facts.st_mode & 07777) != 0) {
        return false;
    }
    CopyExtendedAttributes(from_, to_);
    return true;
}

Outcome FileReplacement::Commit() {
    if (to_ < 0 || !TakeOverAttributes() || ::fsync(to_) != 0 || !NameIt() ||
        ::rename(temporary_.constData(), target_.constData()) != 0) {
        qCDebug(logTags) << "cannot replace" << target_;
        return Outcome::WriteFailed;
    }
    temporary_.clear();
    CloseAll();
    // The name has to reach the disk too.
    const int folder = ::open(folder_.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
    return Outcome::Ok;
}

} // namespace kestrune
