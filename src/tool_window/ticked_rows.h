// The model of a list with ticks: rows of several columns, the first of which has a box before its text.
#pragma once

#include <QAbstractTableModel>
#include <QString>

namespace kestrune {

// What a list of its own provides: the rows, the column captions (headerData, columnCount) and the protected
// calls below; it tells of rows that come and go itself (beginInsertRows and so on). Texts that the user may
// edit are optional.
//
// Row numbers are 1-based in all procedures but those of QAbstractTableModel. A number outside 1 to Count()
// is passed over by the writers; the readers give false. TickedListView shows the boxes by Qt::CheckStateRole
// and changes them by setData, which alone raises RowCheckChanged: boxes that the program changes do not.
// Window thread.
class TickedRows : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int tickColumn = 0;

    using QAbstractTableModel::QAbstractTableModel;

    virtual int Count() const = 0;
    bool IsChecked(int row) const { return Has(row) && IsTicked(row); }
    int CountChecked() const;

    void SetChecked(int row, bool checked);
    void SetAllChecked(bool checked);

    // QAbstractTableModel
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    void RowCheckChanged(int row); // by the user

protected:
    bool Has(int row) const { return row >= 1 && row <= Count(); }

    // Of rows that exist alone.
    virtual bool IsTicked(int row) const = 0;
    virtual void StoreTick(int row, bool ticked) = 0;
    virtual QString CellText(int row, int column) const = 0;
    virtual bool IsEditable(int /*row*/, int /*column*/) const { return false; }
    // False when the text is refused.
    virtual bool StoreText(int /*row*/, int /*column*/, const QString& /*text*/) { return false; }

private:
    void TicksChanged(int firstRow, int lastRow);
};

} // namespace kestrune
