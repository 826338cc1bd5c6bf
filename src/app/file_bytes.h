// Reading and writing of whole stretches by descriptor.
#pragma once

#include <QtGlobal>

namespace kestrune {

// How many bytes came; fewer than `count` at the end of the file or after a failure.
qint64 ReadAt(int file, char* bytes, qint64 count, qint64 position);
// All of them, or false.
bool WriteAt(int file, const char* bytes, qint64 count, qint64 position);
// -1 after a failure.
qint64 FileSize(int file);
// A stretch of one file to the end of the other, whose position is there. The system shares the blocks of
// both or copies inside, where it can.
bool AppendStretch(int from, qint64 offset, qint64 lengthBytes, int to);
// To where the file's position is. All, or false.
bool WriteOn(int file, const char* bytes, qint64 count);

} // namespace kestrune
