// FFT Fire: flames as high as their bands, over a bed of embers.
#include "display/audio_display_picture.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace kestrune {

namespace {

constexpr double bandPitch = 4;   // pixels
constexpr double finestCells = 2; // a pixel
constexpr int noiseWidth = 128;
constexpr int noiseHeight = 128;
constexpr int heatSteps = 256;
constexpr float emberHeight = 0.075F; // of the field, where nothing burns
constexpr float keepsBurning = 0.66F; // share of the heat that is still there at the next step

// std::lerp without its care for infinities, which costs five times as much.
float Between(float from, float to, float part) {
    return from + (to - from) * part;
}

// Evenly distributed numbers that repeat: a flame looks the same in every run.
class Dice {
public:
    float Next() {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<float>(state_ >> 8U) / static_cast<float>(1U << 24U);
    }

private:
    quint32 state_ = 20011U;
};

// A row of noise between two rows of the table.
struct NoiseRow {
    NoiseRow(const std::vector<float>& noise, size_t width, float place)
        : upper(noise.data() + RowAt(place) * width),
          lower(noise.data() + (RowAt(place) + 1) % noiseHeight * width),
          part(place - std::floor(place)) {}
    static size_t RowAt(float place) { return static_cast<size_t>(place) % noiseHeight; }
    float At(size_t x) const { return Between(upper[x], lower[x], part); }

    const float* upper;
    const float* lower;
    float part;
};

// What one row of cells burns by: for each column the height of its flame and how hot it can get.
struct RowOfFire {
    float above; // the floor, as a part of the field
    NoiseRow wide;
    NoiseRow fine;
    const float* flames;
    const float* glow;
    size_t width;
};

// How far up cells can burn over a flame, noise and all.
float FlameReach(float flame) {
    return emberHeight * 2 + flame * 1.7F;
}

// Ends at 0 and not in numbers too small for the processor to be quick with.
float Cooled(float heat) {
    constexpr float unseen = 1.0F / 1024;
    const float kept = heat * keepsBurning;
    return kept > unseen ? kept : 0;
}

// Without branches and calls, so that the compiler does several cells at once: this is where the time goes.
void BurnRow(const RowOfFire& row, float* cells) {
    for (size_t x = 0; x < row.width; ++x) {
        const float flame = row.flames[x];
        const float fine = row.fine.At(x);
        const float reach =
            emberHeight * (0.6F + fine) + flame * (0.25F + 1.05F * row.wide.At(x)) * (0.70F + 0.6F * fine);
        const float left = 1 - row.above / reach;
        const float root = std::sqrt(left > 0 ? left : 0);
        const float heat = root * row.glow[x] * (0.62F + 0.6F * fine);
        const float kept = Cooled(cells[x]);
        const float hotter = heat > kept ? heat : kept;
        const float burnt = hotter < 1 ? hotter : 1;
        cells[x] = row.above > FlameReach(flame) ? kept : burnt;
    }
}

class FirePicture : public DisplayPicture {
public:
    FirePicture() { MakeNoise(); }
    int BandRoom() const override { return bandRoom_; }
    void Lay(const DisplayCanvas& canvas) override;
    void PaintGround(QPainter& painter) override;
    QRegion Follow(const AudioDisplay& display, double part) override;
    void Clear() override;
    void PaintMoving(QPainter& painter) override;

private:
    void MakeNoise();
    void MakePalette();
    std::vector<float> NoiseOverColumns(float stretch, float offset) const;
    void SpreadBands();
    void Burn();
    void Colour();

