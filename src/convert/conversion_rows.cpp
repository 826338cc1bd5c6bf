#include "convert/conversion_rows.h"

#include "playlist/playlist_text.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <iterator>
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

qint16 ConversionRows::CheckedCount() const {
    return static_cast<qint16>(std::min<int>(CountChecked(), std::numeric_limits<qint16>::max()));
}

void ConversionRows::Append(std::vector<ConversionRow> rows) {
    if (rows.empty()) {
        return;
    }
    beginInsertRows({}, Count(), Count() + static_cast<int>(rows.size()) - 1);
    std::move(rows.begin(), rows.end(), std::back_inserter(rows_));
    endInsertRows();
}

void ConversionRows::Replace(std::vector<ConversionRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int ConversionRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(ConversionColumnCount);
}

QString ConversionRows::CellText(int row, int column) const {
    switch (column) {
    case ColumnName:
        return Row(row).name;
    case ColumnLong:
        return Row(row).sizeText;
    default:
        return Row(row).folder;
    }
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
