#include "backends/tags/id3v1_block.h"

#include "app/text_coding.h"
#include "backends/tags/genre_names.h"
#include "backends/tags/tag_changes.h"

#include <QList>

#include <algorithm>

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

QByteArray Latin1(const QString& text) {
    QByteArray bytes;
    // Composed, since Latin-1 has letters with accents only so.
    for (const char32_t letter : text.normalized(QString::NormalizationForm_C).toUcs4()) {
        const bool isControl = letter >= 0x80 && letter < 0xA0; // read as Windows-1252, so not these letters
        bytes.append(letter < 0x100 && !isControl ? static_cast<char>(letter) : '?');
    }
    return bytes;
}

void PutField(QByteArray& block, int at, int width, const QByteArray& text) {
    block.replace(at, width, text.left(width).leftJustified(width, '\0'));
}

void PutText(QByteArray& block, int at, int width, const QString& from, const QString& to) {
    if (from != to) {
        PutField(block, at, width, Latin1(to));
    }
}

// The comment of a block with a track is two bytes shorter.
void PutCommentAndTrack(QByteArray& block, const TagFields& from, const TagFields& to) {
    if (from.comment != to.comment) {
        PutField(block, 97, 28, Latin1(to.comment));
    }
    if (from.comment != to.comment || from.track != to.track) {
        block[125] = '\0';
        block[126] = static_cast<char>(to.track < 256 ? to.track : 0);
    }
}

bool IsEmpty(const QByteArray& block) {
    const QByteArray texts = block.mid(3, id3v1Bytes - 4);
    const bool noText = std::all_of(texts.begin(), texts.end(), [](char c) { return c == '\0' || c == ' '; });
    return noText && block.back() == '\xFF';
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

QByteArray RenderId3v1(const QByteArray& oldBlock, const TagFields& to) {
    const std::optional<TagFields> old = ParseId3v1(oldBlock);
    const TagFields from = old.value_or(TagFields());
    QByteArray block = old ? oldBlock : "TAG" + QByteArray(id3v1Bytes - 4, '\0') + '\xFF';
    PutText(block, 3, 30, from.title, to.title);
    PutText(block, 33, 30, from.artist, to.artist);
    PutText(block, 63, 30, from.album, to.album);
    if (from.year != to.year) {
        PutField(block, 93, 4, to.year < 10000 ? YearAsText(to.year).toLatin1() : QByteArray());
    }
    PutCommentAndTrack(block, from, to);
    if (from.genre != to.genre) {
        block.back() = static_cast<char>(to.genre);
    }
    return block != oldBlock && IsEmpty(block) ? QByteArray() : block;
}

} // namespace kestrune
