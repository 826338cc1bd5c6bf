// The rounded corners of the windows.
#pragma once

#include <QSize>
#include <vector>

namespace kestrune {

// Whole width and height, in pixels, of the ellipse whose quarters make a window's corners.
namespace corners {
inline constexpr QSize mainWindow(35, 38);
inline constexpr QSize mainWindowResized(20, 20);
inline constexpr QSize ConverterfrmDialog(20, 20);
inline constexpr QSize CDWriterMain(20, 20);
inline constexpr QSize CDfrmWrite(20, 20);
inline constexpr QSize RipfrmMain(17, 17);
inline constexpr QSize frmMp3site(17, 17);
inline constexpr QSize frmInfo(15, 15);
inline constexpr QSize dialog(15, 15); // every window without a size of its own
} // namespace corners

// Twips to whole pixels, as the size of a window is rounded before its corners are cut.
int PixelsForTwips(int twips, double twipsPerPixel = 15);

// How many pixels are cut off at either end of each row of a window of that height, from the top down. An
// ellipse larger than the window is brought into it. A pixel counts as outside if its centre is.
std::vector<int> CornerInsets(const QSize& window, const QSize& ellipse);

} // namespace kestrune
