#include "app/playlist_columns.h"

#include <algorithm>
#include <numeric>

namespace kestrune {

namespace {

constexpr int fileNameWidth = 200;
constexpr int formatsWidth = 400;

int Sum(const ColumnWidths& widths, size_t first, size_t last) {
    return std::accumulate(widths.begin() + static_cast<std::ptrdiff_t>(first),
                           widths.begin() + static_cast<std::ptrdiff_t>(last) + 1, 0);
}

} // namespace

ColumnWidths WidthsFor(const PlaylistItems& items, const ColumnWidths& current) {
    const auto [title, duration, type, size, path, fileName, formats] = items;
    ColumnWidths widths = current;
    std::copy_n(startColumnWidths.begin(), 5, widths.begin());
    const int oldTotal = Sum(widths, 0, 7);

    for (size_t i = 0; i < items.size(); ++i) {
        if (!items[i]) {
            widths[i] = 0;
        }
    }
    if (fileName) {
        widths[5] = fileNameWidth;
    }
    if (formats) {
        widths[6] = formatsWidth;
    }
    if (Sum(widths, 0, 7) >= oldTotal) {
        return widths;
    }
    if (!title && path) {
        widths[4] = oldTotal - Sum(widths, 0, 3);
    }
    if (title) {
        widths[0] = oldTotal - Sum(widths, 1, 4);
    }
    if (title && path && !duration && !type && !size) {
        const int half = widths[0] / 2;
        widths[0] = half;
        widths[4] = half;
    }
    return widths;
}

} // namespace kestrune
