// One way to picture the display. Window thread.
#pragma once

#include "display/audio_display.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <memory>
#include <vector>

namespace kestrune {

struct DisplayColours {
    QColor back;
    QColor inscriptions;
    QColor scale;
    QColor levels;
    QColor maxLevel;
};

// What a picture is laid out for. Lengths in device-independent pixels.
struct DisplayCanvas {
    QRectF field; // within the border
    double pixelRatio = 1;
    DisplayColours colours;
    double highFrom = 0.7; // place on the scale where a level counts as high
    int markHeight = 2;    // of the marks of the maximum; 0 for none
    int channels = 2;
};

// Call order: Lay, then PaintGround once for the layer that stands still, then Follow and PaintMoving for
// each change.
class DisplayPicture {
public:
    virtual ~DisplayPicture() = default;
    // Bands that the field has room for; 0 for a picture without bands.
    virtual int BandRoom() const { return 0; }
    virtual void Lay(const DisplayCanvas& canvas) = 0;
    virtual void PaintGround(QPainter& painter) = 0;
    // Goes a part of the way, 0 to 1, from what was seen to what is to be seen now; meters go all the way.
    // Returns what differs from before, empty if nothing does.
    virtual QRegion Follow(const AudioDisplay& display, double part) = 0;
    // Back to rest at once.
    virtual void Clear() {}
    virtual void PaintMoving(QPainter& painter) = 0;
};

std::unique_ptr<DisplayPicture> MakeBarsPicture();
std::unique_ptr<DisplayPicture> MakeAnalogPicture();
std::unique_ptr<DisplayPicture> MakeFirePicture();
std::unique_ptr<DisplayPicture> MakeGlassPicture();
std::unique_ptr<DisplayPicture> MakeKryptonitePicture();

// --- What the pictures share ---

// From one colour to another, by 0 to 1.
QColor Mixed(const QColor& from, const QColor& to, double part);
QColor Faded(const QColor& colour, double alpha);
// A transparent pixmap of a size in device-independent pixels.
QPixmap EmptyLayer(const QSizeF& size, double pixelRatio);
// The face of the program's lettering at a height of its capitals and digits in pixels.
QFont DisplayFont(double pixelSize, int weight);
// Rounded to whole device pixels.
double Snapped(double length, double pixelRatio);

// The bands from left to right as they are seen. Two channels stand with their low ends together in the
// middle.
class ShownBands {
public:
    struct Column {
        double level = 0;
        double peak = 0;
    };
    void Lay(int columns) { columns_.assign(static_cast<size_t>(columns), {}); }
    void Clear() { Lay(Count()); }
    int Count() const { return static_cast<int>(columns_.size()); }
    const Column& At(int column) const { return columns_[static_cast<size_t>(column)]; }
    void Approach(const AudioDisplay& display, double part);
    bool AreAtRest() const;

private:
    std::vector<Column> columns_;
};

} // namespace kestrune
