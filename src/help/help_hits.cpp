#include "help/help_hits.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

namespace kestrune {

namespace {

constexpr int margin = 6;
constexpr int excerptLines = 2;
constexpr double mutedOpacity = 0.72;

// Draws at most `lines` lines of the text, the last one elided.
void DrawLines(QPainter& painter, const QRect& place, const QString& text, int lines) {
    const QFontMetrics metrics(painter.font());
    QTextLayout layout(text, painter.font());
    layout.beginLayout();
    int from = 0;
    int top = place.top();
    for (int i = 0; i < lines && from < text.size(); ++i, top += metrics.lineSpacing()) {
        QTextLine line = layout.createLine();
        line.setLineWidth(place.width());
        const bool last = i == lines - 1;
        const QString part = last ? metrics.elidedText(text.mid(from), Qt::ElideRight, place.width())
                                  : text.mid(from, line.textLength());
        painter.drawText(QRect(place.left(), top, place.width(), metrics.lineSpacing()), Qt::AlignLeft, part);
        from += line.textLength();
    }
    layout.endLayout();
}

} // namespace

void HelpHitDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    QStyleOptionViewItem ground(option);
    initStyleOption(&ground, index);
    const QString title = ground.text;
    ground.text.clear();
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);

    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setPen(ground.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    QFont face = option.font;
    face.setWeight(QFont::DemiBold);
    painter->setFont(face);
    const QRect place = option.rect.adjusted(margin, margin, -margin, -margin);
    const int line = QFontMetrics(face).lineSpacing();
    DrawLines(*painter, place, title, 1);
    painter->setFont(option.font);
    painter->setOpacity(mutedOpacity);
    DrawLines(*painter, place.adjusted(0, line + 2, 0, 0), index.data(HelpExcerptRole).toString(),
              excerptLines);
    painter->restore();
}

QSize HelpHitDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    const int line = QFontMetrics(option.font).lineSpacing();
    return {0, (1 + excerptLines) * line + 2 * margin + 2};
}

void FillHelpHits(QListWidget& list, const QList<HelpHit>& hits) {
    list.clear();
    for (const HelpHit& hit : hits) {
        auto* item = new QListWidgetItem(hit.title, &list);
        item->setData(HelpTargetRole, hit.page);
        item->setData(HelpExcerptRole, hit.excerpt);
        item->setData(Qt::AccessibleDescriptionRole, hit.excerpt);
    }
}

} // namespace kestrune
