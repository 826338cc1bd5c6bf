#include "playlist/playlist_rows.h"

#include "playlist/playlist_text.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double largestMegabytes = 1e9;
// Up to this many appended rows are put in place one by one; more are sorted with the rest.
constexpr int fewRows = 4;

QString IndexKey(const QString& text) {
    const qsizetype point = text.indexOf(u'.');
    const auto number = RoundHalfEven(Val(point < 0 ? text : text.left(point)));
    return QStringLiteral("%1").arg(number, 3, 10, QChar(u'0'));
}

} // namespace

const QString& PlaylistRows::Field(int row, RowField field) const {
    static const QString none;
    return Has(row) ? At(row).row.fields[field] : none;
}

QString PlaylistRows::FullPath(int row) const {
    return Field(row, SubFolder) + Field(row, SubFileName);
}

QString PlaylistRows::Title(int row) const {
    return KillTitleHead(Field(row, RowText));
}

PlaylistRow PlaylistRows::Row(int row) const {
    return Has(row) ? At(row).row : PlaylistRow{};
}

void PlaylistRows::SetField(int row, RowField field, const QString& value) {
    if (!Has(row)) {
        return;
    }
    Entry& entry = At(row);
    CountIn(entry, -1);
    entry.row.fields[field] = value;
    Measure(entry);
    CountIn(entry, 1);
    if (field == RowText || field == SubSortKey) {
        inIndexOrder_ = 0;
    }
    RowChanged(row);
}

void PlaylistRows::SetRow(int row, const PlaylistRow& value) {
    if (!Has(row)) {
        return;
    }
    Entry& entry = At(row);
    CountIn(entry, -1);
    boldCount_ += static_cast<int>(value.bold) - static_cast<int>(entry.row.bold);
    entry.row = value;
    Measure(entry);
    CountIn(entry, 1);
    inIndexOrder_ = 0;
    RowChanged(row);
}

int PlaylistRows::Append(PlaylistRow row) {
    auto entry = std::make_unique<Entry>();
    entry->row = std::move(row);
    Measure(*entry);
    beginInsertRows({}, Count(), Count());
    CountIn(*entry, 1);
    boldCount_ += static_cast<int>(entry->row.bold);
    rows_.push_back(std::move(entry));
    endInsertRows();
    return Count();
}

void PlaylistRows::Remove(int row) {
    if (!Has(row)) {
        return;
    }
    beginRemoveRows({}, row - 1, row - 1);
    CountIn(At(row), -1);
    boldCount_ -= static_cast<int>(At(row).row.bold);
    rows_.erase(rows_.begin() + (row - 1));
    if (row <= inIndexOrder_) {
        --inIndexOrder_;
    }
    endRemoveRows();
}

void PlaylistRows::RemoveSelected() {
    const auto isSelected = [](const EntryPtr& entry) { return entry->row.selected; };
    const auto first = std::find_if(rows_.begin(), rows_.end(), isSelected);
    if (first == rows_.end()) {
        return;
    }
    // One block goes as such, so that a view can follow it; scattered rows would each move all rows behind.
    const auto firstRow = static_cast<int>(first - rows_.begin());
    const auto blockEnd = std::find_if_not(first, rows_.end(), isSelected);
    const bool isBlock = static_cast<int>(blockEnd - first) == selected_.rows;
    if (isBlock) {
        beginRemoveRows({}, firstRow, firstRow + selected_.rows - 1);
    } else {
        beginResetModel();
    }
    const int ordered = inIndexOrder_;
    for (int row = firstRow + 1; row <= Count(); ++row) {
        if (IsSelected(row)) {
            CountIn(At(row), -1);
            boldCount_ -= static_cast<int>(At(row).row.bold);
            inIndexOrder_ -= static_cast<int>(row <= ordered);
        }
    }
    rows_.erase(std::remove_if(first, rows_.end(), isSelected), rows_.end());
    if (isBlock) {
        endRemoveRows();
    } else {
        endResetModel();
    }
}

void PlaylistRows::Renumber() {
    const HeldChanges held(*this);
    for (int row = 1; row <= Count(); ++row) {
        QString& text = At(row).row.fields[RowText];
        QString numbered = QString::number(row) + u'.' + KillTitleHead(text);
        if (numbered != text) {
            text = std::move(numbered);
            inIndexOrder_ = 0;
            RowChanged(row);
        }
    }
}

void PlaylistRows::Clear() {
    beginResetModel();
    rows_.clear();
    total_ = {};
    selected_ = {};
    boldCount_ = 0;
    inIndexOrder_ = 0;
    endResetModel();
}

bool PlaylistRows::IsSelected(int row) const {
    return Has(row) && At(row).row.selected;
}

void PlaylistRows::SetSelected(int row, bool selected) {
    if (!Has(row) || At(row).row.selected == selected) {
        return;
    }
    Entry& entry = At(row);
    CountIn(entry, -1);
    entry.row.selected = selected;
    CountIn(entry, 1);
    RowChanged(row);
}

void PlaylistRows::SelectOnly(int first, int last) {
    const HeldChanges held(*this);
    for (int row = 1; row <= Count(); ++row) {
        SetSelected(row, row >= first && row <= last);
    }
}

bool PlaylistRows::IsBold(int row) const {
    return Has(row) && At(row).row.bold;
}

void PlaylistRows::SetBold(int row, bool bold) {
    if (!Has(row) || At(row).row.bold == bold) {
        return;
    }
    At(row).row.bold = bold;
    boldCount_ += bold ? 1 : -1;
    RowChanged(row);
}

