#include "skin/elided_label.h"

#include "skin/skin_colours.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kestrune {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QString ElidedLabel::Shown() const {
    return fontMetrics().elidedText(text(), mode_, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (text().isEmpty()) {
        painter.setPen(colours::textMuted);
        painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, hint_);
        return;
    }
    painter.setPen(isEnabled() ? palette().color(QPalette::WindowText) : colours::textDisabled);
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, Shown());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), Shown() == text() ? toolTip() : text(), this);
        return true;
    }
    return QLabel::event(event);
}

} // namespace kestrune
