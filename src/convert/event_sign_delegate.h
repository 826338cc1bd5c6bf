// Draws the sign before each line of the events.
#pragma once

#include <QStyledItemDelegate>

namespace kestrune {

class ConverterPictures;

// For the first column of viewEvent. The pictures must outlive it. Window thread.
class EventSignDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    EventSignDelegate(const ConverterPictures& pictures, QObject* parent);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const ConverterPictures& pictures_;
};

} // namespace kestrune
