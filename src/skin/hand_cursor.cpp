#include "skin/hand_cursor.h"

#include "skin/skin_picture.h"

namespace kestrune {

namespace {
constexpr QPoint fingerTip(8, 2);
} // namespace

QCursor HandCursor(qreal devicePixelRatio) {
    const SkinPicture hand(QStringLiteral(":/skin/hand.svg"));
    const QPixmap picture = hand.Cut(QRect({}, hand.Size()), devicePixelRatio);
    if (picture.isNull()) {
        return Qt::PointingHandCursor;
    }
    return QCursor(picture, fingerTip.x(), fingerTip.y());
}

} // namespace kestrune
