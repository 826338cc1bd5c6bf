#include "convert/conversion_rows.h"

#include "playlist/playlist_text.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr int sizeWidth = 11;
constexpr qint64 bytesPerKilobyte = 1024;

// Digits in groups of three parted by commas, and none at all for 0.
QString GroupedDigits(qint64 number) {
    QString digits = number == 0 ? QString() : QString::number(number);
    for (qsizetype place = digits.size() - 3; place > 0; place -= 3) {
        digits.insert(place, u',');
    }
    return digits;
}

} // namespace

QString SizeText(qint64 bytes) {
    const QString digits = bytes <= 0 ? QStringLiteral("0") : GroupedDigits(bytes / bytesPerKilobyte);
    return ConversionRows::tr("%1 KB").arg(digits).rightJustified(sizeWidth, u' ');
}

QString FileSizeText(const QString& path) {
    QFile file(path);
    // To open what is no plain file, such as a pipe, may wait for ever.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return SizeText(0);
    }
    return SizeText(file.size());
}

const ConversionRow& ConversionRows::Row(int row) const {
    static const ConversionRow none;
    return Has(row) ? rows_[static_cast<size_t>(row - 1)] : none;
}

QString ConversionRows::FullPath(int row) const {
    return Has(row) ? WithSeparator(Row(row).folder) + Row(row).name : QString();
}

bool ConversionRows::IsChecked(int row) const {
    return Row(row).checked;
}

qint16 ConversionRows::CheckedCount() const {
    return static_cast<qint16>(std::min<int>(checked_, std::numeric_limits<qint16>::max()));
}

void ConversionRows::SetChecked(int row, bool checked) {
    if (!Has(row) || IsChecked(row) == checked) {
        return;
    }
    rows_[static_cast<size_t>(row - 1)].checked = checked;
    checked_ += checked ? 1 : -1;
    ChecksChanged(row, row);
}

void ConversionRows::SetAllChecked(bool checked) {
    if (rows_.empty()) {
        return;
    }
    for (ConversionRow& row : rows_) {
        row.checked = checked;
    }
    checked_ = checked ? Count() : 0;
    ChecksChanged(1, Count());
}

void ConversionRows::Append(std::vector<ConversionRow> rows) {
    if (rows.empty()) {
        return;
    }
    beginInsertRows({}, Count(), Count() + static_cast<int>(rows.size()) - 1);
    for (ConversionRow& row : rows) {
        checked_ += static_cast<int>(row.checked);
        rows_.push_back(std::move(row));
    }
    endInsertRows();
}

void ConversionRows::Replace(std::vector<ConversionRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    checked_ = static_cast<int>(
        std::count_if(rows_.begin(), rows_.end(), [](const ConversionRow& row) { return row.checked; }));
    endResetModel();
}

void ConversionRows::ChecksChanged(int firstRow, int lastRow) {
    emit dataChanged(index(firstRow - 1, ColumnName), index(lastRow - 1, ColumnName), {Qt::CheckStateRole});
}

int ConversionRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

int ConversionRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(ConversionColumnCount);
}

QVariant ConversionRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !Has(index.row() + 1)) {
        return {};
    }
    const ConversionRow& row = Row(index.row() + 1);
    if (role == Qt::CheckStateRole && index.column() == ColumnName) {
        return static_cast<int>(row.checked ? Qt::Checked : Qt::Unchecked);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case ColumnName:
        return row.name;
    case ColumnLong:
        return row.sizeText;
    default:
        return row.folder;
    }
}

bool ConversionRows::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != ColumnName || !Has(index.row() + 1)) {
        return false;
    }
    const int row = index.row() + 1;
    SetChecked(row, value.toInt() == static_cast<int>(Qt::Checked));
    emit RowCheckChanged(row);
    return true;
}

Qt::ItemFlags ConversionRows::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.column() == ColumnName ? shown | Qt::ItemIsUserCheckable : shown;
}

QVariant ConversionRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case ColumnName:
        return tr("Name");
    case ColumnLong:
        return tr("Long");
    case ColumnPlaylistIndex:
        return tr("PlaylistIndex");
    default:
        return {};
    }
}

} // namespace kestrune
