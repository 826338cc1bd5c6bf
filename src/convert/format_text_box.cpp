#include "convert/format_text_box.h"

#include "skin/skin_colours.h"
#include "skin/style_paint.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kestrune {

namespace {

constexpr int fontPixels = 10;
constexpr int sideAir = 12; // what a line edit keeps free beside its text, both sides together

} // namespace

FormatTextBox::FormatTextBox(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);
    QFont face = font();
    face.setPixelSize(fontPixels);
    setFont(face);
    QPalette inks = palette();
    inks.setColor(QPalette::Text, colours::textOnGlass);
    setPalette(inks);
}

void FormatTextBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        shapes::FocusRing(painter, rect());
    }
}

bool FormatTextBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const bool fits = fontMetrics().horizontalAdvance(text()) <= width() - sideAir;
        QToolTip::showText(help->globalPos(), fits ? QString() : text(), this);
        return true;
    }
    return QLineEdit::event(event);
}

} // namespace kestrune
