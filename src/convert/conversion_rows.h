// The job list. Its rows are the model of ListViewInput; there is no second list.
#pragma once

#include "tool_window/ticked_rows.h"

#include <QString>
#include <vector>

namespace kestrune {

// Columns of ListViewInput. The last one holds a folder; its caption is one of another list.
enum ConversionColumn { ColumnName = 0, ColumnLong = 1, ColumnPlaylistIndex = 2, ConversionColumnCount = 3 };

struct ConversionRow {
    QString name;     // with extension, without folder
    QString sizeText; // see SizeText
    QString folder;   // with or without a separator at its end, as it was given
    bool checked = false;
};

// Whole kilobytes of a length in bytes, remainder dropped, with " KB" and blanks on the left up to 11
// characters. A length of 0 has a zero; one below a kilobyte has no digit at all.
QString SizeText(qint64 bytes);
// The same for a file, which is opened to see whether it can be read: a file that cannot, and what is no
// file, counts as empty.
QString FileSizeText(const QString& path);

// Row numbers are 1-based, as in TickedRows; a reader gives an empty text for a row that there is not. Window
// thread.
class ConversionRows : public TickedRows {
    Q_OBJECT
public:
    using TickedRows::TickedRows;

    int Count() const override { return static_cast<int>(rows_.size()); }
    const ConversionRow& Row(int row) const;
    // The file of a row: its folder, a separator if that has none, its name.
    QString FullPath(int row) const;
    // Checked rows, up to the largest count that 16 bits hold.
    qint16 CheckedCount() const;

    void Append(std::vector<ConversionRow> rows);
    void Replace(std::vector<ConversionRow> rows);
    void Clear() { Replace({}); }

    // QAbstractTableModel
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

protected:
    bool IsTicked(int row) const override { return Row(row).checked; }
    void StoreTick(int row, bool ticked) override { rows_[static_cast<size_t>(row - 1)].checked = ticked; }
    QString CellText(int row, int column) const override;

private:
    std::vector<ConversionRow> rows_;
};

} // namespace kestrune
