// Names of files that a save makes beside the file, and what killed saves left of them.
#pragma once

#include <QByteArray>

namespace kestrune {

// Of the hidden names with an ending that no other use has.
inline constexpr const char* replacementPrefix = ".kestrune-";
inline constexpr const char* replacementSuffix = ".saving";

// Marks an open file as one that a living process works on, until it is closed.
void MarkAsInUse(int file);

// Removes files of such names that nobody works on. `folder` ends in "/". What cannot be removed, and all
// files where the file system has no marks, stay.
void RemoveLeftovers(const QByteArray& folder);

} // namespace kestrune
