#include "backends/tags/riff_list.h"

#include "app/text_coding.h"

#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

constexpr qsizetype kindBytes = 4;
constexpr qsizetype headBytes = 8;

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
        item.id = content.mid(at, 4);
        item.content = content.mid(at + headBytes, sizeBytes);
        at += headBytes + sizeBytes;
        if ((sizeBytes & 1) != 0) {
            item.padding = content.mid(at, 1);
            at += item.padding.size();
        }
        list.items.append(item);
    }
    list.rest = content.mid(at);
    return list;
}

QByteArray RenderRiffList(const RiffList& list) {
    QByteArray content = list.kind;
    for (const RiffItem& item : list.items) {
        QByteArray size(4, Qt::Uninitialized);
        qToLittleEndian(static_cast<quint32>(item.content.size()), size.data());
        content += item.id + size + item.content;
        const bool last = &item == &list.items.back() && list.rest.isEmpty();
        if ((item.content.size() & 1) != 0) {
            content += item.padding.isEmpty() && !last ? QByteArray(1, '\0') : item.padding;
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
