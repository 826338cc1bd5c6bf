// Texts of a playlist row and how they are taken apart. Pure functions; any thread.
#pragma once

#include <QString>

namespace kestrune {

// Behind the first point of a row's text; the whole text when it holds none.
QString KillTitleHead(const QString& text);
// Up to and including the first point of a row's text; empty when it holds none.
QString TitleHead(const QString& text);
// Each character that ends a line or a paragraph as a blank.
QString OneLine(QString text);
// Before the end mark "//"; empty when there is none.
QString KillGang0(const QString& text);
// The same for a folder, whose own last separator may stand before the mark and stays with it. A pair of
// separators at the very end of the text is no mark: the field had no room for the whole of it.
QString KillGang0Folder(const QString& text);

// Leading digits, with a decimal fraction if there is one; 0 for anything else. Blanks before it are passed
// over.
double Val(const QString& text);
// Seconds of "minutes:seconds", or of a number of seconds; halves go to the even second. 0 when the result
// does not fit 16 bits.
qint16 GetMusicSec(const QString& text);
// A number to a whole one, halves to the even one; 0 for one of 16 digits or more.
qint64 RoundHalfEven(double value);

// Behind the last point, lower case; empty without a point.
QString GetFileType(const QString& name);
// A row's type: what follows the first character of the name's four-character ending, lower case.
QString RowType(const QString& name);

// "00:00" style, minutes without a limit.
QString FormatMinutes(qint64 seconds);
// One optional digit on either side of the point, so that 0 gives a lone point and 3 gives "3.".
QString FormatTenths(double value);
// A row's size: megabytes of a count of kilobytes with the letter m, such as "0.5m".
QString FormatSize(qint64 kilobytes);

// Splits at the last separator, which stays with the folder. Without a separator the whole text is the folder
// and the name is empty. The folder always ends in a separator; doubled ones are joined.
void SplitPath(const QString& full, QString& folder, QString& name);
QString WithSeparator(const QString& folder);

} // namespace kestrune
