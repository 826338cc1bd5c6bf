// What lies in a folder, hidden files and folders too.
#pragma once

#include <QDir>
#include <QStringList>

namespace kestrune::convert {

inline QStringList AllEntries(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

} // namespace kestrune::convert
