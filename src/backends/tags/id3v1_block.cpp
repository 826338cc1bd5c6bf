#include "backends/tags/id3v1_block.h"

#include "app/text_coding.h"
#include "backends/tags/genre_names.h"
#include "backends/tags/tag_changes.h"

#include <QList>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrune {

namespace {

constexpr int titleAt = 3;
constexpr int artistAt = 33;
constexpr int albumAt = 63;
constexpr int commentAt = 97;
constexpr int textWidth = 30;
constexpr int shortCommentWidth = 28;
constexpr std::array textFields = {std::pair{titleAt, textWidth}, std::pair{artistAt, textWidth},
                                   std::pair{albumAt, textWidth}, std::pair{commentAt, shortCommentWidth}};

QByteArray FieldBytes(const QByteArray& block, int at, int width) {
    QByteArray bytes = block.mid(at, width);
    const qsizetype end = bytes.indexOf('\0');
    if (end >= 0) {
        bytes.truncate(end);
    }
    while (bytes.endsWith(' ')) {
        bytes.chop(1);
    }
    return bytes;
}

QString Field(const QByteArray& block, int at, int width) {
    return DecodeText(FieldBytes(block, at, width));
}

bool HasLettersBeyondAscii(const QByteArray& bytes) {
    return std::any_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

// Nothing in the block tells its coding, so a changed text is written as the old one was read, one that had
// no letter to tell by as the others of the block.
bool TellsUtf8(const QByteArray& block, const QByteArray& oldText) {
    if (HasLettersBeyondAscii(oldText)) {
        return IsUtf8(oldText);
    }
    for (const auto& [at, width] : textFields) {
        const QByteArray other = FieldBytes(block, at, width);
        if (HasLettersBeyondAscii(other)) {
            return IsUtf8(other);
        }
    }
    return false;
}

QByteArray Coded(const QString& text, int width, bool utf8) {
    if (utf8) {
        return EncodeUpTo(text, width);
    }
    // Composed, since Windows-1252 has letters with accents only so.
    const QByteArray bytes = EncodeWindows1252(text.normalized(QString::NormalizationForm_C)).left(width);
    // Few texts are one in UTF-8 too, and would be read as that.
    return HasLettersBeyondAscii(bytes) && IsUtf8(bytes) ? EncodeUpTo(text, width) : bytes;
}

void PutField(QByteArray& block, int at, int width, const QByteArray& text) {
    block.replace(at, width, text.left(width).leftJustified(width, '\0'));
}

// `old` is the block before any change.
void PutText(QByteArray& block, const QByteArray& old, int at, int width, const QString& to) {
    PutField(block, at, width, Coded(to, width, TellsUtf8(old, FieldBytes(old, at, width))));
}

// The comment of a block with a track is two bytes shorter.
void PutCommentAndTrack(QByteArray& block, const QByteArray& old, const TagFields& from,
                        const TagFields& to) {
    const bool hasTrack = to.track > 0 && to.track < 256;
    if (from.comment != to.comment) {
        PutText(block, old, commentAt, hasTrack ? shortCommentWidth : textWidth, to.comment);
    }
    if (hasTrack && (from.comment != to.comment || from.track != to.track)) {
        block[125] = '\0';
        block[126] = static_cast<char>(to.track);
    } else if (from.comment == to.comment && from.track != to.track) {
        block[125] = '\0';
        block[126] = '\0';
    }
}

bool IsEmpty(const QByteArray& block) {
    const QByteArray told = block.mid(3, id3v1Bytes - 4);
    const bool noText = std::all_of(told.begin(), told.end(), [](char c) { return c == '\0' || c == ' '; });
    return noText && block.back() == '\xFF';
}

} // namespace

std::optional<TagFields> ParseId3v1(const QByteArray& block) {
    if (block.size() != id3v1Bytes || !block.startsWith("TAG")) {
        return std::nullopt;
    }
    TagFields fields;
    fields.title = Field(block, titleAt, textWidth);
    fields.artist = Field(block, artistAt, textWidth);
    fields.album = Field(block, albumAt, textWidth);
    fields.year = Field(block, 93, 4).toInt();
    // Version 1.1 took the last two bytes of the comment: a zero, then the track.
    const bool hasTrack = block[125] == '\0' && block[126] != '\0';
    fields.comment = Field(block, commentAt, hasTrack ? shortCommentWidth : textWidth);
    fields.track = hasTrack ? static_cast<unsigned char>(block[126]) : qint16(0);
    const auto genre = static_cast<unsigned char>(block[127]);
    fields.genre = genre < genreCount ? genre : noGenre;
    return fields;
}

QByteArray RenderId3v1(const QByteArray& oldBlock, const TagFields& to) {
    const std::optional<TagFields> old = ParseId3v1(oldBlock);
    const TagFields from = old.value_or(TagFields());
    QByteArray block = old ? oldBlock : "TAG" + QByteArray(id3v1Bytes - 4, '\0') + '\xFF';
    const QByteArray before = block;
    for (const auto& [at, field] :
         {std::pair{titleAt, &TagFields::title}, std::pair{artistAt, &TagFields::artist},
          std::pair{albumAt, &TagFields::album}}) {
        if (from.*field != to.*field) {
            PutText(block, before, at, textWidth, to.*field);
        }
    }
    if (from.year != to.year) {
        PutField(block, 93, 4, to.year < 10000 ? YearAsText(to.year).toLatin1() : QByteArray());
    }
    PutCommentAndTrack(block, before, from, to);
    if (from.genre != to.genre) {
        block.back() = static_cast<char>(to.genre);
    }
    return block != oldBlock && IsEmpty(block) ? QByteArray() : block;
}

} // namespace kestrune
