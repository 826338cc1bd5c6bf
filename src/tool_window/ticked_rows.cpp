#include "tool_window/ticked_rows.h"

namespace kestrune {

int TickedRows::CountChecked() const {
    int count = 0;
    for (int row = 1; row <= Count(); ++row) {
        count += IsTicked(row) ? 1 : 0;
    }
    return count;
}

void TickedRows::SetChecked(int row, bool checked) {
    if (!Has(row) || IsTicked(row) == checked) {
        return;
    }
    StoreTick(row, checked);
    TicksChanged(row, row);
}

void TickedRows::SetAllChecked(bool checked) {
    if (Count() == 0) {
        return;
    }
    for (int row = 1; row <= Count(); ++row) {
        StoreTick(row, checked);
    }
    TicksChanged(1, Count());
}

void TickedRows::TicksChanged(int firstRow, int lastRow) {
    emit dataChanged(index(firstRow - 1, tickColumn), index(lastRow - 1, tickColumn), {Qt::CheckStateRole});
}

int TickedRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

QVariant TickedRows::data(const QModelIndex& index, int role) const {
    const int row = index.row() + 1;
    if (!index.isValid() || !Has(row)) {
        return {};
    }
    if (role == Qt::CheckStateRole && index.column() == tickColumn) {
        return static_cast<int>(IsTicked(row) ? Qt::Checked : Qt::Unchecked);
    }
    const bool isShown = role == Qt::DisplayRole || (role == Qt::EditRole && IsEditable(row, index.column()));
    return isShown ? CellText(row, index.column()) : QVariant();
}

bool TickedRows::setData(const QModelIndex& index, const QVariant& value, int role) {
    const int row = index.row() + 1;
    if (!index.isValid() || !Has(row)) {
        return false;
    }
    if (role == Qt::CheckStateRole && index.column() == tickColumn) {
        SetChecked(row, value.toInt() == static_cast<int>(Qt::Checked));
        emit RowCheckChanged(row);
        return true;
    }
    if (role != Qt::EditRole || !IsEditable(row, index.column()) ||
        !StoreText(row, index.column(), value.toString())) {
        return false;
    }
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    return true;
}

Qt::ItemFlags TickedRows::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    flags.setFlag(Qt::ItemIsUserCheckable, index.column() == tickColumn);
    flags.setFlag(Qt::ItemIsEditable, Has(index.row() + 1) && IsEditable(index.row() + 1, index.column()));
    return flags;
}

} // namespace kestrune
