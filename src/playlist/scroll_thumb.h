// Where the thumb of the playlist's scroll bar stands, and which row its places stand for. Pure functions;
// any thread.
#pragma once

namespace kestrune {

inline constexpr int rowsInSight = 7; // of the list at once

// The track, in any unit and from any origin; the thumb is in the track between the two arrows.
struct ThumbGeometry {
    double upperArrowBottom = 0;
    double lowerArrowTop = 0;
    double thumbHeight = 0;
};

// Arrows of the bar, by the index of ImageListUpDn.
enum class ScrollArrow { Up = 0, Down = 1 };

// Top of the thumb for the first visible row, which is 1-based.
double MoveScrollBar(int firstRow, int rowCount, const ThumbGeometry& geometry);

// The reverse, for a thumb that is dragged: the row to stand first in the list. Places beyond the track's
// ends count as those ends; the lower end gives the row that brings the last one into sight. 1 for a list
// that is in sight as a whole.
int FirstRowForThumb(double thumbTop, int rowCount, const ThumbGeometry& geometry);

// A thumb top that stays in the track.
double ThumbInTrack(double thumbTop, const ThumbGeometry& geometry);
// Top of a thumb that has its centre at a click on the track.
double ThumbTopForClick(double y, const ThumbGeometry& geometry);

// The row that a click on an arrow brings into sight: 8 behind the first visible one, or 1 before it. 0 for
// an empty list.
int RowForArrow(ScrollArrow arrow, int firstRow, int rowCount);

} // namespace kestrune
