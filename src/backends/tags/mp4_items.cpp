#include "backends/tags/mp4_items.h"

#include "backends/tags/genre_names.h"
#include "backends/tags/mp4_atoms.h"
#include "backends/tags/tag_changes.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrune {

namespace {

constexpr qint64 markBytes = 4;                        // version and flags, in front of texts
constexpr qint64 dataHeadBytes = 8;                    // kind of the data, and country
constexpr const char* ownersName = "com.apple.iTunes"; // whose names the free items have
constexpr const char* freeMark = "----:";              // in front of these here

constexpr quint32 binaryKind = 0;
constexpr quint32 utf8Kind = 1;

struct Mp4Item {
    QByteArray name;
    QByteArray whole; // with its head
};

struct TextItem {
    QString TagFields::*field;
    const char* name;
};

constexpr std::array textItems = {
    TextItem{&TagFields::title, "\251nam"},     TextItem{&TagFields::artist, "\251ART"},
    TextItem{&TagFields::album, "\251alb"},     TextItem{&TagFields::comment, "\251cmt"},
    TextItem{&TagFields::copyright, "cprt"},    TextItem{&TagFields::composer, "\251wrt"},
    TextItem{&TagFields::encodedBy, "\251too"}, TextItem{&TagFields::originalArtist, "----:ORIGINALARTIST"},
    TextItem{&TagFields::url, "----:URL"},
};

// Content of the first atom of that name inside of an item.
QByteArray Inside(const QByteArray& whole, const char* name) {
    const std::optional<Mp4Atom> item = Mp4AtomHead(whole, whole.size());
    const auto atoms = item ? Mp4AtomsIn(whole, item->Content(), item->End()) : std::nullopt;
    const Mp4Atom* atom = atoms ? FindMp4Atom(*atoms, name) : nullptr;
    return atom == nullptr ? QByteArray() : whole.mid(atom->Content(), atom->sizeBytes - atom->headBytes);
}

// Free items have a name of their own inside.
QByteArray NameOf(const QByteArray& atomName, const QByteArray& whole) {
    if (atomName != "----") {
        return atomName;
    }
    const bool ours = Inside(whole, "mean").mid(markBytes) == ownersName;
    return ours ? freeMark + Inside(whole, "name").mid(markBytes) : QByteArray();
}

struct Mp4Items {
    QList<Mp4Item> all;
    QByteArray rest; // what follows them and is none
};

std::optional<Mp4Items> ItemsIn(const QByteArray& content) {
    const auto atoms = Mp4AtomsIn(content, 0, content.size());
    if (!atoms) {
        return std::nullopt;
    }
    Mp4Items items;
    for (const Mp4Atom& atom : *atoms) {
        const QByteArray whole = content.mid(atom.offset, atom.sizeBytes);
        items.all.append({NameOf(atom.name, whole), whole});
    }
    items.rest = content.mid(atoms->isEmpty() ? 0 : atoms->back().End());
    return items;
}

QByteArray Data(quint32 kind, const QByteArray& value) {
    QByteArray head(dataHeadBytes, '\0');
    qToBigEndian(kind, head.data());
    return RenderMp4Atom("data", head + value);
}

QByteArray RenderedItem(const QByteArray& name, const QByteArray& data) {
    if (!name.startsWith(freeMark)) {
        return RenderMp4Atom(name, data);
    }
    const QByteArray mark(markBytes, '\0');
    return RenderMp4Atom("----", RenderMp4Atom("mean", mark + ownersName) +
                                     RenderMp4Atom("name", mark + name.mid(qstrlen(freeMark))) + data);
}

// The first item of the name gets the data, others of it go; without data all go.
void SetItem(QList<Mp4Item>& items, const QByteArray& name, const QByteArray& data) {
    bool kept = data.isEmpty();
    for (qsizetype at = 0; at < items.size();) {
        if (items[at].name != name) {
            ++at;
        } else if (kept) {
            items.removeAt(at);
        } else {
            items[at++].whole = RenderedItem(name, data);
            kept = true;
        }
    }
    if (!kept) {
        items.append({name, RenderedItem(name, data)});
    }
}

void SetText(QList<Mp4Item>& items, const QByteArray& name, const QString& text) {
    SetItem(items, name, text.isEmpty() ? QByteArray() : Data(utf8Kind, text.toUtf8()));
}

QByteArray StoredValue(const QList<Mp4Item>& items, const char* name) {
    for (const Mp4Item& item : items) {
        if (item.name == name) {
            return Inside(item.whole, "data").mid(dataHeadBytes);
        }
    }
    return {};
}

// Two bytes of the track stand behind two others, and in front of those of the number of tracks.
void SetTrack(QList<Mp4Item>& items, qint16 track) {
    constexpr qsizetype trackAt = 2;
    constexpr qsizetype valueBytes = 8;
    QByteArray value = StoredValue(items, "trkn");
    value.append(std::max<qsizetype>(valueBytes - value.size(), 0), '\0');
    qToBigEndian(static_cast<quint16>(std::max<qint16>(track, 0)), value.data() + trackAt);
    SetItem(items, "trkn", track > 0 ? Data(binaryKind, value) : QByteArray());
}

} // namespace

std::optional<QByteArray> ChangedMp4Items(const QByteArray& content, const TagFields& from,
                                          const TagFields& to) {
    std::optional<Mp4Items> items = ItemsIn(content);
    if (!items) {
        return std::nullopt;
    }
    for (const TextItem& text : textItems) {
        if (from.*text.field != to.*text.field) {
            SetText(items->all, text.name, to.*text.field);
        }
    }
    if (GenreAsText(from) != GenreAsText(to)) {
        SetText(items->all, "\251gen", GenreAsText(to));
        SetItem(items->all, "gnre", {}); // it would go on telling the old one
    }
    if (from.year != to.year) {
        SetText(items->all, "\251day", YearAsText(to.year));
    }
    if (from.track != to.track) {
        SetTrack(items->all, to.track);
    }
    QByteArray changed;
    for (const Mp4Item& item : items->all) {
        changed += item.whole;
    }
    return changed + items->rest;
}

qint16 Mp4GenreNumber(const QByteArray& content) {
    const std::optional<Mp4Items> items = ItemsIn(content);
    const bool hasText = items && !StoredValue(items->all, "\251gen").isEmpty();
    const QByteArray value = items && !hasText ? StoredValue(items->all, "gnre") : QByteArray();
    const int number = value.size() >= 2 ? qFromBigEndian<quint16>(value.constData()) - 1 : -1;
    return number >= 0 && number < genreCount ? static_cast<qint16>(number) : noGenre;
}

} // namespace kestrune
