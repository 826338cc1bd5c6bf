// Draws the sign before each line of the events.
#pragma once

#include <QIcon>
#include <QList>
#include <QStyledItemDelegate>

namespace kestrune {

// For the first column of a view of an EventLog. Window thread.
class EventSignDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    // `signs`: the icon of each number, from 1 on; a line of any other number has none.
    EventSignDelegate(QList<QIcon> signs, QObject* parent);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QList<QIcon> signs_;
};

} // namespace kestrune
