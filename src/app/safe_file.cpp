#include "app/safe_file.h"

#include <QFile>
#include <QLoggingCategory>
#include <QSaveFile>

namespace kestrune {

namespace {
Q_LOGGING_CATEGORY(filesLog, "kestrune.files", QtCriticalMsg)
}

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
    qCWarning(filesLog) << "cannot store" << path << file.errorString();
    return false;
}

} // namespace kestrune
