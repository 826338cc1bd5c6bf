// Whole files in, whole files out. A stop at any moment leaves the old content or the new, as
// file_replacement.h tells; a link stays a link.
#pragma once

#include <QByteArray>
#include <QString>

namespace kestrune {

// Empty when the file does not exist or cannot be read.
QByteArray ReadWholeFile(const QString& path);

// False when the content could not be stored; an earlier file then stands as it was.
bool ReplaceFile(const QString& path, const QByteArray& content);

// The same, but what an existing file held is kept beside it under its name with ".old" behind it. An earlier
// file of that name is never touched, and nothing is kept then. False when the content could not be stored or
// the old one not kept; the file then stands as it was.
bool ReplaceKeepingOld(const QString& path, const QByteArray& content);

} // namespace kestrune
