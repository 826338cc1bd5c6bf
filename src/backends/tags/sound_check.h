// Whether two files hold the same sound.
#pragma once

#include <QString>
#include <QtGlobal>

namespace kestrune {

// False if libavformat finds sound in the old file and other coded sound, or none, in the new one, within the
// first `mostBytes` of it. Any thread.
bool HoldsSameSound(const QString& oldPath, const QString& newPath, qint64 mostBytes);

// False if the files differ in anything but APE and ID3v1 tags at their ends.
bool DiffersOnlyInTagsBehind(const QString& oldPath, const QString& newPath);

// False for a file of Monkey's Audio that was cut: a tag would stand where the rest of the sound is missing.
bool HoldsWholeMonkeysSound(const QString& path);

} // namespace kestrune
