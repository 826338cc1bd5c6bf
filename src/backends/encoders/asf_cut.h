// Shortening of Windows Media files that our own encoder wrote.
#pragma once

#include <QtGlobal>

#include <optional>

class QIODevice;

namespace kestrune {

// Ends the file with the packet of the container in which `frames` sample frames at `rateHz` end; the header
// tells exactly these. Gives the bytes of the file that are left; those behind them are to go. Nothing when
// the file is not as it should be. It is open for reading and writing.
std::optional<qint64> AsfCut(QIODevice& file, qint64 frames, int rateHz);

} // namespace kestrune
