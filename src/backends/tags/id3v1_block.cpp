#include "backends/tags/id3v1_block.h"

#include "backends/tags/genre_names.h"

#include <QStringConverter>

#include <array>

namespace kestrune {

namespace {

// Where Windows-1252 differs from Latin-1: the bytes 0x80 to 0x9F. The five it does not use stand for
// themselves.
constexpr std::array<char16_t, 32> windows1252Upper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString FromWindows1252(const QByteArray& bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& character : text) {
        if (character.unicode() >= 0x80 && character.unicode() <= 0x9F) {
            character = QChar(windows1252Upper[character.unicode() - 0x80U]);
        }
    }
    return text;
}

QString Field(const QByteArray& block, int at, int width) {
    QByteArray bytes = block.mid(at, width);
    const qsizetype end = bytes.indexOf('\0');
    if (end >= 0) {
        bytes.truncate(end);
    }
    while (bytes.endsWith(' ')) {
        bytes.chop(1);
    }
    return TextOfBytes(bytes);
}

} // namespace

QString TextOfBytes(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? FromWindows1252(bytes) : text;
}

std::optional<TagFields> ParseId3v1(const QByteArray& block) {
    if (block.size() != id3v1Bytes || !block.startsWith("TAG")) {
        return std::nullopt;
    }
    TagFields fields;
    fields.title = Field(block, 3, 30);
    fields.artist = Field(block, 33, 30);
    fields.album = Field(block, 63, 30);
    fields.year = Field(block, 93, 4).toInt();
    // Version 1.1 took the last two bytes of the comment: a zero, then the track.
    const bool hasTrack = block[125] == '\0' && block[126] != '\0';
    fields.comment = Field(block, 97, hasTrack ? 28 : 30);
    fields.track = hasTrack ? static_cast<unsigned char>(block[126]) : qint16(0);
    const auto genre = static_cast<unsigned char>(block[127]);
    fields.genre = genre < genreCount ? genre : noGenre;
    return fields;
}

} // namespace kestrune
