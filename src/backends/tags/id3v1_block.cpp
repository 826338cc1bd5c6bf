#include "backends/tags/id3v1_block.h"

#include "backends/tags/genre_names.h"
#include "components/text_coding.h"

namespace kestrune {

namespace {

QString Field(const QByteArray& block, int at, int width) {
    QByteArray bytes = block.mid(at, width);
    const qsizetype end = bytes.indexOf('\0');
    if (end >= 0) {
        bytes.truncate(end);
    }
    while (bytes.endsWith(' ')) {
        bytes.chop(1);
    }
    return DecodeText(bytes);
}

} // namespace

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
