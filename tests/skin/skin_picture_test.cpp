#include "skin/made_strip.h"
#include "skin/picture_label.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QPainter>
#include <gmock/gmock.h>

using namespace kestrune;

namespace {

// Keeps what the skin's log says while it lives.
class LogLines {
public:
    LogLines() {
        lines_ = &kept_;
        QLoggingCategory::setFilterRules(QStringLiteral("kestrune.skin=true"));
        before_ = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { lines_->append(text); });
    }
    ~LogLines() {
        qInstallMessageHandler(before_);
        QLoggingCategory::setFilterRules({});
    }
    qsizetype Count() const { return kept_.size(); }

private:
    static inline QStringList* lines_ = nullptr;
    QStringList kept_;
    QtMessageHandler before_ = nullptr;
};

QImage Painted(const SkinPicture& picture, qreal ratio, const QPoint& at, const QRect& piece) {
    QImage image(QSize(40, 60) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    picture.Paint(painter, at, piece);
    return image;
}

} // namespace

TEST(SkinPicture, TheSizeIsTheViewBox) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    EXPECT_TRUE(strip.IsValid());
    EXPECT_EQ(strip.Size(), QSize(100, 60));
}

TEST(SkinPicture, ACutHasTheScalesPixels) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        const QPixmap cut = strip.Cut({20, 0, 20, 20}, ratio);
        EXPECT_EQ(cut.devicePixelRatio(), ratio);
        EXPECT_EQ(cut.size(), QSize(20, 20) * ratio);
        const QImage image = cut.toImage();
        EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::green)) << ratio;
        EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::green)) << ratio;
    }
}

TEST(SkinPicture, ACutOutsideTheStripIsNullAndALineInTheLog) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    const LogLines log;
    for (const QRect& outside : {QRect(90, 0, 20, 20), QRect(0, 50, 20, 20), QRect(-1, 0, 5, 5), QRect(),
                                 QRect(500, 500, 1, 1), QRect(5, 5, -3, 4)}) {
        EXPECT_TRUE(strip.Cut(outside, 1).isNull());
    }
    EXPECT_EQ(log.Count(), 6);
    EXPECT_FALSE(strip.Cut({80, 40, 20, 20}, 1).isNull());
    EXPECT_EQ(log.Count(), 6);
}

TEST(SkinPicture, AFileThatIsNoPictureGivesNothing) {
    const LogLines log;
    const SkinPicture none(QStringLiteral(":/no/such/picture.svg"));
    EXPECT_FALSE(none.IsValid());
    EXPECT_TRUE(none.Cut({0, 0, 1, 1}, 1).isNull());
    EXPECT_EQ(Painted(none, 1, {}, {0, 0, 1, 1}).pixelColor(0, 0), QColor(Qt::black));
    EXPECT_GE(log.Count(), 3);
}

TEST(SkinPicture, PaintsOnWholePixelsAtWholeScales) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    for (const int ratio : {1, 2}) {
        const QImage image = Painted(strip, ratio, {5, 7}, {0, 30, 20, 25});
        // The line is one unit wide at 3,33 of the strip: at 8,10 of the picture.
        EXPECT_EQ(image.pixelColor(8 * ratio, 10 * ratio), QColor(Qt::white));
        EXPECT_EQ(image.pixelColor(8 * ratio - 1, 10 * ratio), QColor(Qt::black));
        EXPECT_EQ(image.pixelColor(9 * ratio, 10 * ratio), QColor(Qt::black));
        EXPECT_EQ(image.pixelColor(8 * ratio, 10 * ratio - 1), QColor(Qt::black));
    }
}

TEST(SkinPicture, APieceBetweenPixelsIsDrawnAsItsLinesLie) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    // At 1.5 the line lies from 7.5 to 9 when the piece is put at x 2, and from 6 to 7.5 when it is put at 1.
    const QImage odd = Painted(strip, 1.5, {2, 0}, {0, 30, 20, 25});
    EXPECT_NEAR(odd.pixelColor(7, 20).red(), 128, 2);
    EXPECT_EQ(odd.pixelColor(8, 20).red(), 255);
    EXPECT_EQ(odd.pixelColor(9, 20).red(), 0);
    const QImage even = Painted(strip, 1.5, {1, 0}, {0, 30, 20, 25});
    EXPECT_EQ(even.pixelColor(6, 20).red(), 255);
    EXPECT_NEAR(even.pixelColor(7, 20).red(), 128, 2);
}

TEST(PictureLabel, ShowsItsCutAndClears) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    QWidget window;
    window.resize(60, 60);
    PictureLabel label(strip, &window);
    label.setGeometry(10, 10, 20, 20);
    EXPECT_EQ(ColourAt(window, {15, 15}), QColor(Qt::black));
    label.SetCut({40, 0, 20, 20});
    EXPECT_EQ(ColourAt(window, {15, 15}), QColor(Qt::blue));
    label.Clear();
    EXPECT_EQ(ColourAt(window, {15, 15}), QColor(Qt::black));
}

TEST(PictureLabel, APictureClipMovesAndSizesTheLabel) {
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    QWidget window;
    window.resize(60, 60);
    PictureLabel label(strip, &window);
    label.setGeometry(10, 10, 5, 5);
    label.GetPicClip(20, 0, 12, 14, 0, -1);
    EXPECT_EQ(label.geometry(), QRect(0, 10, 12, 14));
    EXPECT_EQ(ColourAt(window, {11, 23}), QColor(Qt::green));
    label.GetImageClip(40, 0);
    EXPECT_EQ(label.geometry(), QRect(0, 10, 12, 14));
    EXPECT_EQ(label.CurrentCut(), QRect(40, 0, 12, 14));
}

TEST(PictureLabel, RepaintsOnlyForAnotherCut) {
    struct Counted : PictureLabel {
        using PictureLabel::PictureLabel;
        int paints = 0;
        void paintEvent(QPaintEvent* event) override {
            ++paints;
            PictureLabel::paintEvent(event);
        }
    };
    const MadeStrip made;
    const SkinPicture strip(made.StripFile());
    QWidget window;
    window.resize(60, 60);
    Counted label(strip, &window);
    label.setGeometry(10, 10, 20, 20);
    window.show();
    QCoreApplication::processEvents();
    label.SetCut({40, 0, 20, 20});
    QCoreApplication::processEvents();
    const int before = label.paints;
    label.SetCut({40, 0, 20, 20});
    QCoreApplication::processEvents();
    EXPECT_EQ(label.paints, before);
    label.SetCut({20, 0, 20, 20});
    QCoreApplication::processEvents();
    EXPECT_EQ(label.paints, before + 1);
}
