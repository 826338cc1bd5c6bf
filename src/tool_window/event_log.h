// The log of what the converter did, which is never cleared and never stored.
#pragma once

#include "components/clock.h"

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace kestrune {

// Small icons of a line.
enum class EventIcon : int { RunStep = 1, SettingsChange = 2 };

// Columns of viewEvent. The first one shows the icon alone.
enum EventColumn { EventItem = 0, EventTime = 1, EventOperation = 2, EventColumnCount = 3 };

// Time of day as "hh:mm:ss".
QString TimeOfDay(qint64 msSinceMidnight);

// Window thread. The clock must outlive it.
class EventLog : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Roles { IconRole = Qt::UserRole + 1 }; // of the first column: 1 or 2

    explicit EventLog(Clock& clock, QObject* parent = nullptr);

    // A line at the end, with the time of the clock. The view is asked to show it both before and after its
    // texts are there.
    void AddEvent(const QString& text, EventIcon icon);

    int Count() const { return static_cast<int>(lines_.size()); }
    // 1-based; the number must be one of a line.
    const QString& Text(int line) const { return lines_[static_cast<size_t>(line - 1)].text; }
    EventIcon Icon(int line) const { return lines_[static_cast<size_t>(line - 1)].icon; }

    // QAbstractTableModel
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    void RowShown(int line); // 1-based: to be scrolled into view

private:
    struct Line {
        EventIcon icon;
        QString time;
        QString text;
    };
    Clock& clock_;
    std::vector<Line> lines_;
};

} // namespace kestrune
