// The numbered genres of ID3v1 and its extension.
#pragma once

#include <QString>
#include <QtGlobal>

namespace kestrune {

inline constexpr qint16 genreCount = 148;
inline constexpr qint16 noGenre = 255;

// Name of a genre number; empty outside 0 to 147.
QString NameOfGenre(qint16 number);

// Number of a genre name in any case, or of a number as text ("17", "(17)"); noGenre if it is none.
qint16 GenreOfText(const QString& text);

} // namespace kestrune
