#include "app/safe_file.h"

#include "app/failure_log.h"
#include "app/file_replacement.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace kestrune {

namespace {

enum class Keeping { Failed, Kept, WasThere };

bool Put(FileReplacement& replacement, const QByteArray& content) {
    FilePieces pieces;
    pieces.AddBytes(content);
    return replacement.Fill(pieces) == Outcome::Ok && replacement.Commit() == Outcome::Ok;
}

bool Replace(const QString& path, const QByteArray& content, Replacing how) {
    FileReplacement replacement(path, how);
    const bool isThere = QFileInfo::exists(LinksFollowed(path));
    const Outcome begun = isThere ? replacement.Begin() : replacement.BeginNew();
    const bool done = begun == Outcome::Ok && Put(replacement, content);
    if (!done) {
        qCWarning(logFiles) << "cannot store" << path;
    }
    return done;
}

// For places where a file can't have two names. The copy appears whole or not at all.
Keeping CopyAs(const QString& path, const QString& copyPath) {
    QFile file(path);
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    FileReplacement copy(copyPath, Replacing::KeepsOthers);
    constexpr unsigned ownerOnly = 0600;
    if (content.isEmpty() || content.size() != file.size() || copy.BeginNew(ownerOnly) != Outcome::Ok ||
        !Put(copy, content)) {
        return Keeping::Failed;
    }
    // Where permissions can't be set, the copy is for its owner alone.
    QFile::setPermissions(copyPath, file.permissions());
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
    return Replace(path, content, Replacing::KeepsFile);
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
    // The old content has two names now, of which one is to keep it.
    const bool isReplaced = Replace(path, content, Replacing::KeepsName);
    if (!isReplaced && keeping == Keeping::Kept) {
        QFile::remove(oldPath);
    }
    return isReplaced;
}

} // namespace kestrune
