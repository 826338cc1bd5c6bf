#include "app/save_leftovers.h"

#include "app/failure_log.h"

#include <QList>

#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

void RemoveIfUnused(int folder, const char* name) {
    const int file = ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    struct stat facts {};
    if (::fstat(file, &facts) == 0 && S_ISREG(facts.st_mode) && ::flock(file, LOCK_EX | LOCK_NB) == 0 &&
        ::unlinkat(folder, name, 0) == 0) {
        qCDebug(logFiles) << "removed what a killed save left:" << name;
    }
    ::close(file);
}

} // namespace

void MarkAsInUse(int file) {
    ::flock(file, LOCK_EX | LOCK_NB);
}

void RemoveLeftovers(const QByteArray& folder) {
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.constData()));
    while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
        const QByteArrayView name(entry->d_name);
        if (name.startsWith(replacementPrefix) && name.endsWith(replacementSuffix)) {
            RemoveIfUnused(::dirfd(open.get()), entry->d_name);
        }
    }
}

} // namespace kestrune
