// Text whose digits are all of one width, so that figures in a list stand under each other. The skin's font
// has such digits, but Qt can't ask for them before 6.7.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

namespace kestrune {

// For one font and one paint device. Widths in pixels.
class TabularText {
public:
    // The digits take the cell of this font's widest one; a bolder face is drawn into the same cells.
    explicit TabularText(const QFont& font);

    double Width(const QString& text, const QFont& face) const;
    // The text, or as much of its start as there is room for, with an ellipsis.
    QString Elided(const QString& text, const QFont& face, double room) const;
    // One line in the painter's font and pen, in the middle of the rectangle's height.
    void Draw(QPainter& painter, const QRectF& place, Qt::AlignmentFlag side, const QString& text) const;

private:
    double cell_ = 0;
};

} // namespace kestrune
