// Sorting the playlist from the menus.
#pragma once

#include "playlist/playlist_rows.h"

namespace kestrune {

enum class OrderIndex { Index = 0, Title = 1, Duration = 2, Type = 3, Size = 4, Path = 5 };

// Sorts by the entry's key, then flips the direction, on every call. All keys are compared as text,
// without regard to case (PlaylistRows::Sort), so that ten minutes come before nine. An index outside 0 to 5
// only flips.
void OrderList(PlaylistRows& rows, int index);

// The same as two calls of OrderList(0): index order in the direction that the list has.
void RestoreIndexOrder(PlaylistRows& rows);

} // namespace kestrune
