#include "skin/window_kit.h"

namespace kestrune {

QString Indexed(const QString& name, qsizetype index) {
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

QRect InGrid(const QRect& first, int index, int columns, int columnStep, int rowStep) {
    return first.translated(index % columns * columnStep, index / columns * rowStep);
}

void SetInk(QLabel* label, const QColor& colour, int pixels, QFont::Weight weight) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    QFont face = label->font();
    face.setPixelSize(pixels);
    face.setWeight(weight);
    label->setFont(face);
}

void OrderTabs(const QWidgetList& order) {
    for (qsizetype i = 1; i < order.size(); ++i) {
        QWidget::setTabOrder(order[i - 1], order[i]);
    }
}

ButtonLooks WindowKit::LooksOf(const KeyLayout& key) {
    ButtonLooks looks{key.hover, key.pressed};
    if (key.lit.x() >= 0) {
        looks.lit = key.lit;
    }
    return looks;
}

ImageButton* WindowKit::Picture(const QString& name, const QString& tip, const KeyLayout& key, int group,
                                int index, QWidget* parent) {
    auto* button = new ImageButton(strip_, LooksOf(key), parent != nullptr ? parent : window_);
    Equip(button, name, tip, key, group, index);
    return button;
}

void WindowKit::Equip(ImageButton* button, const QString& name, const QString& tip, const KeyLayout& key,
                      int group, int index) {
    const QPoint partCorner = button->parentWidget()->mapTo(window_, QPoint());
    Put(button, name, key.place.translated(-partCorner));
    button->SetOffPicture(off_);
    button->setAccessibleName(tip);
    button->setToolTip(tip);
    hover_.Add(group, index, button);
}

ElidedLabel* WindowKit::Text(const QString& name, const QString& text, const QRect& place,
                             const QColor& colour, QWidget* parent) {
    auto* label = Put(new ElidedLabel(text, parent != nullptr ? parent : window_), name, place);
    SetInk(label, colour);
    return label;
}

} // namespace kestrune
