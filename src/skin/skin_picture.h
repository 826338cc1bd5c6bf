// A picture of the skin: a window's background, or the strip that holds all looks of its buttons.
#pragma once

#include <QHash>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <memory>

class QPainter;
class QSvgRenderer;

namespace kestrune {

// Drawn from an SVG whose view box is its size in device-independent pixels. It is rasterised once per scale
// of a screen and kept. A picture that cannot be read has no size and gives no cut; that, and a cut that
// leaves the picture, is a line in the log "kestrune.skin" and never more. Window thread.
class SkinPicture {
public:
    // A resource path such as ":/skin/main.svg", or a file.
    explicit SkinPicture(const QString& svgResource);
    ~SkinPicture();
    SkinPicture(const SkinPicture&) = delete;
    SkinPicture& operator=(const SkinPicture&) = delete;

    bool IsValid() const { return !size_.isEmpty(); }
    QSize Size() const { return size_; }
    bool Contains(const QRect& logical) const;

    // A piece of the picture at a scale, with the pixmap's own ratio set. Null outside the picture.
    QPixmap Cut(const QRect& logical, qreal devicePixelRatio) const;
    // Draws a piece with its corner at a place, on the painter's very pixels: at a scale of 1.5 a corner may
    // lie between two of them, and the piece is then drawn from its lines again rather than stretched.
    void Paint(QPainter& painter, const QPoint& at, const QRect& piece) const;
    void PaintWhole(QPainter& painter) const { Paint(painter, {}, QRect({}, size_)); }

private:
    QPixmap Whole(qreal devicePixelRatio) const;
    QPixmap Shifted(const QRect& piece, qreal devicePixelRatio, const QPointF& shift,
                    const QSize& deviceSize) const;
    QPixmap Raster(const QRect& piece, qreal devicePixelRatio, const QPointF& shift,
                   const QSize& deviceSize) const;

    QString name_;
    std::unique_ptr<QSvgRenderer> renderer_;
    QSize size_;
    mutable QHash<int, QPixmap> wholes_;      // by scale in thousandths
    mutable QHash<QString, QPixmap> shifted_; // by scale, piece and shift
};

} // namespace kestrune
