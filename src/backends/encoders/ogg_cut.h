// Shortening of Ogg Vorbis files that our own encoder wrote.
#pragma once

#include <QtGlobal>

#include <optional>

class QIODevice;

namespace kestrune {

// Ends the stream behind `frames` sample frames, exactly. Gives the bytes of the file that are left; those
// behind them are to go. Nothing when the pages are not as they should be. The file is open for reading and
// writing.
std::optional<qint64> OggCut(QIODevice& file, qint64 frames);

} // namespace kestrune