    DisplayCanvas canvas_;
    int bandRoom_ = 2;
    float cellsOfPixel_ = 1;
    int width_ = 1; // cells
    int height_ = 1;
    float step_ = 0;
    bool isBurning_ = false;
    ShownBands shown_;
    std::vector<float> noise_;
    std::vector<float> wideNoise_; // as it lies over the columns, row by row
    std::vector<float> fineNoise_;
    std::vector<float> flames_; // height of each column, 0 to 1
    std::vector<float> glow_;   // how hot each column can get
    std::vector<float> marks_;
    std::vector<float> heat_; // row by row from the top, 0 to 1
    std::array<QRgb, heatSteps> palette_{};
    QImage image_;
};

void FirePicture::Lay(const DisplayCanvas& canvas) {
    canvas_ = canvas;
    bandRoom_ = std::max(2, static_cast<int>(canvas.field.width() / bandPitch));
    bandRoom_ -= bandRoom_ % canvas.channels;
    // A cell to a device pixel, but not beyond what the eye makes out in a flame.
    cellsOfPixel_ = static_cast<float>(std::clamp(canvas.pixelRatio, 1.0, finestCells));
    width_ = std::max(1, static_cast<int>(canvas.field.width() * cellsOfPixel_));
    height_ = std::max(1, static_cast<int>(canvas.field.height() * cellsOfPixel_));
    shown_.Lay(bandRoom_);
    flames_.assign(static_cast<size_t>(width_), 0);
    glow_.assign(static_cast<size_t>(width_), 0);
    wideNoise_ = NoiseOverColumns(1.05F, 0);
    fineNoise_ = NoiseOverColumns(2.3F, 40);
    marks_.assign(static_cast<size_t>(width_), 0);
    heat_.assign(static_cast<size_t>(width_) * static_cast<size_t>(height_), 0);
    image_ = QImage(width_, height_, QImage::Format_ARGB32_Premultiplied);
    MakePalette();
    Clear();
}

void FirePicture::Clear() {
    shown_.Clear();
    SpreadBands();
    std::fill(heat_.begin(), heat_.end(), 0.0F);
    isBurning_ = false;
    Burn();
    Burn();
    Colour();
}

// Smooth noise of three octaves that fits to itself at all sides.
void FirePicture::MakeNoise() {
    noise_.assign(noiseWidth * noiseHeight, 0);
    Dice dice;
    float weight = 0.55F;
    for (int cells = 16; cells <= 64; cells *= 2) {
        std::vector<float> grid(static_cast<size_t>(cells) * static_cast<size_t>(cells));
        for (float& value : grid) {
            value = dice.Next();
        }
        const auto at = [&grid, cells](int x, int y) {
            return grid[static_cast<size_t>(y % cells) * static_cast<size_t>(cells) +
                        static_cast<size_t>(x % cells)];
        };
        const float scale = static_cast<float>(cells) / noiseWidth;
        for (int y = 0; y < noiseHeight; ++y) {
            for (int x = 0; x < noiseWidth; ++x) {
                const float gridX = static_cast<float>(x) * scale;
                const float gridY = static_cast<float>(y) * scale;
                const int left = static_cast<int>(gridX);
                const int top = static_cast<int>(gridY);
                const auto eased = [](float part) { return part * part * (3 - 2 * part); };
                const float partX = eased(gridX - static_cast<float>(left));
                const float partY = eased(gridY - static_cast<float>(top));
                const float upper = Between(at(left, top), at(left + 1, top), partX);
                const float lower = Between(at(left, top + 1), at(left + 1, top + 1), partX);
                noise_[static_cast<size_t>(y) * noiseWidth + static_cast<size_t>(x)] +=
                    weight * Between(upper, lower, partY);
            }
        }
        weight /= 2;
    }
}

// All rows of the noise, with a value for each column of cells.
std::vector<float> FirePicture::NoiseOverColumns(float stretch, float offset) const {
    std::vector<float> over;
    over.reserve(static_cast<size_t>(noiseHeight) * static_cast<size_t>(width_));
    for (int y = 0; y < noiseHeight; ++y) {
        const float* row = noise_.data() + static_cast<size_t>(y) * noiseWidth;
        for (int x = 0; x < width_; ++x) {
            const float place = static_cast<float>(x) / cellsOfPixel_ * stretch + offset;
            const auto left = static_cast<unsigned>(place);
            over.push_back(Between(row[left % noiseWidth], row[(left + 1) % noiseWidth],
                                   place - static_cast<float>(left)));
        }
    }
    return over;
}

// From dark over embers to the colour of high levels and to white heat.
void FirePicture::MakePalette() {
    const QColor flame = canvas_.colours.maxLevel;
    const QColor ember =
        QColor::fromHsvF(std::fmod(flame.hsvHueF() + 1.0F - 0.055F, 1.0F),
                         std::min(1.0F, flame.hsvSaturationF() * 1.18F), flame.valueF() * 0.80F);
    const QColor deep = Mixed(ember, canvas_.colours.levels, 0.22);
    struct Stop {
        double heat;
        QColor colour;
        double alpha;
    };
    const std::array<Stop, 6> stops = {{{0, deep, 0},
                                        {0.16, deep, 0.42},
                                        {0.36, ember, 0.85},
                                        {0.62, flame, 1},
                                        {0.84, Mixed(flame, Qt::white, 0.55), 1},
                                        {1, Mixed(flame, Qt::white, 0.9), 1}}};
    for (int i = 0; i < heatSteps; ++i) {
        const double heat = static_cast<double>(i) / (heatSteps - 1);
        size_t next = 1;
        while (next + 1 < stops.size() && stops[next].heat < heat) {
            ++next;
        }
        const Stop& low = stops[next - 1];
        const Stop& high = stops[next];
        const double part = std::clamp((heat - low.heat) / (high.heat - low.heat), 0.0, 1.0);
        const QColor colour =
            Faded(Mixed(low.colour, high.colour, part), low.alpha + (high.alpha - low.alpha) * part);
        palette_[static_cast<size_t>(i)] = qPremultiply(colour.rgba());
    }
}

// A warm light over the embers, cool where the flames have their foot.
void FirePicture::PaintGround(QPainter& painter) {
    const QRectF& field = canvas_.field;
    QLinearGradient glow(field.bottomLeft(), field.topLeft());
    glow.setColorAt(0, Faded(canvas_.colours.maxLevel, 0.20));
    glow.setColorAt(0.35, Faded(canvas_.colours.maxLevel, 0.05));
    glow.setColorAt(1, Faded(canvas_.colours.maxLevel, 0));
    painter.fillRect(field, glow);
}

// From bands to columns, without steps between neighbours.
void FirePicture::SpreadBands() {
    const int columns = shown_.Count();
    const auto level = [this](int column) { return static_cast<float>(shown_.At(column).level); };
    for (int x = 0; x < width_; ++x) {
        const float place =
            (static_cast<float>(x) + 0.5F) * static_cast<float>(columns) / static_cast<float>(width_) - 0.5F;
        const float inside = std::clamp(place, 0.0F, static_cast<float>(columns - 1));
        const auto left = static_cast<int>(inside);
        const int right = std::min(left + 1, columns - 1);
        const float part = inside - static_cast<float>(left);
        const float eased = part * part * (3 - 2 * part);
        flames_[static_cast<size_t>(x)] = Between(level(left), level(right), eased);
        const float strength = 0.25F + flames_[static_cast<size_t>(x)] * 1.3F;
        glow_[static_cast<size_t>(x)] = 0.40F + 0.52F * std::min(1.0F, strength);
        marks_[static_cast<size_t>(x)] =
            static_cast<float>(std::max(shown_.At(left).peak, shown_.At(right).peak));
    }
}

// Heat sinks from the foot of a flame to its tip; noise that drifts upward tears the tips.
void FirePicture::Burn() {
    const auto width = static_cast<size_t>(width_);
    const auto rows = static_cast<float>(height_);
    const float highest = *std::max_element(flames_.begin(), flames_.end());
    for (int y = 0; y < height_; ++y) {
        const float depth = static_cast<float>(y) / cellsOfPixel_;
        const float above = (rows - 0.5F - static_cast<float>(y)) / rows; // the floor is 0
        float* cells = heat_.data() + static_cast<size_t>(y) * width;
        if (above > FlameReach(highest)) {
            for (size_t x = 0; x < width; ++x) {
                cells[x] = Cooled(cells[x]);
            }
            continue;
        }
        BurnRow({above, NoiseRow(wideNoise_, width, depth * 0.45F + step_ * 3),
                 NoiseRow(fineNoise_, width, depth * 1.1F + step_ * 6.5F), flames_.data(), glow_.data(),
                 width},
                cells);
    }
    // The noise meets itself again after as many steps as it has rows, times two for the half rows.
    step_ = std::fmod(step_ + 1, noiseHeight * 2.0F);
}

void FirePicture::Colour() {
    for (int y = 0; y < height_; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image_.scanLine(y));
        const float* heat = heat_.data() + static_cast<size_t>(y) * static_cast<size_t>(width_);
        for (int x = 0; x < width_; ++x) {
            line[x] = palette_[static_cast<size_t>(heat[x] * (heatSteps - 1))];
        }
    }
}

