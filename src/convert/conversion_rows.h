// The job list. Its rows are the model of ListViewInput; there is no second list.
#pragma once

#include <QAbstractTableModel>
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

// Row numbers are 1-based in all procedures but those of QAbstractTableModel. A number outside 1 to Count()
// is passed over by the writers; the readers give an empty text or false. Window thread.
//
// The view shows the check boxes by Qt::CheckStateRole of the first column and changes them by setData, which
// alone raises RowCheckChanged: boxes that the program changes do not.
class ConversionRows : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    int Count() const { return static_cast<int>(rows_.size()); }
    const ConversionRow& Row(int row) const;
    // The file of a row: its folder, a separator if that has none, its name.
    QString FullPath(int row) const;
    bool IsChecked(int row) const;
    // Checked rows, up to the largest count that 16 bits hold.
    qint16 CheckedCount() const;

    void SetChecked(int row, bool checked);
    void SetAllChecked(bool checked);
    void Append(std::vector<ConversionRow> rows);
    void Replace(std::vector<ConversionRow> rows);
    void Clear() { Replace({}); }

    // QAbstractTableModel
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    void RowCheckChanged(int row); // by the user

private:
    bool Has(int row) const { return row >= 1 && row <= Count(); }
    void ChecksChanged(int firstRow, int lastRow);

    std::vector<ConversionRow> rows_;
    int checked_ = 0;
};

} // namespace kestrune
