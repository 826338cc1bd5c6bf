#include "backends/tags/riff_list.h"

#include "app/text_coding.h"

#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

constexpr qsizetype kindBytes = 4;
constexpr qsizetype headBytes = 8;

// Whether an item stands at `at`, or the list ends there.
bool MayGoOn(const QByteArray& content, qsizetype at) {
    if (at + headBytes > content.size()) {
        return at >= content.size();
    }
    const QByteArray id = content.mid(at, 4);
    return std::all_of(id.begin(), id.end(), [](char letter) { return letter >= ' ' && letter <= '~'; }) &&
           qFromLittleEndian<quint32>(content.constData() + at + 4) <= content.size() - at - headBytes;
}

// Some writers leave the padding out, and go on with the next item at once.
bool IsPadded(const QByteArray& content, qsizetype at) {
    return at < content.size() && (content[at] == '\0' || MayGoOn(content, at + 1) || !MayGoOn(content, at));
}

} // namespace

RiffList ParseRiffList(const QByteArray& content) {
    RiffList list;
    list.kind = content.left(kindBytes);
    qsizetype at = kindBytes;
    while (at + headBytes <= content.size()) {
        const qint64 sizeBytes = qFromLittleEndian<quint32>(content.constData() + at + 4);
        if (sizeBytes > content.size() - at - headBytes) {
            break;
        }
        RiffItem item;
        item.begin = at;
        item.id = content.mid(at, 4);
        item.content = content.mid(at + headBytes, sizeBytes);
        at += headBytes + sizeBytes;
        if ((sizeBytes & 1) != 0) {
            item.padding = IsPadded(content, at) ? content.mid(at, 1) : QByteArray();
            at += item.padding.size();
        }
        item.end = at;
        list.items.append(item);
    }
    list.rest = content.mid(at);
    return list;
}

QByteArray RenderRiffList(const RiffList& list) {
    QByteArray content = list.kind;
    for (qsizetype at = 0; at < list.items.size(); ++at) {
        const RiffItem& item = list.items[at];
        QByteArray size(4, Qt::Uninitialized);
        qToLittleEndian(static_cast<quint32>(item.content.size()), size.data());
        content += item.id + size + item.content;
        if ((item.content.size() & 1) != 0) {
            // Where the padding was left out it stays so only in front of the item that was there.
            const bool last = at + 1 == list.items.size();
            const bool followed = last ? list.rest.isEmpty() : list.items[at + 1].begin == item.end;
            content += item.padding.isEmpty() && !followed ? QByteArray(1, '\0') : item.padding;
        }
    }
    return content + list.rest;
}

QString ItemText(const QByteArray& content, qsizetype at) {
    const QByteArray bytes = content.mid(at);
    const qsizetype end = bytes.indexOf('\0');
    return DecodeText(end < 0 ? bytes : bytes.left(end));
}

QByteArray TextBytes(const QString& text) {
    return EncodeText(text) + '\0';
}

} // namespace kestrune
