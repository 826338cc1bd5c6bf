// The list of what a search found: the page's title, and below it the words around the place.
#pragma once

#include "help/help_search.h"

#include <QListWidget>
#include <QStyledItemDelegate>

namespace kestrune {

enum HelpItemRole { HelpTargetRole = Qt::UserRole, HelpExcerptRole };

// Paints the title in the list's own font and the excerpt muted, in at most two lines.
class HelpHitDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

void FillHelpHits(QListWidget& list, const QList<HelpHit>& hits);

} // namespace kestrune
