// Analog: a lit meter with a needle for each channel.
#include "display/audio_display_picture.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <array>
#include <cmath>
#include <numbers>

namespace kestrune {

namespace {

constexpr double gap = 3;             // pixels round and between the meters
constexpr double leastHalfSweep = 38; // degrees of the needle from upright to either end of the scale
constexpr double largestHalfSweep = 54;
constexpr double numberRoom = 13.5;  // pixels above the scale
constexpr double leastMove = 0.0008; // of the scale: less cannot be seen
constexpr double largestFaceRatio = 1.9;
constexpr double endRoom = 10.5;    // pixels beside either end of the scale, for its number
constexpr double narrowRadius = 50; // below it some numbers are left out

class AnalogPicture : public DisplayPicture {
public:
    void Lay(const DisplayCanvas& canvas) override;
    void PaintGround(QPainter& painter) override;
    QRegion Follow(const AudioDisplay& display, double part) override;
    void PaintMoving(QPainter& painter) override;

private:
    struct Meter {
        QRectF face;
        QPointF pivot;
        double radius = 1; // of the scale's arc
        double halfSweep = leastHalfSweep;
        double deflection = 0;
        bool overloaded = false;
    };
    static double AngleOf(const Meter& meter, double deflection);
    static void PlaceScale(Meter& meter);
    QPointF PointAt(const Meter& meter, double deflection, double radius) const;
    QRectF LampOf(const Meter& meter) const;
    QRect NeedleArea(const Meter& meter) const;
    QPainterPath Arc(const Meter& meter, double from, double to, double radius) const;
    void PaintFace(QPainter& painter, const Meter& meter) const;
    void PaintScale(QPainter& painter, const Meter& meter) const;
    void PaintNeedle(QPainter& painter, const Meter& meter) const;
    void PaintHub(QPainter& painter, const Meter& meter) const;

