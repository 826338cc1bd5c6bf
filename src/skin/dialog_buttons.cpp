#include "skin/dialog_buttons.h"

#include "skin/window_chrome.h"

#include <QPainter>

namespace kestrune {

namespace {

// As tools/make_skin/dialog_buttons.py draws them.
constexpr QSize keySize(80, 26);
constexpr int keyStep = 88;
constexpr int hoverTop = 0;
constexpr int pressedTop = 32;

} // namespace

DialogButtons::DialogButtons(WindowChrome& chrome, QWidget* parent)
    : QWidget(parent),
      picture_(QStringLiteral(":/skin/dialog_buttons.svg")),
      strip_(QStringLiteral(":/skin/dialog_buttons_strip.svg")) {
    const std::array<QString, count> names = {tr("OK"), tr("Cancel"), tr("Apply")};
    const int group = chrome.Hover().AddGroup();
    for (int index = 0; index < count; ++index) {
        const int left = index * keyStep;
        auto* button = new ImageButton(
            strip_, {.hover = QPoint(left, hoverTop), .pressed = QPoint(left, pressedTop)}, this);
        button->setObjectName(QStringLiteral("ImageCMD(%1)").arg(index));
        button->setAccessibleName(names[static_cast<size_t>(index)]);
        button->setGeometry(QRect(QPoint(left, 0), keySize));
        connect(button, &ImageButton::clicked, this, [this, index] { emit Clicked(index); });
        chrome.Hover().Add(group, index, button);
        chrome.AddHand(button);
        buttons_[static_cast<size_t>(index)] = button;
    }
    setFixedSize((count - 1) * keyStep + keySize.width(), keySize.height());
}

void DialogButtons::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    picture_.PaintWhole(painter);
}

} // namespace kestrune
