// The files of a folder, as a file list box shows them.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace kestrune {

// Names without folders, hidden files and what is no plain file, sorted without regard to case. Empty for a
// folder that does not exist or cannot be read. A folder without a name is none.
QStringList ListFolder(const QString& folder);

// True when ListFolder would find a name; it stops at the first one.
bool HoldsFiles(const QString& folder);

// How a rule lists a folder; a test may give names that lie on no disk.
using FolderLister = std::function<QStringList(const QString& folder)>;

} // namespace kestrune
