#include "app/file_replacement.h"

#include "app/failure_log.h"
#include "app/file_bytes.h"
#include "app/in_place_writing.h"
#include "app/save_leftovers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace kestrune {

namespace {

// Leftovers of killed processes may have taken some.
constexpr int mostNames = 1000;
// As many links in a row as the system itself follows.
constexpr int mostLinks = 40;
constexpr unsigned ownerOnly = 0600;

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
            qCDebug(logFiles) << "attribute not taken over:" << name;
        }
    }
}

// Tries hidden names in the folder until `take` got one. Empty with errno after a failure.
QByteArray TakeFreeName(const QByteArray& folder, const std::function<bool(const char*)>& take) {
    for (int number = 0; number < mostNames; ++number) {
        QByteArray name = folder + replacementPrefix + QByteArray::number(::getpid()) + '-' +
                          QByteArray::number(number) + replacementSuffix;
        if (take(name.constData())) {
            return name;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return {};
}

// A file in the folder under a hidden name, marked as in use; -1 with errno after a failure.
int MakeNamed(const QByteArray& folder, unsigned permissions, QByteArray& name) {
    int file = -1;
    name = TakeFreeName(folder, [&](const char* path) {
        file = ::open(path, O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, permissions);
        if (file < 0) {
            return false;
        }
        MarkAsInUse(file);
        // Another process that cleans up can have taken it away before it was marked.
        struct stat facts {};
        if (::fstat(file, &facts) == 0 && facts.st_nlink > 0) {
            return true;
        }
        ::close(file);
        file = -1;
        errno = EEXIST;
        return false;
    });
    return file;
}

// Goes away with the descriptor, wherever it is.
int MakeNameless(const QByteArray& folder) {
    int file = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, ownerOnly);
    if (file < 0) {
        QByteArray name;
        file = MakeNamed(folder, ownerOnly, name);
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

QString LinksFollowed(const QString& path) {
    QString target = path;
    for (int link = 0; link < mostLinks; ++link) {
        const QFileInfo info(target);
        if (!info.isSymLink()) {
            return target;
        }
        target = info.symLinkTarget();
    }
    return target;
}

FileReplacement::FileReplacement(const QString& path, Replacing how)
    : how_(how),
      permissions_(ownerOnly),
      target_(QFile::encodeName(QFileInfo(LinksFollowed(path)).absoluteFilePath())),
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
    // A pipe must not be waited for.
    if ((from_ = ::open(target_.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) < 0 ||
        ::fstat(from_, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return Outcome::NotFound;
    }
    // A rename would get round the write protection of the file.
    if (::access(target_.constData(), W_OK) != 0) {
        return Outcome::WriteFailed;
    }
    oldSizeBytes_ = facts.st_size;
    inPlace_ = facts.st_nlink > 1 && how_ == Replacing::KeepsFile;
    RemoveLeftovers(folder_);
    return MakeNew() ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome FileReplacement::BeginNew(unsigned permissions) {
    // There is none to be kept.
    how_ = how_ == Replacing::KeepsFile ? Replacing::KeepsName : how_;
    permissions_ = permissions;
    struct stat facts {};
    // Also a link that leads round in a circle.
    if (::lstat(target_.constData(), &facts) == 0) {
        return Outcome::WriteFailed;
    }
    return MakeNew() ? Outcome::Ok : Outcome::WriteFailed;
}

bool FileReplacement::MakeNew() {
    // Without a name until it is whole, where the file system can do that: then a kill leaves nothing behind.
    to_ = ::open(folder_.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, permissions_);
    if (to_ < 0) {
        to_ = MakeNamed(folder_, permissions_, temporary_);
    }
    if (to_ < 0 && errno != ENOSPC && errno != EDQUOT && how_ == Replacing::KeepsFile) {
        inPlace_ = true;
        to_ = MakeStaging();
    }
    if (to_ < 0) {
        qCDebug(logFiles) << "no file can be made in" << folder_;
        return false;
    }
    MarkAsInUse(to_);
    return true;
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
            qCDebug(logFiles) << "cannot write" << temporary_;
            return Outcome::WriteFailed;
        }
    }
    return Outcome::Ok;
}

// A rename needs a name to start from.
bool FileReplacement::NameIt() {
    if (!temporary_.isEmpty()) {
        return true;
    }
    const QByteArray nameless = "/proc/self/fd/" + QByteArray::number(to_);
    temporary_ = TakeFreeName(folder_, [&](const char* name) {
        return ::linkat(AT_FDCWD, nameless.constData(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    });
    return !temporary_.isEmpty() || CopyUnderAName();
}

// Some systems give no name to a file that was made without one.
bool FileReplacement::CopyUnderAName() {
    const int named = MakeNamed(folder_, permissions_, temporary_);
    if (named < 0) {
        return false;
    }
    const bool copied = AppendStretch(to_, 0, FileSize(to_), named);
    ::close(to_);
    to_ = named;
    return copied && TakesOverEnough() && ::fsync(to_) == 0;
}

// False where the permissions would be others.
bool FileReplacement::TakeOverAttributes() {
    struct stat wanted {};
    struct stat got {};
    if (from_ < 0) {
        return true;
    }
    if (::fstat(from_, &wanted) != 0) {
        return false;
    }
    // The owner first, since a change of owner takes the set-id bits away. Without the right to give files
    // away, the group may still be one of the user's.
    if (::fchown(to_, wanted.st_uid, wanted.st_gid) != 0 &&
        ::fchown(to_, static_cast<uid_t>(-1), wanted.st_gid) != 0) {
        qCDebug(logFiles) << "owner not taken over of" << target_;
    }
    // Some file systems refuse it, and have one mode for all their files.
    const bool refused = ::fchmod(to_, wanted.st_mode & 07777) != 0;
    if (refused && (::fstat(to_, &got) != 0 || got.st_mode != wanted.st_mode)) {
        return false;
    }
    CopyExtendedAttributes(from_, to_);
    return true;
}

bool FileReplacement::MoveOver() {
    if (how_ != Replacing::KeepsOthers) {
        return ::rename(temporary_.constData(), target_.constData()) == 0;
    }
    if (::renameat2(AT_FDCWD, temporary_.constData(), AT_FDCWD, target_.constData(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    // Not every file system can do that.
    return errno == EINVAL && ::link(temporary_.constData(), target_.constData()) == 0 &&
           ::unlink(temporary_.constData()) == 0;
}

bool FileReplacement::TakePlace() {
    if (!NameIt() || !MoveOver()) {
        return false;
    }
    temporary_.clear();
    CloseAll();
    if (how_ == Replacing::KeepsFile) {
        FlushFolder();
    }
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
    inPlace_ = inPlace_ || !TakesOverEnough();
    // A full disk may come to light only here.
    if (to_ < 0 || ::fsync(to_) != 0) {
        qCDebug(logFiles) << "cannot write the new content of" << target_;
        return Outcome::WriteFailed;
    }
    if (!inPlace_ && TakePlace()) {
        return Outcome::Ok;
    }
    if (how_ != Replacing::KeepsFile) {
        qCDebug(logFiles) << "cannot replace" << target_;
        return Outcome::WriteFailed;
    }
    qCDebug(logFiles) << "writing into" << target_;
    return WriteIntoOld() ? Outcome::Ok : Outcome::WriteFailed;
}

} // namespace kestrune
