// The record of "ConPath.dat": three folders, each a 16-bit length, little-endian, and that many bytes of
// text, one behind the other from the start of the file.
#pragma once

#include <QByteArray>
#include <QString>

namespace kestrune {

// The texts as they lie in the file (text_coding.h), so that a folder that is not changed keeps its bytes.
struct ConPathRecord {
    QByteArray inputFolder;
    QByteArray outputFolder;
    QByteArray ripFolder; // of the ripper; converting leaves it as it was read
};

// Takes any bytes. A text ends at the latest with the file; what lies beyond its end is empty.
ConPathRecord DecodeConPath(const QByteArray& bytes);

// The file's new content. It never gets shorter: old bytes behind the record stay, and are never read. A
// text of more than 65,535 bytes is cut at a whole character.
QByteArray EncodeConPath(const ConPathRecord& record, const QByteArray& oldBytes);

// Where the record lies: in the given folder, found in any spelling of its letters.
QString ConPathFile(const QString& appPath);

} // namespace kestrune
