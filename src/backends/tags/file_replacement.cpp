#include "backends/tags/file_replacement.h"

#include "app/failure_log.h"
#include "backends/tags/file_bytes.h"
#include "backends/tags/in_place_writing.h"
#include "backends/tags/save_leftovers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

// Leftovers of killed processes may have taken some.
constexpr int mostNames = 1000;

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

// A file in the folder under a hidden name, marked as in use; -1 with errno after a failure. Another process
// that cleans up can take it away before it is marked.
int MakeNamed(const QByteArray& folder, QByteArray& name) {
    for (int time = 0; time < mostNames; ++time) {
        name = folder + replacementPrefix + "XXXXXX" + replacementSuffix;
        const int file =
            ::mkostemps(name.data(), static_cast<int>(std::strlen(replacementSuffix)), O_CLOEXEC);
        if (file < 0) {
            break;
        }
        MarkAsInUse(file);
        struct stat facts {};
        if (::fstat(file, &facts) == 0 && facts.st_nlink > 0) {
            return file;
        }
        ::close(file);
    }
    name.clear();
    return -1;
}

// Goes away with the descriptor, wherever it is.
int MakeNameless(const QByteArray& folder) {
    int file = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file < 0) {
        QByteArray name;
        file = MakeNamed(folder, name);
        if (file >= 0) {
            ::unlink(name.constData());
        }
    }
    return file;
}

// For content that cannot stand beside the file. The first folder is on a disk mostly.
int MakeStaging() {
    const int file = MakeNameless("/var/tmp/");
    return file >= 0 ? file : MakeNameless(QFile::encodeName(QDir::tempPath()) + '/');
}

} // namespace

FileReplacement::FileReplacement(const QString& path)
    : target_(QFile::encodeName(QFileInfo(path).canonicalFilePath())),
      folder_(target_.left(target_.lastIndexOf('/') + 1)) {}

FileReplacement::~FileReplacement() {
    if (!temporary_.isEmpty()) {
        ::unlink(temporary_.constData());
    }
    CloseAll();
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
    inPlace_ = facts.st_nlink > 1;
    RemoveLeftovers(folder_);
    if (!MakeNew()) {
        qCDebug(logTags) << "no file can be made in" << folder_;
        return Outcome::WriteFailed;
    }
    return Outcome::Ok;
}

bool FileReplacement::MakeNew() {
    // Without a name until it is whole, where the file system can do that: then a kill leaves nothing behind.
    to_ = ::open(folder_.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (to_ < 0) {
        to_ = MakeNamed(folder_, temporary_);
    }
    if (to_ < 0 && errno != ENOSPC && errno != EDQUOT) {
        inPlace_ = true;
        to_ = MakeStaging();
    }
    if (to_ >= 0) {
        MarkAsInUse(to_);
    }
    return to_ >= 0;
}

QString FileReplacement::PathOfNew() const {
    return temporary_.isEmpty() ? QStringLiteral("/proc/self/fd/%1").arg(to_) : QFile::decodeName(temporary_);
}

Outcome FileReplacement::Fill(const FilePieces& pieces) {
    for (const FilePiece& piece : pieces.All()) {
        const bool written = piece.bytes.isEmpty()
                                 ? AppendStretch(from_, piece.offset, piece.lengthBytes, to_)
                                 : WriteOn(to_, piece.bytes.constData(), piece.bytes.size());
        if (!written) {
            qCDebug(logTags) << "cannot write" << temporary_;
            return Outcome::WriteFailed;
        }
    }
    return Outcome::Ok;
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
            return CopyUnderAName();
        }
    }
    return !temporary_.isEmpty();
}

// Some systems give no name to a file that was made without one.
bool FileReplacement::CopyUnderAName() {
    const int named = MakeNamed(folder_, temporary_);
    if (named < 0) {
        return false;
    }
    const bool copied = AppendStretch(to_, 0, FileSize(to_), named);
    ::close(to_);
    to_ = named;
    return copied && TakeOverAttributes() && ::fsync(to_) == 0;
}

// False where the permissions would be others.
bool FileReplacement::TakeOverAttributes() {
    struct stat wanted {};
    struct stat got {};
    if (::fstat(from_, &wanted) != 0) {
        return false;
    }
    // The owner first, since a change of owner takes the set-id bits away. Without the right to give files
    // away, the group may still be one of the user's.
    if (::fchown(to_, wanted.st_uid, wanted.st_gid) != 0 &&
        ::fchown(to_, static_cast<uid_t>(-1), wanted.st_gid) != 0) {
        qCDebug(logTags) << "owner not taken over of" << target_;
    }
    // Some file systems refuse it, and have one mode for all their files.
    const bool refused = ::fchmod(to_, wanted.st_mode & 07777) != 0;
    if (refused && (::fstat(to_, &got) != 0 || got.st_mode != wanted.st_mode)) {
        return false;
    }
    CopyExtendedAttributes(from_, to_);
    return true;
}

bool FileReplacement::TakePlace() {
    if (!NameIt() || ::rename(temporary_.constData(), target_.constData()) != 0) {
        return false;
    }
    temporary_.clear();
    CloseAll();
    FlushFolder();
    return true;
}

// The name has to reach the disk too.
void FileReplacement::FlushFolder() {
    const int folder = ::open(folder_.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
}

bool FileReplacement::WriteIntoOld() {
    const int target = ::open(target_.constData(), O_RDWR | O_CLOEXEC);
    const int undo = MakeStaging();
    const bool written = target >= 0 && undo >= 0 && WriteInPlace(to_, target, undo);
    for (const int file : {target, undo}) {
        if (file >= 0) {
            ::close(file);
        }
    }
    return written;
}

Outcome FileReplacement::Commit() {
    inPlace_ = inPlace_ || !TakeOverAttributes();
    // A full disk may come to light only here.
    if (to_ < 0 || ::fsync(to_) != 0) {
        qCDebug(logTags) << "cannot write the new content of" << target_;
        return Outcome::WriteFailed;
    }
    if (!inPlace_ && TakePlace()) {
        return Outcome::Ok;
    }
    qCDebug(logTags) << "writing into" << target_;
    return WriteIntoOld() ? Outcome::Ok : Outcome::WriteFailed;
}

} // namespace kestrune
