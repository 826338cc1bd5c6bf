// Numbers out of what was typed. Pure functions; any thread.
#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

namespace kestrune {

// A text that is a number as a whole: blanks around it, a sign, digits with a point among them, an exponent.
// Halves go to the even whole number. Nothing for any other text, and for a number outside the bounds.
std::optional<qint64> NumberOfText(const QString& text, qint64 smallest, qint64 largest);

// The number that a text begins with, behind blanks; the rest is passed over. Halves go to the even whole
// number. 0 when the text begins with none, and for one that does not fit 32 bits.
qint32 NumberPrefix(const QString& text);

} // namespace kestrune
