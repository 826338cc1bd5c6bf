// One look for all standard controls: graphite, glass and one accent.
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QProxyStyle>

class QApplication;

namespace kestrune {

// Gives every window and every standard dialog of the program the skin's style, palette and face. Standard
// dialogs become the toolkit's own, which the style can reach. Call once, after the application was made.
void ApplySkinStyle(QApplication& application);

QPalette SkinPalette();

// Over Fusion, whose layout it keeps and whose painting it replaces. Window thread.
class SkinStyle : public QProxyStyle {
    Q_OBJECT
public:
    SkinStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    QPixmap standardPixmap(StandardPixmap icon, const QStyleOption* option,
                           const QWidget* widget) const override;
    QPalette standardPalette() const override;
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    bool DrawButtonPart(PrimitiveElement element, const QStyleOption& option, QPainter& painter) const;
    bool DrawFramePart(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                       const QWidget* widget) const;
    bool DrawItemPart(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                      const QWidget* widget) const;
    bool DrawLabelled(ControlElement element, const QStyleOption& option, QPainter& painter,
                      const QWidget* widget) const;
    void DrawMenuItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
    void DrawTab(const QStyleOption& option, QPainter& painter) const;
    void DrawHeaderSection(const QStyleOption& option, QPainter& painter) const;
    void DrawProgress(const QStyleOption& option, QPainter& painter) const;
    void DrawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawSlider(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawComboBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    QRect ScrollBarRect(const QStyleOptionComplex& option, SubControl part) const;
    // Where the band of a bar without an end stands now, 0 to 1.
    qreal BusyPhase(QObject* bar) const;

    mutable QBasicTimer busyTimer_;
    mutable QElapsedTimer busyTime_;
    mutable QList<QPointer<QObject>> busyBars_;
};

} // namespace kestrune
