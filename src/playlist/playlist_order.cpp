#include "playlist/playlist_order.h"

#include "playlist/playlist_text.h"

namespace kestrune {

namespace {

void SetTitleKeys(PlaylistRows& rows) {
    const PlaylistRows::HeldChanges held(rows);
    for (int row = 1; row <= rows.Count(); ++row) {
        rows.SetField(row, SubSortKey, rows.Title(row));
    }
}

} // namespace

void OrderList(PlaylistRows& rows, int index) {
    switch (static_cast<OrderIndex>(index)) {
    case OrderIndex::Index:
        rows.SortByIndex();
        break;
    case OrderIndex::Title:
        SetTitleKeys(rows);
        rows.SortBy(SubSortKey);
        break;
    case OrderIndex::Duration:
        rows.SortBy(SubTime);
        break;
    case OrderIndex::Type:
        rows.SortBy(SubType);
        break;
    case OrderIndex::Size:
        rows.SortBy(SubSize);
        break;
    case OrderIndex::Path:
        rows.SortBy(SubFolder);
        break;
    default:
        break;
    }
    rows.SetAscending(!rows.IsAscending());
}

void RestoreIndexOrder(PlaylistRows& rows) {
    rows.SortByIndex();
}

} // namespace kestrune