QRegion FirePicture::Follow(const AudioDisplay& display, double part) {
    shown_.Approach(display, part);
    const bool burns = !shown_.AreAtRest();
    if (!burns && !isBurning_) {
        return {};
    }
    isBurning_ = burns;
    SpreadBands();
    Burn();
    Colour();
    return canvas_.field.toAlignedRect();
}

void FirePicture::PaintMoving(QPainter& painter) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(canvas_.field, image_);
    if (canvas_.markHeight == 0) {
        return;
    }
    // Sparks over the flames.
    const double height = canvas_.markHeight / 2.0;
    const QColor spark = Mixed(canvas_.colours.maxLevel, Qt::white, 0.2);
    const QRectF& field = canvas_.field;
    for (double x = 1; x < field.width() - 1; x += bandPitch) {
        const double mark = marks_[static_cast<size_t>(x / field.width() * width_)];
        if (mark > emberHeight * 1.5) {
            painter.fillRect(
                QRectF(field.left() + x, field.bottom() - mark * field.height() * 0.97 - height, 2, height),
                Faded(spark, 0.35 + 0.5 * mark));
        }
    }
}

} // namespace

std::unique_ptr<DisplayPicture> MakeFirePicture() {
    return std::make_unique<FirePicture>();
}

} // namespace kestrune
