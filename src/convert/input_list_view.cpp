#include "convert/input_list_view.h"

#include "convert/conversion_rows.h"
#include "skin/skin_colours.h"
#include "skin/style_paint.h"
#include "skin/tabular_text.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyledItemDelegate>

namespace kestrune {

namespace {

constexpr int airBesideSize = 5;

QStringList LocalPaths(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

// Sizes end at the right and stand under each other by their digits. The blanks that fill a size up would do
// that where all letters are of one width alone.
class SizeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& given,
               const QModelIndex& index) const override {
        QStyleOptionViewItem option = given;
        initStyleOption(&option, index);
        const QString size = option.text.trimmed();
        option.text.clear();
        const QStyle* style = option.widget->style();
        style->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
        const TabularText digits(option.font);
        QRectF place = option.rect.adjusted(airBesideSize, 0, -airBesideSize, 0);
        // On the line of the other columns, whose texts the style sets to whole pixels.
        if ((option.rect.height() - option.fontMetrics.height()) % 2 != 0) {
            place.translate(0, -0.5);
        }
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->setFont(option.font);
        painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        digits.Draw(*painter, place, Qt::AlignRight, digits.Elided(size, option.font, place.width()));
    }
};

} // namespace

InputListView::InputListView(QWidget* parent) : TickedListView(parent) {
    setItemDelegateForColumn(ColumnLong, new SizeDelegate(this));
    setAcceptDrops(true);
    setDropIndicatorShown(false);
}

void InputListView::ShowTarget(bool shown) {
    if (isTarget_ != shown) {
        isTarget_ = shown;
        viewport()->update();
    }
}

void InputListView::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalPaths(*event->mimeData()).isEmpty()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        ShowTarget(true);
    }
}

void InputListView::dragMoveEvent(QDragMoveEvent* event) {
    if (isTarget_) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void InputListView::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    ShowTarget(false);
}

void InputListView::dropEvent(QDropEvent* event) {
    ShowTarget(false);
    const QStringList paths = LocalPaths(*event->mimeData());
    if (!paths.isEmpty()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        emit FilesDropped(paths);
    }
}

void InputListView::paintEvent(QPaintEvent* event) {
    TickedListView::paintEvent(event);
    QPainter painter(viewport());
    if (model() != nullptr && model()->rowCount() == 0) {
        painter.setPen(colours::textMuted);
        painter.drawText(viewport()->rect(), Qt::AlignCenter,
                         tr("Choose an input folder, or drop files here"));
    }
    if (isTarget_) {
        shapes::FocusRing(painter, viewport()->rect());
    }
}

} // namespace kestrune
