// The playlist. Its rows are the model of the list on screen; there is no second list.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <array>
#include <memory>
#include <vector>

namespace kestrune {

// Places of a row's texts. The path of the row's file is SubFolder followed by SubFileName.
enum RowField {
    RowText = 0,     // number, a point, title
    SubTime = 1,     // "mm:ss"
    SubType = 2,     // up to three letters, lower case
    SubSize = 3,     // megabytes with the letter m
    SubFolder = 4,   // ends in a separator
    SubFileName = 5, // with extension
    SubFormats = 6,  // format string, also the row's tool tip
    SubSortKey = 7,  // scratch, never shown
    RowFieldCount = 8
};

struct PlaylistRow {
    std::array<QString, RowFieldCount> fields;
    bool selected = false;
    bool bold = false;
};

// Sums over rows. Megabytes are kept in thousandths, so that adding and taking away leaves no rest.
struct PlaylistSums {
    qint64 seconds = 0;
    qint64 milliMegabytes = 0;
    int rows = 0;
};

// Row numbers are 1-based in all procedures but those of QAbstractTableModel. A number outside 1 to Count()
// is passed over by the writers; the readers give an empty text. Window thread.
//
// The list sorts itself: setting the sort column or the direction sorts at once, as text without regard to
// case, rows with equal keys keeping their order. Rows appended later stand at the end until the next sort.
// Appending to a list in index order and restoring that order costs a search and a move of pointers, not a
// sort.
class PlaylistRows : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Roles { SelectedRole = Qt::UserRole + 1, BoldRole };

    using QAbstractTableModel::QAbstractTableModel;

    int Count() const { return static_cast<int>(rows_.size()); }
    const QString& Field(int row, RowField field) const;
    QString FullPath(int row) const;
    QString Title(int row) const;
    PlaylistRow Row(int row) const;

    void SetField(int row, RowField field, const QString& value);
    void SetRow(int row, const PlaylistRow& value);
    int Append(PlaylistRow row); // returns its number
    void Remove(int row);
    // Removes all selected rows at once.
    void RemoveSelected();
    // Writes each row's own number before its title.
    void Renumber();
    void Clear();

    bool IsSelected(int row) const;
    void SetSelected(int row, bool selected);
    // Selects first to last and nothing else.
    void SelectOnly(int first, int last);
    int SelectedCount() const { return selected_.rows; }
    bool IsBold(int row) const;
    void SetBold(int row, bool bold);
    void ClearAllBold();

    const PlaylistSums& TotalSums() const { return total_; }
    const PlaylistSums& SelectedSums() const { return selected_; }

    // While one of these lives, dataChanged of single rows is held back; at the end of the last one it comes
    // once, for all of them. Rows may not come, go or be sorted in the meantime.
    class HeldChanges {
    public:
        explicit HeldChanges(PlaylistRows& rows) : rows_(rows) { ++rows_.heldDepth_; }
        ~HeldChanges() { rows_.ReleaseChanges(); }
        HeldChanges(const HeldChanges&) = delete;
        HeldChanges& operator=(const HeldChanges&) = delete;

    private:
        PlaylistRows& rows_;
    };

    // Sorts by a field. The keys in SubSortKey are set by the caller before.
    void SortBy(RowField field);
    void SetAscending(bool ascending);
    bool IsAscending() const { return ascending_; }
    // Writes the number before the first point, at least three digits, into every SubSortKey, and sorts by
    // it.
    void SortByIndex();

    // QAbstractTableModel
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct Entry {
        PlaylistRow row;
        qint64 seconds = 0;
        qint64 milliMegabytes = 0;
    };
    using EntryPtr = std::unique_ptr<Entry>;

    bool Has(int row) const { return row >= 1 && row <= Count(); }
    Entry& At(int row) { return *rows_[static_cast<size_t>(row - 1)]; }
    const Entry& At(int row) const { return *rows_[static_cast<size_t>(row - 1)]; }
    static void Measure(Entry& entry);
    static void Count(PlaylistSums& sums, const Entry& entry, int sign);
    void CountIn(const Entry& entry, int sign);
    void Sort();
    void PlaceAppended();
    void RowChanged(int row);
    void ReleaseChanges();

    std::vector<EntryPtr> rows_;
    PlaylistSums total_;
    PlaylistSums selected_;
    int boldCount_ = 0;
    bool isSorted_ = false; // a sort column was chosen
    RowField sortField_ = SubSortKey;
    bool ascending_ = true;
    // Rows 1 to this one hold their index keys and stand in their order; 0 when that is not known.
    int inIndexOrder_ = 0;
    int heldDepth_ = 0;
    int heldFirst_ = 0; // rows whose change is held back; 0 for none
    int heldLast_ = 0;
};

} // namespace kestrune
