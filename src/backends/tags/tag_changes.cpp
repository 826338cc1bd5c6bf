#include "backends/tags/tag_changes.h"

#include "backends/tags/genre_names.h"

#include <algorithm>

namespace kestrune {

TagFields Settled(const TagFields& from, TagFields to, bool oneGenre) {
    // What nobody changed stays, whatever it is.
    for (QString TagFields::*text :
         {&TagFields::album, &TagFields::artist, &TagFields::comment, &TagFields::copyright,
          &TagFields::title, &TagFields::url, &TagFields::encodedBy, &TagFields::composer,
          &TagFields::genreText, &TagFields::originalArtist}) {
        if (to.*text != from.*text) {
            (to.*text).remove(QChar(u'\0'));
        }
    }
    if (to.year != from.year) {
        to.year = std::max(to.year, 0);
    }
    if (to.track != from.track) {
        to.track = std::max(to.track, qint16(0));
    }
    if (to.genre != from.genre && (to.genre < 0 || to.genre >= genreCount)) {
        to.genre = noGenre;
    }
    const bool numberChanged = to.genre != from.genre;
    const bool textChanged = to.genreText != from.genreText;
    const bool agreed =
        from.genre != noGenre && GenreOfText(from.genreText) == GenreOfText(NameOfGenre(from.genre));
    if (oneGenre && numberChanged && !textChanged && agreed) {
        to.genreText = NameOfGenre(to.genre);
    } else if (oneGenre && textChanged && !numberChanged && (agreed || from.genre == noGenre)) {
        to.genre = GenreOfText(to.genreText);
    }
    return to;
}

QString GenreAsText(const TagFields& fields) {
    return fields.genreText.isEmpty() ? NameOfGenre(fields.genre) : fields.genreText;
}

QString TrackAsText(qint16 track, const QString& stored) {
    if (track <= 0) {
        return {};
    }
    const qsizetype slash = stored.indexOf(QLatin1Char('/'));
    return QString::number(track) + (slash >= 0 ? stored.mid(slash) : QString());
}

QString YearAsText(qint32 year) {
    return year > 0 ? QStringLiteral("%1").arg(year, 4, 10, QLatin1Char('0')) : QString();
}

bool SameFields(const TagFields& a, const TagFields& b) {
    return a.album == b.album && a.artist == b.artist && a.comment == b.comment &&
           a.copyright == b.copyright && a.genre == b.genre && a.title == b.title && a.year == b.year &&
           a.url == b.url && a.track == b.track && a.encodedBy == b.encodedBy && a.composer == b.composer &&
           a.genreText == b.genreText && a.originalArtist == b.originalArtist;
}

} // namespace kestrune
