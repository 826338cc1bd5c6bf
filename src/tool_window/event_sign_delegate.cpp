#include "tool_window/event_sign_delegate.h"

#include "tool_window/event_log.h"

namespace kestrune {

EventSignDelegate::EventSignDelegate(QList<QIcon> signs, QObject* parent)
    : QStyledItemDelegate(parent), signs_(std::move(signs)) {}

void EventSignDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->icon = signs_.value(index.data(EventLog::IconRole).toInt() - 1);
    option->decorationSize = {16, 16};
    option->features |= QStyleOptionViewItem::HasDecoration;
}

} // namespace kestrune