    DisplayCanvas canvas_;
    std::array<Meter, 2> meters_;
};

constexpr double degree = std::numbers::pi / 180;

void AnalogPicture::Lay(const DisplayCanvas& canvas) {
    canvas_ = canvas;
    const QRectF room = canvas.field.adjusted(gap, gap, -gap, -gap);
    const double width = (room.width() - gap * (canvas.channels - 1)) / canvas.channels;
    for (int channel = 0; channel < canvas.channels; ++channel) {
        Meter& meter = meters_[static_cast<size_t>(channel)];
        QRectF face(room.left() + channel * (width + gap), room.top(), width, room.height());
        const double widest = face.height() * largestFaceRatio;
        if (face.width() > widest) {
            face = QRectF(face.center().x() - widest / 2, face.top(), widest, face.height());
        }
        meter.face = face;
        PlaceScale(meter);
    }
}

// The scale takes the width of the face where the sweep allows it, else what the height leaves.
void AnalogPicture::PlaceScale(Meter& meter) {
    const QRectF& face = meter.face;
    const double halfWidth = std::max(4.0, face.width() / 2 - endRoom);
    const double tallest = std::max(8.0, face.height() + 2 - numberRoom);
    const double fitting = std::asin(std::min(1.0, halfWidth / tallest)) / degree;
    meter.halfSweep = std::clamp(fitting, leastHalfSweep, largestHalfSweep);
    meter.radius = std::min(tallest, halfWidth / std::sin(meter.halfSweep * degree));
    const double spare = tallest - meter.radius;
    meter.pivot = QPointF(face.center().x(), face.top() + numberRoom + spare * 0.4 + meter.radius);
}

double AnalogPicture::AngleOf(const Meter& meter, double deflection) {
    return (deflection * 2 - 1) * meter.halfSweep * degree;
}

QPointF AnalogPicture::PointAt(const Meter& meter, double deflection, double radius) const {
    const double angle = AngleOf(meter, deflection);
    return meter.pivot + QPointF(std::sin(angle) * radius, -std::cos(angle) * radius);
}

QRectF AnalogPicture::LampOf(const Meter& meter) const {
    return {meter.face.right() - 8, meter.face.bottom() - 9, 4, 4};
}

QPainterPath AnalogPicture::Arc(const Meter& meter, double from, double to, double radius) const {
    const QRectF circle(meter.pivot - QPointF(radius, radius), QSizeF(radius * 2, radius * 2));
    const auto degrees = [&meter](double deflection) { return 90 - AngleOf(meter, deflection) / degree; };
    QPainterPath path;
    path.arcMoveTo(circle, degrees(from));
    path.arcTo(circle, degrees(from), degrees(to) - degrees(from));
    return path;
}

void AnalogPicture::PaintGround(QPainter& painter) {
    for (int channel = 0; channel < canvas_.channels; ++channel) {
        const Meter& meter = meters_[static_cast<size_t>(channel)];
        painter.save();
        QPainterPath shape;
        shape.addRoundedRect(meter.face, 3, 3);
        painter.setClipPath(shape);
        PaintFace(painter, meter);
        PaintScale(painter, meter);
        painter.setFont(DisplayFont(8, QFont::Bold));
        painter.setPen(Faded(canvas_.colours.inscriptions, 0.85));
        const double side = 5;
        if (canvas_.channels == 2) {
            painter.drawText(QPointF(meter.face.left() + side, meter.face.bottom() - side),
                             channel == 0 ? QStringLiteral("L") : QStringLiteral("R"));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(Mixed(canvas_.colours.back, canvas_.colours.maxLevel, 0.28));
        painter.drawEllipse(LampOf(meter));
        painter.restore();
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(0, 0, 0, 170), 1));
        painter.drawRoundedRect(meter.face.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}

// Dark glass with a lamp behind its foot.
void AnalogPicture::PaintFace(QPainter& painter, const Meter& meter) const {
    const DisplayColours& colours = canvas_.colours;
    const QRectF& face = meter.face;
    QLinearGradient ground(face.topLeft(), face.bottomLeft());
    ground.setColorAt(0, Mixed(colours.back, colours.levels, 0.16));
    ground.setColorAt(1, Mixed(colours.back, colours.levels, 0.42));
    painter.fillRect(face, ground);
    QRadialGradient lamp(QPointF(face.center().x(), face.bottom() + face.height() * 0.10),
                         face.width() * 0.62);
    lamp.setColorAt(0, Faded(Mixed(colours.levels, Qt::white, 0.62), 0.95));
    lamp.setColorAt(0.35, Faded(Mixed(colours.levels, Qt::white, 0.12), 0.45));
    lamp.setColorAt(1, Faded(colours.levels, 0));
    painter.fillRect(face, lamp);
    QRadialGradient corners(face.center(), face.width() * 0.72);
    corners.setColorAt(0.55, QColor(0, 0, 0, 0));
    corners.setColorAt(1, QColor(0, 0, 0, 150));
    painter.fillRect(face, corners);
    // The pane in front catches the light of the room aslant.
    QPainterPath pane;
    pane.moveTo(face.topLeft());
    pane.lineTo(face.left() + face.width() * 0.62, face.top());
    pane.lineTo(face.left() + face.width() * 0.30, face.bottom());
    pane.lineTo(face.bottomLeft());
    painter.fillPath(pane, QColor(255, 255, 255, 10));
}

void AnalogPicture::PaintScale(QPainter& painter, const Meter& meter) const {
    struct Mark {
        double vu;
        const char* text;
    };
    constexpr std::array<Mark, 11> marks = {{{-20, "20"},
                                             {-10, "10"},
                                             {-7, "7"},
                                             {-5, "5"},
                                             {-3, "3"},
                                             {-2, ""},
                                             {-1, ""},
                                             {0, "0"},
                                             {1, ""},
                                             {2, ""},
                                             {3, "3"}}};
    const DisplayColours& colours = canvas_.colours;
    const QColor line = Mixed(colours.scale, colours.inscriptions, 0.75);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(line, 0.9, Qt::SolidLine, Qt::FlatCap));
    painter.drawPath(Arc(meter, 0, 1, meter.radius));
    if (canvas_.highFrom < 1) {
        painter.setPen(QPen(colours.maxLevel, 2.2, Qt::SolidLine, Qt::FlatCap));
        painter.drawPath(Arc(meter, canvas_.highFrom, 1, meter.radius + 0.6));
    }
    QFont font = DisplayFont(7, QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, -0.3);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    for (const Mark& mark : marks) {
        const double place = NeedleMark(mark.vu);
        const bool isNamed = mark.text[0] != '\0';
        const bool isHigh = place >= canvas_.highFrom;
        painter.setPen(
            QPen(isHigh ? colours.maxLevel : line, isNamed ? 1.0 : 0.7, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(PointAt(meter, place, meter.radius),
                         PointAt(meter, place, meter.radius + (isNamed ? 3.2 : 2)));
        const bool isCrowded = meter.radius < narrowRadius && (mark.vu == -7 || mark.vu == -5);
        const QString text = isCrowded ? QString() : QString::fromLatin1(mark.text);
        const QPointF at = PointAt(meter, place, meter.radius + 6.6);
        painter.setPen(isHigh ? Mixed(colours.maxLevel, Qt::white, 0.15) : colours.inscriptions);
        painter.drawText(at + QPointF(-metrics.horizontalAdvance(text) / 2, metrics.capHeight() / 2), text);
    }
    painter.setFont(DisplayFont(8, QFont::Bold));
    painter.setPen(Faded(colours.inscriptions, 0.7));
    const QRectF name(meter.face.left(), meter.pivot.y() - meter.radius * 0.74, meter.face.width(), 10);
    painter.drawText(name, Qt::AlignCenter, QStringLiteral("VU"));
}

QRect AnalogPicture::NeedleArea(const Meter& meter) const {
    constexpr double aside = 4; // the shadow, and the thickness of the needle
    const QRectF needle =
        QRectF(PointAt(meter, meter.deflection, meter.radius + 2), meter.pivot).normalized();
    return (needle.adjusted(-aside, -aside, aside, aside) & meter.face).toAlignedRect();
}

QRegion AnalogPicture::Follow(const AudioDisplay& display, double /*part*/) {
    QRegion changed;
    for (int channel = 0; channel < canvas_.channels; ++channel) {
        Meter& meter = meters_[static_cast<size_t>(channel)];
        const double deflection = display.NeedleDeflection(channel);
        const bool overloaded = display.IsOverloaded(channel);
        if (overloaded != meter.overloaded) {
            meter.overloaded = overloaded;
            changed += LampOf(meter).adjusted(-3, -3, 3, 3).toAlignedRect();
        }
        if (std::abs(deflection - meter.deflection) > leastMove ||
            (deflection == 0 && meter.deflection > 0)) {
            changed += NeedleArea(meter);
            meter.deflection = deflection;
            changed += NeedleArea(meter);
        }
    }
    return changed;
}

void AnalogPicture::PaintMoving(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    for (int channel = 0; channel < canvas_.channels; ++channel) {
        const Meter& meter = meters_[static_cast<size_t>(channel)];
        painter.save();
        painter.setClipRect(meter.face.adjusted(1, 1, -1, -1), Qt::IntersectClip);
        if (meter.overloaded) {
            const QRectF lamp = LampOf(meter);
            painter.setPen(Qt::NoPen);
            painter.setBrush(Faded(canvas_.colours.maxLevel, 0.35));
            painter.drawEllipse(lamp.adjusted(-2, -2, 2, 2));
            painter.setBrush(Mixed(canvas_.colours.maxLevel, Qt::white, 0.4));
            painter.drawEllipse(lamp);
        }
        PaintNeedle(painter, meter);
        PaintHub(painter, meter);
        painter.restore();
    }
}

void AnalogPicture::PaintNeedle(QPainter& painter, const Meter& meter) const {
    const double angle = AngleOf(meter, meter.deflection);
    const QPointF tip = PointAt(meter, meter.deflection, meter.radius + 2);
    const QPointF across(std::cos(angle), std::sin(angle));
    const QPolygonF needle(
        {meter.pivot - across * 0.9, tip - across * 0.35, tip + across * 0.35, meter.pivot + across * 0.9});
    painter.setPen(Qt::NoPen);
    // The light comes from the foot and a little from the left: the shadow lies above and to the right.
    painter.setBrush(QColor(0, 0, 0, 95));
    painter.drawPolygon(needle.translated(2.2, 1.2));
    painter.setBrush(QColor(0, 0, 0, 95));
    painter.drawPolygon(needle.translated(1.5, 0.8));
    painter.setBrush(Mixed(canvas_.colours.inscriptions, Qt::white, 0.55));
    painter.drawPolygon(needle);
}

void AnalogPicture::PaintHub(QPainter& painter, const Meter& meter) const {
    const QPointF centre = meter.pivot + QPointF(0, 1);
    const double radius = std::min(meter.face.width() * 0.16, 13.0);
    QRadialGradient body(centre - QPointF(radius * 0.3, radius * 0.8), radius * 1.5);
    body.setColorAt(0, Mixed(canvas_.colours.back, Qt::white, 0.28));
    body.setColorAt(0.5, Mixed(canvas_.colours.back, Qt::white, 0.08));
    body.setColorAt(1, Mixed(canvas_.colours.back, Qt::black, 0.5));
    painter.setPen(QPen(QColor(0, 0, 0, 150), 0.8));
    painter.setBrush(body);
    painter.drawEllipse(centre, radius, radius);
}

} // namespace

std::unique_ptr<DisplayPicture> MakeAnalogPicture() {
    return std::make_unique<AnalogPicture>();
}

} // namespace kestrune
