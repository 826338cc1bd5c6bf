#include "program/folder_lock.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

int Open(const QByteArray& path, int flags) {
    constexpr mode_t forAll = 0666;
    // Not blocked by a pipe of that name, and not handed on to programs that are started.
    return ::open(path.constData(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, forAll);
}

// A file that may only be read can be locked too.
int OpenAnyhow(const QByteArray& path) {
    const int file = Open(path, O_RDWR | O_CREAT);
    return file < 0 && (errno == EACCES || errno == EROFS) ? Open(path, O_RDONLY) : file;
}

} // namespace

FolderLock::FolderLock(const QString& folder)
    : folderPath_(QFile::encodeName(folder)), filePath_(folderPath_ + "/kestrune.lock") {}

FolderLock::~FolderLock() {
    // While the folder is locked nobody can have locked a file of this name in between.
    struct stat status {};
    if (lockFile_ >= 0 && folder_ >= 0 && ::fstat(lockFile_, &status) == 0 && S_ISREG(status.st_mode)) {
        ::unlink(filePath_.constData());
    }
    Release();
}

bool FolderLock::TryLock() {
    Release();
    // Earlier versions look at the file alone, and a folder on another machine may not be lockable. But only
    // the folder is the same for all when the file was deleted or can't be opened.
    lockFile_ = OpenAnyhow(filePath_);
    folder_ = Open(folderPath_, O_RDONLY | O_DIRECTORY);
    if (Lock(lockFile_) == Result::Taken || Lock(folder_) == Result::Taken) {
        Release();
        return false;
    }
    TellOwner();
    return true;
}

// Closes the file unless it is locked then.
FolderLock::Result FolderLock::Lock(int& file) {
    if (file < 0) {
        return Result::Impossible;
    }
    int answer = -1;
    do {
        answer = ::flock(file, LOCK_EX | LOCK_NB);
    } while (answer != 0 && errno == EINTR);
    if (answer == 0) {
        return Result::Locked;
    }
    const Result result = errno == EWOULDBLOCK ? Result::Taken : Result::Impossible;
    ::close(file);
    file = -1;
    return result;
}

// For earlier versions, which ask whether this process still runs. Nothing depends on it.
void FolderLock::TellOwner() const {
    if (lockFile_ < 0 || ::ftruncate(lockFile_, 0) != 0) {
        return;
    }
    const QByteArray program =
        QFile::encodeName(QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).fileName());
    const QByteArray text =
        QByteArray::number(::getpid()) + '\n' + program + '\n' + QSysInfo::machineHostName().toUtf8() + '\n';
    [[maybe_unused]] const ssize_t written = ::pwrite(lockFile_, text.constData(), text.size(), 0);
}

void FolderLock::Release() {
    for (int* file : {&lockFile_, &folder_}) {
        if (*file >= 0) {
            ::close(*file);
            *file = -1;
        }
    }
}

} // namespace kestrune
