#include "backends/tags/riff_cues.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

// An entry: number, place in the playing order, name of the chunk, starts of chunk and block, place in
// samples; four bytes each (Multimedia Programming Interface and Data Specifications 1.0, "cue-points").
constexpr qsizetype entryBytes = 24;
constexpr qsizetype orderAt = 4;
constexpr qsizetype placeAt = 20;
// A stretch: number, length, purpose, then country, language, dialect and code page of two bytes each, text.
constexpr qsizetype stretchTextAt = 20;
constexpr const char* label = "labl";
constexpr const char* note = "note";
constexpr const char* stretch = "ltxt";

quint32 NumberAt(const QByteArray& bytes, qsizetype at) {
    return at + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + at) : 0;
}

void PutNumber(QByteArray& bytes, qsizetype at, quint32 number) {
    qToLittleEndian(number, bytes.data() + at);
}

qint32 Signed(quint32 number) {
    return static_cast<qint32>(std::min<quint32>(number, std::numeric_limits<qint32>::max()));
}

quint32 Unsigned(qint32 number) {
    return static_cast<quint32>(std::max(number, 0));
}

QList<QByteArray> EntriesOf(const QByteArray& content) {
    QList<QByteArray> entries;
    const quint32 told = NumberAt(content, 0);
    for (qsizetype at = 4; at + entryBytes <= content.size() && entries.size() < told; at += entryBytes) {
        entries.append(content.mid(at, entryBytes));
    }
    return entries;
}

bool IsOf(const RiffItem& item, const char* kind, quint32 number) {
    return item.id == kind && item.content.size() >= 4 && NumberAt(item.content, 0) == number;
}

qsizetype IndexOf(const RiffList& texts, const char* kind, quint32 number) {
    for (qsizetype at = 0; at < texts.items.size(); ++at) {
        if (IsOf(texts.items[at], kind, number)) {
            return at;
        }
    }
    return -1;
}

void Remove(RiffList& texts, const char* kind, quint32 number) {
    for (qsizetype at = IndexOf(texts, kind, number); at >= 0; at = IndexOf(texts, kind, number)) {
        texts.items.removeAt(at);
    }
}

CuePoint TextsOf(const RiffList& texts, quint32 number) {
    CuePoint point;
    if (const qsizetype at = IndexOf(texts, label, number); at >= 0) {
        point.label = ItemText(texts.items[at].content, 4);
    }
    if (const qsizetype at = IndexOf(texts, note, number); at >= 0) {
        point.note = ItemText(texts.items[at].content, 4);
    }
    if (const qsizetype at = IndexOf(texts, stretch, number); at >= 0) {
        point.length = Signed(NumberAt(texts.items[at].content, 4));
        point.text = ItemText(texts.items[at].content, stretchTextAt);
    }
    return point;
}

// New labels go behind the others: some programs read no further than to the first item of another kind.
void Put(RiffList& texts, const char* kind, quint32 number, const QByteArray& content) {
    const qsizetype at = IndexOf(texts, kind, number);
    if (at >= 0) {
        texts.items[at].content = content;
    } else {
        qsizetype place = texts.items.size();
        while (QByteArray(kind) == label && place > 0 && texts.items[place - 1].id != label) {
            --place;
        }
        RiffItem item;
        item.id = kind;
        item.content = content;
        texts.items.insert(place, item);
    }
}

void SetText(RiffList& texts, const char* kind, quint32 number, const QString& text) {
    if (text.isEmpty()) {
        Remove(texts, kind, number);
        return;
    }
    QByteArray content(4, '\0');
    PutNumber(content, 0, number);
    Put(texts, kind, number, content + TextBytes(text));
}

void SetStretch(RiffList& texts, quint32 number, const CuePoint& point, bool textChanged) {
    if (point.length <= 0 && point.text.isEmpty()) {
        Remove(texts, stretch, number);
        return;
    }
    const qsizetype at = IndexOf(texts, stretch, number);
    QByteArray content = at >= 0 ? texts.items[at].content : QByteArray(8, '\0') + "rgn ";
    content.append(std::max<qsizetype>(stretchTextAt - content.size(), 0), '\0');
    PutNumber(content, 0, number);
    PutNumber(content, 4, Unsigned(point.length));
    if (textChanged) {
        content.truncate(stretchTextAt);
        content += point.text.isEmpty() ? QByteArray() : TextBytes(point.text);
    }
    Put(texts, stretch, number, content);
}

bool HasNumber(const QList<NumberedCue>& cues, quint32 number) {
    return std::any_of(cues.begin(), cues.end(),
                       [number](const NumberedCue& cue) { return cue.number == number; });
}

} // namespace

QList<NumberedCue> ReadCues(const QByteArray& cueContent, const RiffList& texts) {
    QList<NumberedCue> cues;
    for (const QByteArray& entry : EntriesOf(cueContent)) {
        NumberedCue cue;
        cue.number = NumberAt(entry, 0);
        cue.point = TextsOf(texts, cue.number);
        cue.point.position = Signed(NumberAt(entry, placeAt));
        cues.append(cue);
    }
    return cues;
}

QByteArray ChangedCues(const QByteArray& oldContent, const QList<NumberedCue>& cues) {
    if (cues.isEmpty()) {
        return {};
    }
    QList<QByteArray> old = EntriesOf(oldContent);
    const QByteArray rest = oldContent.mid(4 + old.size() * entryBytes);
    QByteArray content(4, '\0');
    PutNumber(content, 0, static_cast<quint32>(cues.size()));
    for (const NumberedCue& cue : cues) {
        const auto known = std::find_if(old.begin(), old.end(), [&cue](const QByteArray& entry) {
            return NumberAt(entry, 0) == cue.number;
        });
        QByteArray entry = QByteArray(8, '\0') + "data" + QByteArray(12, '\0');
        if (known != old.end()) {
            entry = *known;
            old.erase(known); // broken files have a number twice
        }
        PutNumber(entry, 0, cue.number);
        const quint32 place = NumberAt(entry, placeAt);
        if (Signed(place) != cue.point.position) {
            // Where a file has an order of its own to play its parts in, the place in that stays.
            if (NumberAt(entry, orderAt) == place) {
                PutNumber(entry, orderAt, Unsigned(cue.point.position));
            }
            PutNumber(entry, placeAt, Unsigned(cue.point.position));
        }
        content += entry;
    }
    return content + rest;
}

void EditCueTexts(RiffList& texts, const QList<NumberedCue>& old, const QList<NumberedCue>& cues) {
    for (const NumberedCue& cue : old) {
        if (!HasNumber(cues, cue.number)) {
            for (const char* kind : {label, note, stretch}) {
                Remove(texts, kind, cue.number);
            }
        }
    }
    for (const NumberedCue& cue : cues) {
        const CuePoint told = TextsOf(texts, cue.number);
        if (told.label != cue.point.label) {
            SetText(texts, label, cue.number, cue.point.label);
        }
        if (told.note != cue.point.note) {
            SetText(texts, note, cue.number, cue.point.note);
        }
        if (told.length != cue.point.length || told.text != cue.point.text) {
            SetStretch(texts, cue.number, cue.point, told.text != cue.point.text);
        }
    }
}

} // namespace kestrune
