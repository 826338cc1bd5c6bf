#include "main_window/small_total_view.h"

#include "playlist/small_digits.h"

#include <QPainter>

namespace kestrune {

SmallTotalView::SmallTotalView(const SkinPicture& strip, QWidget* parent) : QWidget(parent), strip_(strip) {}

void SmallTotalView::SetText(const QString& text) {
    if (text_ != text) {
        text_ = text;
        update();
    }
}

void SmallTotalView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const SmallDigits digits = DispSelTotalTime(text_, width());
    int left = digits.startX;
    for (const DigitCut& cut : digits.cuts) {
        strip_.Paint(painter, {left, smallDigitsY}, {cut.left, smallDigitTop, cut.width, smallDigitHeight});
        left += cut.width;
    }
}

} // namespace kestrune
