#include "backends/tags/riff_info.h"

#include "backends/tags/genre_names.h"
#include "backends/tags/tag_changes.h"

#include <algorithm>
#include <array>
#include <limits>

namespace kestrune {

namespace {

// Names that a field has; the first is the one that new items get, the others are read too.
using Names = std::array<const char*, 3>;

constexpr Names titleItem{"INAM"};
constexpr Names artistItem{"IART"};
constexpr Names albumItem{"IPRD"};
constexpr Names commentItem{"ICMT"};
constexpr Names copyrightItem{"ICOP"};
constexpr Names genreItem{"IGNR"};
constexpr Names yearItem{"ICRD"};
constexpr Names trackItem{"IPRT", "ITRK"};
constexpr Names encodedByItem{"IENC", "ITCH"};
constexpr Names composerItem{"IMUS"};
constexpr Names originalArtistItem{"IOAR"};
constexpr Names linkItem{"IBSU", "IURL"};

// By the order of the names, then of the items; -1 if there is none. Items without text do not count.
qsizetype IndexOf(const RiffList& info, const Names& names) {
    for (const char* name : names) {
        for (qsizetype at = 0; name != nullptr && at < info.items.size(); ++at) {
            if (info.items[at].id == name && !ItemText(info.items[at].content).isEmpty()) {
                return at;
            }
        }
    }
    return -1;
}

QString TextOf(const RiffList& info, const Names& names) {
    const qsizetype at = IndexOf(info, names);
    return at < 0 ? QString() : ItemText(info.items[at].content);
}

// The digits at the start; dates begin with the year, tracks may be followed by their number.
int LeadingNumber(const QString& text) {
    const QString trimmed = text.trimmed();
    qsizetype digits = 0;
    while (digits < trimmed.size() && digits < 5 && trimmed[digits] >= u'0' && trimmed[digits] <= u'9') {
        ++digits;
    }
    return trimmed.left(digits).toInt();
}

qint16 TrackOf(const RiffList& info) {
    const int number = LeadingNumber(TextOf(info, trackItem));
    return number <= std::numeric_limits<qint16>::max() ? static_cast<qint16>(number) : qint16(0);
}

// The item that told the field changes; others that stand for it too go, since they would tell the old one.
void SetText(RiffList& info, const Names& names, const QString& text) {
    const qsizetype told = IndexOf(info, names);
    if (!text.isEmpty()) {
        if (told >= 0) {
            info.items[told].content = TextBytes(text);
        } else {
            RiffItem item;
            item.id = names.front();
            item.content = TextBytes(text);
            info.items.append(item);
        }
    }
    const auto standsForIt = [&names](const RiffItem& item) {
        return std::any_of(names.begin(), names.end(),
                           [&item](const char* name) { return name != nullptr && item.id == name; });
    };
    const qsizetype kept = text.isEmpty() ? -1 : told >= 0 ? told : info.items.size() - 1;
    for (qsizetype at = info.items.size() - 1; at >= 0; --at) {
        if (at != kept && standsForIt(info.items[at])) {
            info.items.removeAt(at);
        }
    }
}

} // namespace

TagFields InfoFields(const RiffList& info) {
    TagFields fields;
    fields.title = TextOf(info, titleItem);
    fields.artist = TextOf(info, artistItem);
    fields.album = TextOf(info, albumItem);
    fields.comment = TextOf(info, commentItem);
    fields.copyright = TextOf(info, copyrightItem);
    fields.genreText = TextOf(info, genreItem);
    fields.genre = GenreOfText(fields.genreText);
    fields.year = LeadingNumber(TextOf(info, yearItem));
    fields.track = TrackOf(info);
    fields.url = TextOf(info, linkItem);
    fields.encodedBy = TextOf(info, encodedByItem);
    fields.composer = TextOf(info, composerItem);
    fields.originalArtist = TextOf(info, originalArtistItem);
    return fields;
}

void EditInfo(RiffList& info, const TagFields& from, const TagFields& to) {
    const auto setText = [&](const Names& names, QString TagFields::*field) {
        if (from.*field != to.*field) {
            SetText(info, names, to.*field);
        }
    };
    setText(titleItem, &TagFields::title);
    setText(artistItem, &TagFields::artist);
    setText(albumItem, &TagFields::album);
    setText(commentItem, &TagFields::comment);
    setText(copyrightItem, &TagFields::copyright);
    setText(linkItem, &TagFields::url);
    setText(encodedByItem, &TagFields::encodedBy);
    setText(composerItem, &TagFields::composer);
    setText(originalArtistItem, &TagFields::originalArtist);
    if (GenreAsText(from) != GenreAsText(to)) {
        SetText(info, genreItem, GenreAsText(to));
    }
    if (from.year != to.year) {
        SetText(info, yearItem, YearAsText(to.year));
    }
    if (from.track != to.track) {
        SetText(info, trackItem, TrackAsText(to.track, TextOf(info, trackItem)));
    }
}

} // namespace kestrune
