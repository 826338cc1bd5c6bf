#include "playlist/list_painter.h"

#include "playlist/playlist_look.h"
#include "playlist/playlist_text.h"
#include "skin/skin_colours.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double hoverOpacity = 0.04;
constexpr double frameOpacity = 0.75;
constexpr double dropOpacity = 0.10;
constexpr int textMargin = 3;
constexpr int reflectionHeight = 34;
constexpr int shadowHeight = 7;
constexpr int shadowWidth = 4;
constexpr int barHeight = 2;
constexpr int barMargin = 2;
constexpr int shortestBar = 12;

void PaintShade(QPainter& painter, const QRect& area, QPoint from, QPoint to, const QColor& colour) {
    QLinearGradient shade(from, to);
    shade.setColorAt(0, colour);
    shade.setColorAt(1, look::WithOpacity(colour, 0));
    painter.fillRect(area, shade);
}

// Four filled lines are sharp at every scale; a stroked rectangle is not.
void PaintOutline(QPainter& painter, const QRect& area, const QColor& colour) {
    painter.fillRect(QRect(area.left(), area.top(), area.width(), 1), colour);
    painter.fillRect(QRect(area.left(), area.bottom(), area.width(), 1), colour);
    painter.fillRect(QRect(area.left(), area.top() + 1, 1, area.height() - 2), colour);
    painter.fillRect(QRect(area.right(), area.top() + 1, 1, area.height() - 2), colour);
}

} // namespace

void ListPainter::PaintGlass(const QRect& area) {
    painter_.fillRect(area, look::glass);
    const QRect reflection(area.left(), area.top(), area.width(), reflectionHeight);
    PaintShade(painter_, reflection, reflection.topLeft(), reflection.bottomLeft(),
               look::WithOpacity(Qt::white, 0.035));
}

void ListPainter::PaintRow(const PlaylistRows& rows, int row, const QRect& line, const ColumnWidths& columns,
                           int offset, RowLook look) {
    const bool selected = rows.IsSelected(row);
    const bool bold = rows.IsBold(row);
    if (selected) {
        painter_.fillRect(line, look::WithOpacity(look::accent, colours::selectionStrength));
    }
    if (look.hovered) {
        painter_.fillRect(line, look::WithOpacity(Qt::white, hoverOpacity));
    }
    QFont rowFont = font_;
    rowFont.setBold(bold);
    painter_.setFont(rowFont);
    const QColor playing = selected ? look::accentOnSelection : look::accent;
    int left = line.left() - offset;
    for (size_t column = 0; column < columns.size(); ++column) {
        const int width = columns[column];
        if (width <= textMargin) {
            continue;
        }
        // The gap to the next column is that column's own margin.
        QRect cell(left + textMargin, line.top(), width - textMargin, line.height());
        left += width;
        if (!cell.intersects(line)) {
            continue;
        }
        if (column >= SubFolder) {
            cell.setRight(cell.right() - textMargin);
        }
        QString text = rows.Field(row, static_cast<RowField>(column)).simplified();
        if (column == RowText) {
            painter_.setPen(bold ? playing : look::secondaryText);
            cell.setLeft(PaintNumber(cell, TitleHead(text), rows.Count()));
            text = KillTitleHead(text).trimmed();
        }
        painter_.setPen(bold ? playing : column <= SubTime ? look::text : look::secondaryText);
        if (column == SubTime || column == SubSize) {
            PaintFigures(cell, text);
        } else {
            // The end of a path tells more than its start.
            PaintText(cell, text, column == SubFolder ? Qt::ElideLeft : Qt::ElideRight);
        }
    }
    if (look.focused) {
        PaintOutline(painter_, line, look::WithOpacity(look::accent, frameOpacity));
    }
}

// The number of a row in the width of the list's longest; returns where the title begins.
int ListPainter::PaintNumber(const QRect& cell, const QString& number, int rowCount) {
    constexpr int gap = 3;
    if (number.isEmpty() || cell.width() <= 0) {
        return cell.left();
    }
    const QString longest = QString::number(rowCount) + u'.';
    const QString shown = digits_.Elided(number, painter_.font(), cell.width());
    const double width =
        std::max(digits_.Width(longest, painter_.font()), digits_.Width(shown, painter_.font()));
    digits_.Draw(painter_, QRectF(cell.left(), cell.top(), width, cell.height()), Qt::AlignRight, shown);
    return cell.left() + static_cast<int>(std::ceil(width)) + gap;
}

void ListPainter::PaintText(const QRect& cell, const QString& text, Qt::TextElideMode mode) {
    if (!text.isEmpty() && cell.width() > 0) {
        painter_.drawText(cell, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                          painter_.fontMetrics().elidedText(text, mode, cell.width()));
    }
}

void ListPainter::PaintFigures(const QRect& cell, const QString& text) {
    if (!text.isEmpty() && cell.width() > 0) {
        digits_.Draw(painter_, cell, Qt::AlignLeft, digits_.Elided(text, painter_.font(), cell.width()));
    }
}

void ListPainter::PaintHint(const QRect& area, const QString& hint) {
    painter_.setFont(font_);
    painter_.setPen(look::mutedText);
    painter_.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, hint);
}

void ListPainter::PaintRim(const QRect& area) {
    const QColor shadow = look::WithOpacity(Qt::black, 0.5);
    const QRect top(area.left(), area.top(), area.width(), shadowHeight);
    PaintShade(painter_, top, top.topLeft(), top.bottomLeft(), shadow);
    const QRect left(area.left(), area.top(), shadowWidth, area.height());
    PaintShade(painter_, left, left.topLeft(), left.topRight(), look::WithOpacity(shadow, 0.3));
}

void ListPainter::PaintHorizontalPart(const QRect& area, HorizontalPart part) {
    const int hidden = part.contentWidth - area.width();
    if (hidden <= 0) {
        return;
    }
    const double track = area.width() - 2 * barMargin;
    const double length = std::max<double>(shortestBar, track * area.width() / part.contentWidth);
    const double left = area.left() + barMargin + (track - length) * part.offset / hidden;
    const double top = area.bottom() + 1 - barHeight;
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(look::WithOpacity(Qt::white, 0.08));
    painter_.drawRoundedRect(QRectF(area.left() + barMargin, top, track, barHeight), 1, 1);
    painter_.setBrush(look::accent);
    painter_.drawRoundedRect(QRectF(left, top, length, barHeight), 1, 1);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void ListPainter::PaintFrame(const QRect& area, bool strong) {
    if (strong) {
        painter_.fillRect(area, look::WithOpacity(look::accent, dropOpacity));
    }
    PaintOutline(painter_, area, look::WithOpacity(look::accent, strong ? 1 : frameOpacity));
}

} // namespace kestrune
