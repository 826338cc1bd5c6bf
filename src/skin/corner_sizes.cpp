#include "skin/corner_sizes.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

int PixelsForTwips(int twips, double twipsPerPixel) {
    return twipsPerPixel > 0 ? static_cast<int>(std::lround(twips / twipsPerPixel)) : 0;
}

std::vector<int> CornerInsets(const QSize& window, const QSize& ellipse) {
    const int height = std::max(0, window.height());
    std::vector<int> insets(static_cast<size_t>(height), 0);
    const double radiusX = std::clamp(ellipse.width(), 0, std::max(0, window.width())) / 2.0;
    const double radiusY = std::clamp(ellipse.height(), 0, height) / 2.0;
    if (radiusX <= 0 || radiusY <= 0) {
        return insets;
    }
    for (int row = 0; row < height; ++row) {
        const double fromEdge = std::min(row, height - 1 - row) + 0.5;
        if (fromEdge >= radiusY) {
            continue;
        }
        const double rise = (radiusY - fromEdge) / radiusY;
        const double cut = radiusX * (1 - std::sqrt(1 - rise * rise));
        insets[static_cast<size_t>(row)] = std::max(0, static_cast<int>(std::ceil(cut - 0.5)));
    }
    return insets;
}

} // namespace kestrune