void PlaylistRows::ClearAllBold() {
    const HeldChanges held(*this);
    for (int row = 1; boldCount_ > 0 && row <= Count(); ++row) {
        SetBold(row, false);
    }
}

void PlaylistRows::SortBy(RowField field) {
    isSorted_ = true;
    sortField_ = field;
    inIndexOrder_ = 0;
    Sort();
}

void PlaylistRows::SetAscending(bool ascending) {
    if (ascending_ == ascending) {
        return;
    }
    ascending_ = ascending;
    if (isSorted_) {
        const int known = inIndexOrder_;
        Sort();
        inIndexOrder_ = known == Count() ? known : 0;
    }
}

void PlaylistRows::SortByIndex() {
    const bool isClean = isSorted_ && sortField_ == SubSortKey && inIndexOrder_ > 0;
    if (isClean && Count() - inIndexOrder_ <= fewRows) {
        PlaceAppended();
        return;
    }
    for (const EntryPtr& entry : rows_) {
        entry->row.fields[SubSortKey] = IndexKey(entry->row.fields[RowText]);
    }
    isSorted_ = true;
    sortField_ = SubSortKey;
    Sort();
    inIndexOrder_ = Count();
}

// Puts the rows behind the ordered ones into their place, as a stable sort would.
void PlaylistRows::PlaceAppended() {
    while (inIndexOrder_ < Count()) {
        const int from = inIndexOrder_;
        Entry& entry = *rows_[static_cast<size_t>(from)];
        entry.row.fields[SubSortKey] = IndexKey(entry.row.fields[RowText]);
        const auto comesBefore = [this](const EntryPtr& left, const EntryPtr& right) {
            const int order = QString::compare(left->row.fields[SubSortKey], right->row.fields[SubSortKey]);
            return ascending_ ? order < 0 : order > 0;
        };
        const auto end = rows_.begin() + from;
        const auto place = std::upper_bound(rows_.begin(), end, *end, comesBefore);
        const auto to = static_cast<int>(place - rows_.begin());
        if (to != from) {
            beginMoveRows({}, from, from, {}, to);
            std::rotate(place, end, end + 1);
            endMoveRows();
        }
        ++inIndexOrder_;
    }
}

void PlaylistRows::Sort() {
    struct Keyed {
        QString key;
        EntryPtr entry;
    };
    emit layoutAboutToBeChanged();
    std::vector<Keyed> keyed;
    keyed.reserve(rows_.size());
    for (EntryPtr& entry : rows_) {
        QString key = entry->row.fields[sortField_].toCaseFolded();
        keyed.push_back({std::move(key), std::move(entry)});
    }
    std::stable_sort(keyed.begin(), keyed.end(), [this](const Keyed& left, const Keyed& right) {
        return ascending_ ? left.key < right.key : right.key < left.key;
    });
    std::transform(keyed.begin(), keyed.end(), rows_.begin(),
                   [](Keyed& item) { return std::move(item.entry); });
    emit layoutChanged();
}

// A field that does not read as a number counts as nothing.
void PlaylistRows::Measure(Entry& entry) {
    const double megabytes = std::min(Val(entry.row.fields[SubSize]), largestMegabytes);
    entry.milliMegabytes = std::llround(megabytes * 1000);
    const QString& time = entry.row.fields[SubTime];
    const qsizetype colon = time.indexOf(u':');
    const double minutes = colon < 0 ? 0 : std::min(Val(time.left(colon)), largestMegabytes);
    entry.seconds = static_cast<qint64>(minutes) * 60 + static_cast<qint64>(Val(time.right(2)));
}

void PlaylistRows::Count(PlaylistSums& sums, const Entry& entry, int sign) {
    sums.seconds += sign * entry.seconds;
    sums.milliMegabytes += sign * entry.milliMegabytes;
    sums.rows += sign;
}

void PlaylistRows::CountIn(const Entry& entry, int sign) {
    Count(total_, entry, sign);
    if (entry.row.selected) {
        Count(selected_, entry, sign);
    }
}

void PlaylistRows::RowChanged(int row) {
    if (heldDepth_ > 0) {
        heldFirst_ = heldFirst_ == 0 ? row : std::min(heldFirst_, row);
        heldLast_ = std::max(heldLast_, row);
        return;
    }
    emit dataChanged(index(row - 1, 0), index(row - 1, RowFieldCount - 1));
}

void PlaylistRows::ReleaseChanges() {
    --heldDepth_;
    if (heldDepth_ > 0 || heldFirst_ == 0) {
        return;
    }
    const QModelIndex first = index(heldFirst_ - 1, 0);
    const QModelIndex last = index(heldLast_ - 1, RowFieldCount - 1);
    heldFirst_ = 0;
    heldLast_ = 0;
    emit dataChanged(first, last);
}

int PlaylistRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

int PlaylistRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(RowFieldCount);
}

QVariant PlaylistRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !Has(index.row() + 1)) {
        return {};
    }
    const PlaylistRow& row = At(index.row() + 1).row;
    switch (role) {
    case Qt::DisplayRole:
        return row.fields[static_cast<size_t>(index.column())];
    case Qt::ToolTipRole:
        return row.fields[SubFormats];
    case SelectedRole:
        return row.selected;
    case BoldRole:
        return row.bold;
    default:
        return {};
    }
}

} // namespace kestrune
