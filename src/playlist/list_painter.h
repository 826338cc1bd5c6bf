// How the list looks. Paints what it is told and knows no mouse or keys.
#pragma once

#include "app/playlist_columns.h"
#include "playlist/playlist_rows.h"
#include "skin/tabular_text.h"

#include <QFont>
#include <QPainter>
#include <QRect>

namespace kestrune {

struct RowLook {
    bool hovered = false;
    bool focused = false; // has the keyboard's mark
};

// The part of a wider content that is in sight, in pixels.
struct HorizontalPart {
    int offset = 0;
    int contentWidth = 0;
};

// All places are in the pixels of the list's viewport. Window thread.
class ListPainter {
public:
    ListPainter(QPainter& painter, const QFont& font) : painter_(painter), font_(font), digits_(font) {}

    void PaintGlass(const QRect& area);
    void PaintRow(const PlaylistRows& rows, int row, const QRect& line, const ColumnWidths& columns,
                  int offset, RowLook look);
    void PaintHint(const QRect& area, const QString& hint);
    // Lies over the rows, as the rim of the glass does.
    void PaintRim(const QRect& area);
    void PaintHorizontalPart(const QRect& area, HorizontalPart part);
    // A frame in the accent colour; `strong` for a drop that would be taken.
    void PaintFrame(const QRect& area, bool strong);

private:
    int PaintNumber(const QRect& cell, const QString& number, int rowCount);
    void PaintText(const QRect& cell, const QString& text, Qt::TextElideMode mode);
    void PaintFigures(const QRect& cell, const QString& text);

    QPainter& painter_;
    QFont font_;
    TabularText digits_;
};

} // namespace kestrune
