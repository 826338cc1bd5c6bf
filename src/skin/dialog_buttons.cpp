#include "skin/dialog_buttons.h"

#include "skin/window_chrome.h"

namespace kestrune {

namespace {
constexpr int keyGap = 8;
}

DialogButtons::DialogButtons(WindowChrome& chrome, QWidget* parent) : QWidget(parent) {
    const std::array<QString, count> words = {tr("OK"), tr("Cancel"), tr("Apply")};
    const int group = chrome.Hover().AddGroup();
    int left = 0;
    for (int index = 0; index < count; ++index) {
        auto* button = new BodyKey(pictures_, words[static_cast<size_t>(index)], this);
        button->setObjectName(QStringLiteral("ImageCMD(%1)").arg(index));
        button->move(left, 0);
        connect(button, &ImageButton::clicked, this, [this, index] { emit Clicked(index); });
        chrome.Hover().Add(group, index, button);
        buttons_[static_cast<size_t>(index)] = button;
        left += button->width() + keyGap;
    }
    setFixedSize(left - keyGap, buttons_[0]->height());
}

} // namespace kestrune
