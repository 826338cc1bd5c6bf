// Where things lie on this machine.
#pragma once

#include <QString>

namespace kestrune {

inline constexpr QChar pathSeparator = u'/';

// The folder of the program's own files: $KESTRUNE_HOME if it is set, else the executable's folder if it can
// be written, else the program's folder below $XDG_DATA_HOME. It is created if it is missing. Without a
// separator at its end.
QString FindAppPath(const QString& executableFolder);

// $XDG_CONFIG_HOME, and what follows from it.
QString FindConfigDir();
QString FindDesktopDir();
QString FindStartupDir();

// Full path of a file of the program's own. It is found in any spelling of its letters; a file that does not
// exist yet gets the given one.
QString OwnFile(const QString& folder, const QString& name);

// True for an existing file that is not a folder.
bool FileExists(const QString& path);

} // namespace kestrune
