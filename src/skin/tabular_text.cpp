#include "skin/tabular_text.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr QChar ellipsis(u'\u2026');

bool IsDigit(QChar letter) {
    return letter >= u'0' && letter <= u'9';
}

// What stands from here up to the next digit; the digit itself if it is one.
QString PieceAt(const QString& text, qsizetype start) {
    qsizetype end = start + 1;
    while (!IsDigit(text[start]) && end < text.size() && !IsDigit(text[end])) {
        ++end;
    }
    return text.mid(start, end - start);
}

} // namespace

TabularText::TabularText(const QFont& font) {
    const QFontMetricsF metrics(font);
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        cell_ = std::max(cell_, metrics.horizontalAdvance(QChar(digit)));
    }
}

double TabularText::Width(const QString& text, const QFont& face) const {
    const QFontMetricsF metrics(face);
    double width = 0;
    for (qsizetype at = 0; at < text.size();) {
        const QString piece = PieceAt(text, at);
        width += IsDigit(piece[0]) ? cell_ : metrics.horizontalAdvance(piece);
        at += piece.size();
    }
    return width;
}

QString TabularText::Elided(const QString& text, const QFont& face, double room) const {
    if (Width(text, face) <= room) {
        return text;
    }
    for (qsizetype length = text.size() - 1; length > 0; --length) {
        QString shorter = text.left(length) + ellipsis;
        if (Width(shorter, face) <= room) {
            return shorter;
        }
    }
    return QString(ellipsis);
}

void TabularText::Draw(QPainter& painter, const QRectF& place, Qt::AlignmentFlag side,
                       const QString& text) const {
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double width = Width(text, painter.font());
    double x = side == Qt::AlignRight ? place.right() - width : place.left();
    const double baseline = place.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    for (qsizetype at = 0; at < text.size();) {
        const QString piece = PieceAt(text, at);
        const double advance = metrics.horizontalAdvance(piece);
        const double taken = IsDigit(piece[0]) ? cell_ : advance;
        painter.drawText(QPointF(x + (taken - advance) / 2, baseline), piece);
        x += taken;
        at += piece.size();
    }
}

} // namespace kestrune
