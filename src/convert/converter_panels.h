// The two shapes of the converter window and its settings panel.
#pragma once

#include <QObject>

namespace kestrune {

// Heights in device-independent pixels: 5250 and 9800 window units of 15 to a pixel, cut down.
inline constexpr int shortConverterHeight = 350;
inline constexpr int longConverterHeight = 653; // with the event log

// Place of PictureSet in the window when it is shown.
inline constexpr int pictureSetLeft = 2;
inline constexpr int pictureSetTop = 25;

// Window thread.
class ConverterPanels : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    bool IsLong() const { return isLong_; }
    int Height() const { return isLong_ ? longConverterHeight : shortConverterHeight; }
    bool IsPictureSetShown() const { return pictureSetShown_; }

    void ImageUpdown_Click();
    void ImageOptions_Click() { SetPictureSet(!pictureSetShown_); }
    void ImageSetdown_Click() { SetPictureSet(false); }

signals:
    // The arrow of ImageUpdown changes places with that of ImageUpdown1, and the window goes to the middle of
    // the screen again.
    void HeightChanged(int height);
    void PictureSetShown(bool shown);

private:
    void SetPictureSet(bool shown);

    bool isLong_ = false;
    bool pictureSetShown_ = false;
};

} // namespace kestrune
