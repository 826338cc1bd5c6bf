#include "app/safe_file.h"

#include "app/failure_log.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace kestrune {

namespace {

enum class Keeping { Failed, Kept, WasThere };

// For places where a file can't have two names. The copy appears whole or not at all, and never in place of
// another file.
Keeping CopyAs(const QString& path, const QString& copyPath) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Keeping::Failed;
    }
    const QByteArray content = file.readAll();
    QTemporaryFile copy(copyPath + QStringLiteral(".XXXXXX"));
    const bool isWritten = content.size() == file.size() && copy.open() &&
                           copy.write(content) == content.size() && copy.flush() &&
                           ::fsync(copy.handle()) == 0;
    if (!isWritten) {
        return Keeping::Failed;
    }
    // Where permissions can't be set, the copy is for its owner alone.
    copy.setPermissions(file.permissions());
    if (!copy.rename(copyPath)) {
        return Keeping::Failed;
    }
    copy.setAutoRemove(false);
    return Keeping::Kept;
}

// A second name for the file as it is now costs no room, and can't overwrite. The file that a link leads to
// is meant, not the link.
Keeping KeepAs(const QString& path, const QString& oldPath) {
    if (::linkat(AT_FDCWD, QFile::encodeName(path).constData(), AT_FDCWD,
                 QFile::encodeName(oldPath).constData(), AT_SYMLINK_FOLLOW) == 0) {
        return Keeping::Kept;
    }
    return errno == EEXIST ? Keeping::WasThere : CopyAs(path, oldPath);
}

} // namespace

QByteArray ReadWholeFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.readAll();
}

bool ReplaceFile(const QString& path, const QByteArray& content) {
    QSaveFile file(path);
    // A commit takes no notice of what fails while it empties the buffer, so that is done before it.
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
        file.commit()) {
        return true;
    }
    qCWarning(logFiles) << "cannot store" << path << file.errorString();
    return false;
}

bool ReplaceKeepingOld(const QString& path, const QByteArray& content) {
    if (QFileInfo(path).size() == 0) {
        return ReplaceFile(path, content);
    }
    const QString oldPath = path + QStringLiteral(".old");
    const Keeping keeping = KeepAs(path, oldPath);
    if (keeping == Keeping::Failed) {
        qCWarning(logFiles) << "cannot keep the old" << path;
        return false;
    }
    const bool isReplaced = ReplaceFile(path, content);
    if (!isReplaced && keeping == Keeping::Kept) {
        QFile::remove(oldPath);
    }
    return isReplaced;
}

} // namespace kestrune
