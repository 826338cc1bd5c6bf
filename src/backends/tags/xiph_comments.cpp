#include "backends/tags/xiph_comments.h"

#include "backends/tags/tag_changes.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

// The first name is for new texts; of the others the first that has one is read and changed.
using Names = std::array<const char*, 4>;

constexpr Names titleNames{"TITLE"};
constexpr Names artistNames{"ARTIST"};
constexpr Names albumNames{"ALBUM"};
constexpr Names commentNames{"DESCRIPTION", "COMMENT"};
constexpr Names genreNames{"GENRE"};
constexpr Names yearNames{"DATE", "YEAR"};
constexpr Names trackNames{"TRACKNUMBER", "TRACKNUM"};
constexpr Names copyrightNames{"COPYRIGHT"};
constexpr Names encodedByNames{"ENCODEDBY", "ENCODED-BY", "ENCODED_BY", "ENCODED BY"};
constexpr Names composerNames{"COMPOSER"};
constexpr Names originalArtistNames{"ORIGINALARTIST", "ORIGINAL ARTIST"};
constexpr Names linkNames{"URL", "WWW", "CONTACT"};

// A length and as many bytes, which `at` is moved behind.
std::optional<QByteArray> TakeBlock(const QByteArray& bytes, qsizetype& at) {
    if (at + 4 > bytes.size()) {
        return std::nullopt;
    }
    const qint64 size = qFromLittleEndian<quint32>(bytes.constData() + at);
    if (size > bytes.size() - at - 4) {
        return std::nullopt;
    }
    const QByteArray block = bytes.mid(at + 4, size);
    at += 4 + size;
    return block;
}

QByteArray Number(qsizetype number) {
    QByteArray bytes(4, Qt::Uninitialized);
    qToLittleEndian(static_cast<quint32>(number), bytes.data());
    return bytes;
}

bool HasName(const QByteArray& entry, const char* name) {
    const qsizetype equals = entry.indexOf('=');
    return name != nullptr && equals >= 0 && entry.left(equals).compare(name, Qt::CaseInsensitive) == 0;
}

qsizetype IndexOf(const XiphComments& comments, const Names& names) {
    for (const char* name : names) {
        for (qsizetype at = 0; at < comments.entries.size(); ++at) {
            if (HasName(comments.entries[at], name) && !comments.entries[at].endsWith('=')) {
                return at;
            }
        }
    }
    return -1;
}

QString TextOf(const XiphComments& comments, const Names& names) {
    const qsizetype at = IndexOf(comments, names);
    return at < 0 ? QString()
                  : QString::fromUtf8(comments.entries[at].mid(comments.entries[at].indexOf('=') + 1));
}

void SetText(XiphComments& comments, const Names& names, const QString& text) {
    const qsizetype told = IndexOf(comments, names);
    qsizetype kept = -1;
    if (!text.isEmpty() && told >= 0) {
        QByteArray& entry = comments.entries[told];
        entry = entry.left(entry.indexOf('=') + 1) + text.toUtf8();
        kept = told;
    } else if (!text.isEmpty()) {
        kept = comments.entries.size();
        comments.entries.append(QByteArray(names.front()) + '=' + text.toUtf8());
    }
    for (qsizetype at = comments.entries.size() - 1; at >= 0; --at) {
        const bool standsForIt = std::any_of(names.begin(), names.end(), [&comments, at](const char* name) {
            return HasName(comments.entries[at], name);
        });
        if (standsForIt && at != kept) {
            comments.entries.removeAt(at);
        }
    }
}

} // namespace

std::optional<XiphComments> ParseXiphComments(const QByteArray& bytes) {
    XiphComments comments;
    qsizetype at = 0;
    const std::optional<QByteArray> vendor = TakeBlock(bytes, at);
    if (!vendor || at + 4 > bytes.size()) {
        return std::nullopt;
    }
    comments.vendor = *vendor;
    const quint32 count = qFromLittleEndian<quint32>(bytes.constData() + at);
    at += 4;
    for (quint32 number = 0; number < count; ++number) {
        const std::optional<QByteArray> entry = TakeBlock(bytes, at);
        if (!entry) {
            return std::nullopt;
        }
        comments.entries.append(*entry);
    }
    comments.rest = bytes.mid(at);
    return comments;
}

QByteArray RenderXiphComments(const XiphComments& comments) {
    QByteArray bytes = Number(comments.vendor.size()) + comments.vendor + Number(comments.entries.size());
    for (const QByteArray& entry : comments.entries) {
        bytes += Number(entry.size()) + entry;
    }
    return bytes + comments.rest;
}

void EditXiphComments(XiphComments& comments, const TagFields& from, const TagFields& to) {
    const auto setText = [&](const Names& names, QString TagFields::*field) {
        if (from.*field != to.*field) {
            SetText(comments, names, to.*field);
        }
    };
    setText(titleNames, &TagFields::title);
    setText(artistNames, &TagFields::artist);
    setText(albumNames, &TagFields::album);
    setText(commentNames, &TagFields::comment);
    setText(copyrightNames, &TagFields::copyright);
    setText(encodedByNames, &TagFields::encodedBy);
    setText(composerNames, &TagFields::composer);
    setText(originalArtistNames, &TagFields::originalArtist);
    setText(linkNames, &TagFields::url);
    if (GenreAsText(from) != GenreAsText(to)) {
        SetText(comments, genreNames, GenreAsText(to));
    }
    if (from.year != to.year) {
        SetText(comments, yearNames, YearAsText(to.year));
    }
    if (from.track != to.track) {
        SetText(comments, trackNames, TrackAsText(to.track, TextOf(comments, trackNames)));
    }
}

} // namespace kestrune
