// Writes a sound as a WAVE file.
#pragma once

#include "sound.h"

#include <QString>

namespace kestrune {

struct PieceTexts {
    QString title;
    QString artist;
    QString album;
};

// 16-bit samples with triangular dither; mono is the mean of both channels. Title, artist and album go into
// the file's list of texts unless all are empty. False if the file could not be written.
bool WriteWave(const QString& path, const Sound& sound, int channels, const PieceTexts& texts);

} // namespace kestrune
