#include "convert/folder_listing.h"

#include <QDir>
#include <QDirIterator>
#include <algorithm>

namespace kestrune {

QStringList ListFolder(const QString& folder) {
    if (folder.isEmpty()) {
        return {};
    }
    QStringList names = QDir(folder).entryList(QDir::Files, QDir::Unsorted);
    std::sort(names.begin(), names.end(), [](const QString& left, const QString& right) {
        const int order = QString::compare(left, right, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : left < right;
    });
    return names;
}

bool HoldsFiles(const QString& folder) {
    return !folder.isEmpty() && QDirIterator(folder, QDir::Files).hasNext();
}

} // namespace kestrune
