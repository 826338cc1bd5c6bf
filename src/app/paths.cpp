#include "app/paths.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace kestrune {

namespace {

QString WithoutSeparator(QString folder) {
    while (folder.size() > 1 && folder.endsWith(pathSeparator)) {
        folder.chop(1);
    }
    return folder;
}

} // namespace

QString FindAppPath(const QString& executableFolder) {
    QString folder = qEnvironmentVariable("KESTRUNE_HOME");
    if (folder.isEmpty()) {
        if (QFileInfo(executableFolder).isWritable()) {
            folder = executableFolder;
        } else {
            folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                     QStringLiteral("/kestrune");
        }
    }
    folder = QDir(folder).absolutePath();
    QDir().mkpath(folder);
    return WithoutSeparator(folder);
}

QString FindConfigDir() {
    return WithoutSeparator(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

QString FindDesktopDir() {
    return WithoutSeparator(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
}

QString FindStartupDir() {
    return FindConfigDir() + QStringLiteral("/autostart");
}

QString OwnFile(const QString& folder, const QString& name) {
    QString exact = folder + pathSeparator + name;
    if (QFileInfo::exists(exact)) {
        return exact;
    }
    const QStringList entries = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    for (const QString& entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0) {
            return folder + pathSeparator + entry;
        }
    }
    return exact;
}

bool FileExists(const QString& path) {
    return QFileInfo(path).isFile();
}

} // namespace kestrune
