#include "tool_window/event_log.h"

namespace kestrune {

QString TimeOfDay(qint64 msSinceMidnight) {
    const qint64 seconds = msSinceMidnight / 1000;
    const auto twoDigits = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')); };
    return twoDigits(seconds / 3600) + u':' + twoDigits(seconds / 60 % 60) + u':' + twoDigits(seconds % 60);
}

EventLog::EventLog(Clock& clock, QObject* parent) : QAbstractTableModel(parent), clock_(clock) {}

void EventLog::AddEvent(const QString& text, EventIcon icon) {
    beginInsertRows({}, Count(), Count());
    lines_.push_back({icon, {}, {}});
    endInsertRows();
    const int line = Count();
    emit RowShown(line);
    lines_.back().time = TimeOfDay(clock_.MsSinceMidnight());
    lines_.back().text = text;
    emit dataChanged(index(line - 1, EventTime), index(line - 1, EventOperation));
    emit RowShown(line);
}

int EventLog::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

int EventLog::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(EventColumnCount);
}

QVariant EventLog::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= Count()) {
        return {};
    }
    const Line& line = lines_[static_cast<size_t>(index.row())];
    if (index.column() == EventItem && role == Qt::AccessibleTextRole) {
        return line.icon == EventIcon::RunStep ? tr("Step") : tr("Setting");
    }
    if (index.column() == EventItem) {
        return role == IconRole ? QVariant(static_cast<int>(line.icon)) : QVariant();
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    return index.column() == EventTime ? line.time : line.text;
}

QVariant EventLog::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case EventTime:
        return tr("Time");
    case EventOperation:
        return tr("Operation");
    default:
        return QString();
    }
}

} // namespace kestrune
