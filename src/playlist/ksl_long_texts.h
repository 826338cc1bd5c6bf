// Texts of a native playlist whose bytes are more than their field in the record has, though their characters
// are not. They stand behind the records, where programs that know only those pass over them:
//
//   8 bytes  mark FF "KSLTEXT", at a multiple of 1000
//   for each text, up to the end of the file:
//     2  number of its row, from 1
//     2  number of its field in the record, from 1 (title) to 7 (file name)
//     2  its length in bytes, n
//     2  CRC-16 (ISO 3309) of bytes 0 to 991 of the row's record, followed by the text
//     n  the text, UTF-8, without end mark
//
// A field of the file holds a text if its record is the one that the sum was made with. Pure functions that
// take any bytes; any thread.
#pragma once

#include <QByteArray>
#include <vector>

namespace kestrune {

struct KslLongText {
    int row = 0;   // from 1
    int field = 0; // from 1
    QByteArray utf8;
    quint16 sum = 0;
};

// The sum of a text that belongs to a record of at least 992 bytes.
quint16 KslTextSum(QByteArrayView record, const QByteArray& utf8);

// `at` is where the texts begin: the size of what stands in front of them. Nothing for no texts.
QByteArray EncodeKslLongTexts(const std::vector<KslLongText>& texts, qsizetype at);

// The offset of the mark; the size of the file if there is none. No record stands behind it, whatever the
// count says.
qsizetype FindKslLongTexts(const QByteArray& bytes);

// The texts that stand whole behind a mark at `at`, right or wrong.
std::vector<KslLongText> DecodeKslLongTexts(const QByteArray& bytes, qsizetype at);

} // namespace kestrune
