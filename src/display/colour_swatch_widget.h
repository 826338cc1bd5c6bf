// A colour behind glass, with its number.
#pragma once

#include <QColor>
#include <QWidget>

namespace kestrune {

class ColourSwatchWidget : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;
    void SetColour(const QColor& colour);
    const QColor& Colour() const { return colour_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour_{20, 20, 20};
};

} // namespace kestrune
