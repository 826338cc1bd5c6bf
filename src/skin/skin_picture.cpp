#include "skin/skin_picture.h"

#include "app/failure_log.h"

#include <QPainter>
#include <QSvgRenderer>
#include <cmath>

namespace kestrune {

namespace {

constexpr int largestKept = 512; // shifted pieces; a window with digits has some hundred

bool IsWhole(qreal value) {
    return std::abs(value - std::round(value)) < 1e-4;
}

} // namespace

SkinPicture::SkinPicture(const QString& svgResource)
    : name_(svgResource), renderer_(std::make_unique<QSvgRenderer>(svgResource)) {
    if (!renderer_->isValid()) {
        qCWarning(logSkin, "%s is no picture", qUtf8Printable(name_));
        return;
    }
    size_ = renderer_->viewBoxF().size().toSize();
}

SkinPicture::~SkinPicture() = default;

bool SkinPicture::Contains(const QRect& logical) const {
    return !logical.isEmpty() && QRect({}, size_).contains(logical);
}

QPixmap SkinPicture::Raster(const QRect& piece, qreal devicePixelRatio, const QPointF& shift,
                            const QSize& deviceSize) const {
    QImage image(deviceSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.translate(shift);
    painter.scale(devicePixelRatio, devicePixelRatio);
    painter.translate(-piece.topLeft());
    renderer_->render(&painter, QRectF({}, QSizeF(size_)));
    painter.end();
    return QPixmap::fromImage(image);
}

QPixmap SkinPicture::Whole(qreal devicePixelRatio) const {
    QPixmap& whole = wholes_[qRound(devicePixelRatio * 1000)];
    if (whole.isNull()) {
        const QSizeF device = QSizeF(size_) * devicePixelRatio;
        whole = Raster(
            QRect({}, size_), devicePixelRatio, {},
            {static_cast<int>(std::ceil(device.width())), static_cast<int>(std::ceil(device.height()))});
    }
    return whole;
}

QPixmap SkinPicture::Cut(const QRect& logical, qreal devicePixelRatio) const {
    if (!Contains(logical) || devicePixelRatio <= 0) {
        qCWarning(logSkin, "%s: %d,%d %dx%d is not in the picture", qUtf8Printable(name_), logical.x(),
                  logical.y(), logical.width(), logical.height());
        return {};
    }
    const QRectF device(QPointF(logical.topLeft()) * devicePixelRatio,
                        QSizeF(logical.size()) * devicePixelRatio);
    const QPoint first(qRound(device.left()), qRound(device.top()));
    const QPoint end(qRound(device.right()), qRound(device.bottom()));
    QPixmap cut = Whole(devicePixelRatio).copy(QRect(first, QSize(end.x() - first.x(), end.y() - first.y())));
    cut.setDevicePixelRatio(devicePixelRatio);
    return cut;
}

QPixmap SkinPicture::Shifted(const QRect& piece, qreal devicePixelRatio, const QPointF& shift,
                             const QSize& deviceSize) const {
    const QString key = QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
                            .arg(qRound(devicePixelRatio * 1000))
                            .arg(piece.x())
                            .arg(piece.y())
                            .arg(piece.width())
                            .arg(piece.height())
                            .arg(qRound(shift.x() * 1000))
                            .arg(qRound(shift.y() * 1000));
    if (shifted_.size() >= largestKept) {
        shifted_.clear();
    }
    QPixmap& picture = shifted_[key];
    if (picture.isNull()) {
        picture = Raster(piece, devicePixelRatio, shift, deviceSize);
    }
    return picture;
}

void SkinPicture::Paint(QPainter& painter, const QPoint& at, const QRect& piece) const {
    const QTransform device = painter.deviceTransform();
    const qreal scale = device.m11();
    if (!Contains(piece) || scale <= 0 || device.type() > QTransform::TxScale) {
        qCWarning(logSkin, "%s: %d,%d %dx%d cannot be drawn", qUtf8Printable(name_), piece.x(), piece.y(),
                  piece.width(), piece.height());
        return;
    }
    const QRectF target = device.mapRect(QRectF(at, QSizeF(piece.size())));
    const QPoint first(static_cast<int>(std::floor(target.left() + 1e-4)),
                       static_cast<int>(std::floor(target.top() + 1e-4)));
    const QSize size(static_cast<int>(std::ceil(target.right() - 1e-4)) - first.x(),
                     static_cast<int>(std::ceil(target.bottom() - 1e-4)) - first.y());
    const QPointF source = QPointF(piece.topLeft()) * scale;
    const QPointF shift = target.topLeft() - first;
    const bool aligned =
        IsWhole(shift.x()) && IsWhole(shift.y()) && IsWhole(source.x()) && IsWhole(source.y());
    painter.save();
    // From here on one unit is one pixel of the device.
    painter.setWorldTransform(device.inverted() * painter.worldTransform());
    if (aligned) {
        painter.drawPixmap(first, Whole(scale), QRect(source.toPoint(), size));
    } else {
        painter.drawPixmap(first, Shifted(piece, scale, shift, size));
    }
    painter.restore();
}

} // namespace kestrune
