// Level Bars: a row of lamps for each channel, with a scale between the two.
#include "display/audio_display_picture.h"

#include <QFontMetricsF>
#include <array>
#include <cmath>

namespace kestrune {

namespace {

constexpr double sideRoom = 7;     // pixels left and right of the lamps
constexpr double nameRoom = 9;     // for the name of the channel
constexpr double overloadRoom = 6; // for the lamp at the end
constexpr double scaleRoom = 14;
constexpr double verticalRoom = 12; // above and below, both together
constexpr double tallestRow = 26;
constexpr double usualPitch = 3; // of the lamps, and their width, before they meet the pixels of the screen
constexpr double usualWidth = 2;
constexpr double bloom = 4; // how far a lit lamp shines
constexpr int partSteps = 6;

// The state of one row, in lamps.
struct RowState {
    int steps = 0; // lit, in parts of a lamp
    int mark = -1; // lamp of the maximum
    bool overloaded = false;
    bool operator==(const RowState&) const = default;
};

class BarsPicture : public DisplayPicture {
public:
    void Lay(const DisplayCanvas& canvas) override;
    void PaintGround(QPainter& painter) override;
    QRegion Follow(const AudioDisplay& display, double part) override;
    void PaintMoving(QPainter& painter) override;

private:
    struct Row {
        QRectF lamps;
        RowState state;
    };
    QColor LampColour(int lamp) const;
    QRectF LampRect(const QRectF& lamps, int lamp) const;
    QRectF OverloadRect(const QRectF& lamps) const;
    void PaintScale(QPainter& painter) const;
    void PaintRow(QPainter& painter, const Row& row) const;
    QRect AreaOf(const Row& row) const;

