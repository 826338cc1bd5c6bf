#include "playlist/list_tip.h"

namespace kestrune {

namespace {
constexpr qint64 hintMs = 10000;
}

void ListTip::MouseMoved() {
    const qint64 nowMs = clock_.MonotonicMs();
    if (!firstMoveMs_) {
        firstMoveMs_ = nowMs;
        text_ = tr("Hold CTRL to select more than 1");
        isHint_ = true;
    } else if (isHint_ && nowMs - *firstMoveMs_ >= hintMs) {
        text_.clear();
        isHint_ = false;
    }
}

void ListTip::RowClicked(const QString& formats) {
    text_ = formats;
    isHint_ = false;
}

} // namespace kestrune
