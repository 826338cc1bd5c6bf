#include "convert/event_sign_delegate.h"

#include "convert/converter_pictures.h"
#include "convert/event_log.h"

namespace kestrune {

EventSignDelegate::EventSignDelegate(const ConverterPictures& pictures, QObject* parent)
    : QStyledItemDelegate(parent), pictures_(pictures) {}

void EventSignDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->icon = pictures_.EventSign(index.data(EventLog::IconRole).toInt());
    option->decorationSize = {16, 16};
    option->features |= QStyleOptionViewItem::HasDecoration;
}

} // namespace kestrune