    DisplayCanvas canvas_;
    std::array<Row, 2> rows_;
    double scaleTop_ = 0;
    double pitch_ = usualPitch;
    double lampWidth_ = usualWidth;
    int lampCount_ = 1;
    QPixmap lit_; // one row, all lamps on, with room for its bloom all round
};

void BarsPicture::Lay(const DisplayCanvas& canvas) {
    canvas_ = canvas;
    const QRectF field = canvas.field;
    pitch_ = Snapped(usualPitch, canvas.pixelRatio);
    lampWidth_ = Snapped(usualWidth, canvas.pixelRatio);
    const double room = field.width() - sideRoom * 2 - nameRoom - overloadRoom;
    lampCount_ = std::max(1, static_cast<int>(room / pitch_));
    const double left = Snapped(field.left() + sideRoom + nameRoom, canvas.pixelRatio);
    const double width = lampCount_ * pitch_;
    // A single row is as tall as its room, but no block.
    const double rowRoom = (field.height() - scaleRoom - verticalRoom) / canvas.channels;
    const double height = Snapped(std::clamp(rowRoom, 3.0, tallestRow), canvas.pixelRatio);
    const double used = height * canvas.channels + scaleRoom;
    const double top = Snapped(field.top() + (field.height() - used) / 2, canvas.pixelRatio);
    rows_[0].lamps = QRectF(left, top, width, height);
    scaleTop_ = top + height;
    rows_[1].lamps = QRectF(left, scaleTop_ + scaleRoom, width, height);
    for (Row& row : rows_) {
        row.state = {};
    }
    lit_ = EmptyLayer(QSizeF(width + overloadRoom + bloom * 2, height + bloom * 2), canvas.pixelRatio);
    QPainter painter(&lit_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF lamps(bloom, bloom, width, height);
    for (int lamp = 0; lamp < lampCount_; ++lamp) {
        const QRectF at = LampRect(lamps, lamp);
        for (const double reach : {4.0, 2.5, 1.2}) {
            painter.setBrush(Faded(LampColour(lamp), 0.05));
            painter.drawRoundedRect(at.adjusted(-reach, -reach, reach, reach), reach, reach);
        }
    }
    for (int lamp = 0; lamp < lampCount_; ++lamp) {
        const QRectF at = LampRect(lamps, lamp);
        const QColor colour = LampColour(lamp);
        QLinearGradient body(at.topLeft(), at.bottomLeft());
        body.setColorAt(0, Mixed(colour, Qt::white, 0.10));
        body.setColorAt(0.32, Mixed(colour, Qt::white, 0.42));
        body.setColorAt(1, Mixed(colour, Qt::black, 0.18));
        painter.setBrush(body);
        painter.drawRect(at);
    }
}

// Quiet lamps are deeper in colour than loud ones.
QColor BarsPicture::LampColour(int lamp) const {
    const double place = (lamp + 0.5) / lampCount_;
    if (place >= canvas_.highFrom) {
        return canvas_.colours.maxLevel;
    }
    const double part = canvas_.highFrom > 0 ? place / canvas_.highFrom : 1;
    return Mixed(Mixed(canvas_.colours.levels, canvas_.colours.back, 0.28), canvas_.colours.levels, part);
}

QRectF BarsPicture::LampRect(const QRectF& lamps, int lamp) const {
    return {lamps.left() + lamp * pitch_, lamps.top(), lampWidth_, lamps.height()};
}

QRectF BarsPicture::OverloadRect(const QRectF& lamps) const {
    return {lamps.right() + 2, lamps.top(), 3, lamps.height()};
}

void BarsPicture::PaintGround(QPainter& painter) {
    const DisplayColours& colours = canvas_.colours;
    painter.setFont(DisplayFont(8, QFont::DemiBold));
    for (int channel = 0; channel < canvas_.channels; ++channel) {
        const QRectF lamps = rows_[static_cast<size_t>(channel)].lamps;
        if (canvas_.channels == 2) {
            painter.setPen(Faded(colours.inscriptions, 0.85));
            painter.drawText(
                QRectF(canvas_.field.left() + sideRoom - 2, lamps.top(), nameRoom, lamps.height()),
                Qt::AlignVCenter | Qt::AlignLeft, channel == 0 ? QStringLiteral("L") : QStringLiteral("R"));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 110));
        painter.drawRoundedRect(lamps.adjusted(-2, -2, overloadRoom + 1, 2), 2, 2);
        for (int lamp = 0; lamp < lampCount_; ++lamp) {
            painter.setBrush(Mixed(colours.back, LampColour(lamp), 0.17));
            painter.drawRect(LampRect(lamps, lamp));
        }
        painter.setBrush(Mixed(colours.back, colours.maxLevel, 0.22));
        painter.drawRect(OverloadRect(lamps));
    }
    PaintScale(painter);
}

void BarsPicture::PaintScale(QPainter& painter) const {
    struct Mark {
        double db;
        const char* text; // empty for a line alone
    };
    constexpr std::array<Mark, 10> marks = {{{-50, ""},
                                             {-40, "40"},
                                             {-30, "30"},
                                             {-25, ""},
                                             {-20, "20"},
                                             {-15, ""},
                                             {-10, "10"},
                                             {-6, "6"},
                                             {-3, "3"},
                                             {0, "0"}}};
    const QRectF lamps = rows_[0].lamps;
    const QFont font = DisplayFont(8, QFont::Medium);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    for (const Mark& mark : marks) {
        const double place = MeterScale(mark.db);
        const QString text = QString::fromLatin1(mark.text);
        const double x = Snapped(lamps.left() + place * lamps.width() - (pitch_ - lampWidth_) / 2 - 0.5,
                                 canvas_.pixelRatio);
        const double length = text.isEmpty() ? 2.5 : 1.0;
        const QColor line = place >= canvas_.highFrom ? canvas_.colours.maxLevel : canvas_.colours.scale;
        painter.fillRect(QRectF(x, scaleTop_ + 2, 1, length), line);
        if (canvas_.channels == 2) {
            painter.fillRect(QRectF(x, scaleTop_ + scaleRoom - 2 - length, 1, length), line);
        }
        painter.setPen(place >= canvas_.highFrom ? canvas_.colours.maxLevel
                                                 : Faded(canvas_.colours.inscriptions, 0.80));
        const double width = metrics.horizontalAdvance(text);
        // On whole pixels, since small figures blur between them.
        painter.drawText(
            QPointF(Snapped(x + 0.5 - width / 2, canvas_.pixelRatio),
                    Snapped(scaleTop_ + scaleRoom / 2 + metrics.capHeight() / 2, canvas_.pixelRatio)),
            text);
    }
    painter.setPen(Faded(canvas_.colours.inscriptions, 0.55));
    painter.drawText(
        QPointF(canvas_.field.left() + sideRoom - 2, scaleTop_ + scaleRoom / 2 + metrics.capHeight() / 2),
        QStringLiteral("dB"));
}

QRect BarsPicture::AreaOf(const Row& row) const {
    return row.lamps.adjusted(-bloom - 1, -bloom - 1, overloadRoom + bloom + 1, bloom + 1).toAlignedRect();
}

QRegion BarsPicture::Follow(const AudioDisplay& display, double /*part*/) {
    QRegion changed;
    for (int channel = 0; channel < canvas_.channels; ++channel) {
        const FallingLevel& bar = display.Bar(channel);
        RowState state;
        state.steps = static_cast<int>(std::lround(bar.Level() * lampCount_ * partSteps));
        state.mark = static_cast<int>(std::ceil(bar.Peak() * lampCount_)) - 1;
        state.overloaded = display.IsOverloaded(channel);
        Row& row = rows_[static_cast<size_t>(channel)];
        if (!(state == row.state)) {
            row.state = state;
            changed += AreaOf(row);
        }
    }
    return changed;
}

void BarsPicture::PaintMoving(QPainter& painter) {
    for (int channel = 0; channel < canvas_.channels; ++channel) {
        PaintRow(painter, rows_[static_cast<size_t>(channel)]);
    }
}

void BarsPicture::PaintRow(QPainter& painter, const Row& row) const {
    const QPointF corner = row.lamps.topLeft() - QPointF(bloom, bloom);
    const double ratio = canvas_.pixelRatio;
    const double height = row.lamps.height() + bloom * 2;
    const auto copy = [&](double from, double to) {
        painter.drawPixmap(QRectF(corner.x() + from, corner.y(), to - from, height), lit_,
                           QRectF(from * ratio, 0, (to - from) * ratio, height * ratio));
    };
    const int whole = row.state.steps / partSteps;
    const int part = row.state.steps % partSteps;
    const double end = bloom + whole * pitch_ - Snapped((pitch_ - lampWidth_) / 2, canvas_.pixelRatio);
    if (whole > 0) {
        copy(0, end);
    }
    if (part > 0 && whole < lampCount_) {
        painter.setOpacity(static_cast<double>(part) / partSteps);
        copy(std::max(end, 0.0), end + pitch_);
        painter.setOpacity(1);
    }
    if (row.state.mark >= 0 && canvas_.markHeight > 0) {
        QRectF mark = LampRect(row.lamps, row.state.mark);
        mark.setWidth(canvas_.markHeight);
        painter.fillRect(mark.adjusted(-1.5, -1, 1.5, 1), Faded(canvas_.colours.maxLevel, 0.22));
        painter.fillRect(mark, Mixed(canvas_.colours.maxLevel, Qt::white, 0.25));
    }
    if (row.state.overloaded) {
        const QRectF lamp = OverloadRect(row.lamps);
        painter.fillRect(lamp.adjusted(-2, -2, 2, 2), Faded(canvas_.colours.maxLevel, 0.25));
        painter.fillRect(lamp, Mixed(canvas_.colours.maxLevel, Qt::white, 0.4));
    }
}

} // namespace

std::unique_ptr<DisplayPicture> MakeBarsPicture() {
    return std::make_unique<BarsPicture>();
}

} // namespace kestrune
