#include "playlist/scroll_thumb.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int arrowRowsDown = 8;
constexpr int arrowRowsUp = 1;
constexpr double firstRowGap = 1; // from the upper arrow to the thumb at row 1

double LowestTop(const ThumbGeometry& geometry) {
    return geometry.lowerArrowTop - geometry.thumbHeight;
}

} // namespace

double MoveScrollBar(int firstRow, int rowCount, const ThumbGeometry& geometry) {
    if (rowCount <= rowsInSight) {
        return geometry.upperArrowBottom;
    }
    if (firstRow <= 1) {
        return geometry.upperArrowBottom + firstRowGap;
    }
    if (firstRow + rowsInSight >= rowCount) {
        return LowestTop(geometry);
    }
    const double range = LowestTop(geometry) - geometry.upperArrowBottom;
    return geometry.upperArrowBottom + firstRow * range / (rowCount - rowsInSight);
}

int FirstRowForThumb(double thumbTop, int rowCount, const ThumbGeometry& geometry) {
    const int hiddenRows = rowCount - rowsInSight;
    if (hiddenRows <= 0) {
        return 1;
    }
    const double range = LowestTop(geometry) - geometry.upperArrowBottom;
    const double moved = ThumbInTrack(thumbTop, geometry) - geometry.upperArrowBottom;
    if (moved >= range) {
        return hiddenRows + 1;
    }
    return moved <= firstRowGap ? 1 : std::max(1, static_cast<int>(std::lround(moved * hiddenRows / range)));
}

double ThumbInTrack(double thumbTop, const ThumbGeometry& geometry) {
    return std::max(geometry.upperArrowBottom, std::min(thumbTop, LowestTop(geometry)));
}

double ThumbTopForClick(double y, const ThumbGeometry& geometry) {
    return ThumbInTrack(y - geometry.thumbHeight / 2, geometry);
}

int RowForArrow(ScrollArrow arrow, int firstRow, int rowCount) {
    const int row = arrow == ScrollArrow::Down ? firstRow + arrowRowsDown : firstRow - arrowRowsUp;
    return std::min(std::max(row, 1), rowCount);
}

} // namespace kestrune
