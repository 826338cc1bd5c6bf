// The content of a LIST chunk: texts of a WAVE file, or what belongs to its cue points.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace kestrune {

struct RiffItem {
    QByteArray id; // four letters
    QByteArray content;
    // The byte behind a content of odd size. Some writers leave it out.
    QByteArray padding = QByteArray(1, '\0');
    qsizetype begin = -1; // where it stood in the list; -1 for a new one
    qsizetype end = -1;   // where the next one stood
};

// What nobody changes is written as it was read.
struct RiffList {
    QByteArray kind; // "INFO", "adtl"
    QList<RiffItem> items;
    QByteArray rest; // what follows the items and is none
};

RiffList ParseRiffList(const QByteArray& content);
QByteArray RenderRiffList(const RiffList& list);

// Text of an item, from `at` on: it ends at the first zero byte. Bytes that are not UTF-8 are taken as
// Windows-1252.
QString ItemText(const QByteArray& content, qsizetype at = 0);
// UTF-8 with a zero byte behind it.
QByteArray TextBytes(const QString& text);

} // namespace kestrune
