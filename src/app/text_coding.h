// The one place that says how text stands in the program's files: UTF-8, with field widths counted in bytes
// and never cut inside a character. Bytes that are not valid UTF-8, as older files and other systems hold
// them, are read as Windows-1252.
#pragma once

#include <QByteArray>
#include <QString>

namespace kestrune {

QByteArray EncodeText(const QString& text);
QString DecodeText(QByteArrayView bytes);
// True for bytes that DecodeText reads as UTF-8 and not as Windows-1252.
bool IsUtf8(QByteArrayView bytes);

// Characters of a text, of which those beyond the first 65,536 of Unicode take two places each.
qsizetype CharacterCount(const QString& text);
// The first `largest` characters, or the whole text.
QString FirstCharacters(const QString& text, qsizetype largest);

// Windows-1252, as DecodeText reads it; other characters become "?".
QByteArray EncodeWindows1252(const QString& text);

// Encoded text, cut at the last whole character that fits.
QByteArray EncodeUpTo(const QString& text, qsizetype largestBytes);

// Encoded text in exactly `width` bytes: cut at the last whole character that fits, or padded with blanks.
QByteArray EncodeField(const QString& text, int width);

// Reads text line by line. A line ends in CR LF, LF or CR; the last one may end with the file. A byte order
// mark at the start is passed over.
class LineReader {
public:
    explicit LineReader(QByteArray bytes);
    bool AtEnd() const { return pos_ >= bytes_.size(); }
    // The next line without its end; empty at the end of the text.
    QString ReadLine();

private:
    QByteArray bytes_;
    qsizetype pos_ = 0;
};

} // namespace kestrune
