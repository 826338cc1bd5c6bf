#include "program/folder_lock.h"

namespace kestrune {

FolderLock::FolderLock(const QString& folder) : file_(folder + QStringLiteral("/kestrune.lock")) {
    file_.setStaleLockTime(0);
}

bool FolderLock::TryLock() {
    return file_.tryLock(0) || file_.error() != QLockFile::LockFailedError;
}

} // namespace kestrune
