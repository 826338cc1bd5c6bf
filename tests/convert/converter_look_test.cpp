// What the converter window looks like in each of its states, and what a screen reader and the keyboard find.
// With KESTRUNE_PICTURES set to a folder the pictures are kept there.
#include "convert/converter_window_fixture.h"

#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>

namespace kestrune {
namespace {

class ConverterLookTest : public ConverterWindowTest {
protected:
    void Keep(const QString& name) {
        const QString folder = qEnvironmentVariable("KESTRUNE_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(window.grab().save(QStringLiteral("%1/%2.png").arg(folder, name)));
        }
    }
    void Fill() {
        for (const char* name : {"Harbour steps.wav", "First light.mp3", "Paper lanterns.ogg",
                                 "A very long name of a piece that nobody would ever want to read.wma",
                                 "Music box.mp2", "Night signal.mpc", "Slow tide.wav"}) {
            MakeFile(QLatin1String(name), 40000);
        }
        Open();
        Find<QLineEdit>("txtInputFile")->setText(music.path());
        Find<QLineEdit>("TextOutPath")->setText(results.path());
        Click("ImageAllClear(0)");
    }
    // Words of labels and boxes lie inside of them.
    void ExpectNothingCutOff() {
        for (const QAbstractButton* box : window.findChildren<QAbstractButton*>()) {
            if (!box->isVisible() || box->text().isEmpty()) {
                continue;
            }
            EXPECT_LE(box->sizeHint().width(), box->width()) << box->objectName().toStdString();
            EXPECT_LE(box->fontMetrics().height(), box->height()) << box->objectName().toStdString();
        }
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->inherits("kestrune::PathLabel")) {
                EXPECT_LE(label->fontMetrics().height(), label->height())
                    << label->objectName().toStdString();
            }
        }
        for (const QWidget* child : window.findChildren<QWidget*>()) {
            if (child->isVisible()) {
                EXPECT_TRUE(child->parentWidget()->rect().contains(child->geometry()))
                    << child->objectName().toStdString();
            }
        }
    }
};

TEST_F(ConverterLookTest, NothingIsCutOffInAnyState) {
    Open();
    ExpectNothingCutOff();
    Keep(QStringLiteral("empty"));
    Fill();
    ExpectNothingCutOff();
    Keep(QStringLiteral("short"));
    Tick("chMP3");
    Tick("chOGG");
    Click("ImageUpdown");
    ExpectNothingCutOff();
    Keep(QStringLiteral("long"));
    Click("ImageOptions");
    ExpectNothingCutOff();
    Keep(QStringLiteral("panel"));
    Click("ImageSetdown");
    Click("ImageUpdown");
    pending.onRun = [this] {
        if (pending.runs == 13) {
            ExpectNothingCutOff();
            Keep(QStringLiteral("running"));
        }
    };
    Click("Image1");
    EXPECT_GE(pending.runs, 13);
    ExpectNothingCutOff();
    Keep(QStringLiteral("done"));
}

// A ring shows where the keyboard is, and only then.
TEST_F(ConverterLookTest, ARingFollowsTheKeyboard) {
    Fill();
    const auto ringed = [this](const char* name) {
        const QWidget* control = Find(name);
        const QImage picture =
            window.grab(QRect(control->mapTo(&window, QPoint()), control->size())).toImage();
        int pixels = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                pixels += picture.pixelColor(x, y) == QColor(128, 128, 255) ? 1 : 0;
            }
        }
        return pixels;
    };
    Tick("chVOX");
    const int byMouse = ringed("chVOX");
    QTest::keyClick(Find("chVOX"), Qt::Key_Tab);
    QTest::keyClick(window.focusWidget(), Qt::Key_Backtab);
    ASSERT_TRUE(Find("chVOX")->hasFocus());
    EXPECT_GT(ringed("chVOX"), byMouse + 40);
    Keep(QStringLiteral("ring_box"));
    const std::pair<const char*, const char*> rings[] = {
        {"LabelOut", "ring_path"}, {"ImageOptions", "ring_key"}, {"Image1", "ring_start"}};
    for (const auto& [name, picture] : rings) {
        const int without = ringed(name);
        Find(name)->setFocus(Qt::TabFocusReason);
        EXPECT_GT(ringed(name), without + 40) << name;
        Keep(QString::fromLatin1(picture));
    }
    Click("LabelIn");
    Keep(QStringLiteral("typing"));
}

TEST_F(ConverterLookTest, EveryControlHasANameForAScreenReader) {
    Open();
    Click("ImageUpdown");
    for (const bool panel : {false, true}) {
        if (panel) {
            Click("ImageOptions");
        }
        for (QWidget* child : window.findChildren<QWidget*>()) {
            if (!child->isVisible() || child->focusPolicy() == Qt::NoFocus || child->objectName().isEmpty() ||
                child->objectName().startsWith(QStringLiteral("qt_"))) {
                continue;
            }
            QAccessibleInterface* access = QAccessible::queryAccessibleInterface(child);
            ASSERT_NE(access, nullptr) << child->objectName().toStdString();
            EXPECT_FALSE(access->text(QAccessible::Name).isEmpty()) << child->objectName().toStdString();
        }
    }
}

// All that can be used is found by Tab alone, and the way comes back to where it began.
TEST_F(ConverterLookTest, TabComesToEveryControl) {
    Open();
    Click("ImageUpdown");
    for (const bool panel : {false, true}) {
        if (panel) {
            Click("ImageOptions");
        }
        Find("ImageUpdown")->setFocus(Qt::TabFocusReason);
        QSet<QString> reached;
        for (int steps = 0; steps < 120; ++steps) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            reached.insert(window.focusWidget()->objectName());
            EXPECT_TRUE(window.focusWidget()->isVisible());
            if (window.focusWidget() == Find("ImageUpdown")) {
                break;
            }
        }
        EXPECT_TRUE(reached.contains(QStringLiteral("ImageUpdown")));
        QStringList expected = {"LabelOut", "ImageOutPath", "chWMA",     "chULAW",
                                "Image1",   "ImageOptions", "viewEvent", "ImageQuit"};
        expected += panel ? QStringList{"opFreq(6)",          "opChannels(2)", "udWMAProfile", "ImageSet(0)",
                                        "ImageSet(1)",        "cmbG723Bits",   "cmbG726Bits",  "ImageSet(2)",
                                        "txtWMAFormatString", "Text1",         "ImageSetdown"}
                          : QStringList{"LabelIn",       "ImageinPath",      "Checkin(0)",      "Checkin(10)",
                                        "ListViewInput", "ImageAllClear(0)", "ImageAllClear(1)"};
        for (const QString& name : std::as_const(expected)) {
            EXPECT_TRUE(reached.contains(name)) << name.toStdString() << " is none of "
                                                << QStringList(reached.values()).join(u' ').toStdString();
        }
        EXPECT_EQ(reached.contains(QStringLiteral("ListViewInput")), !panel);
    }
}

TEST_F(ConverterLookTest, CornersAreRoundInBothHeights) {
    Open();
    for (int height = 0; height < 2; ++height) {
        const QImage picture = window.grab().toImage().convertToFormat(QImage::Format_ARGB32);
        const QPoint end(picture.width() - 1, picture.height() - 1);
        for (const QPoint& corner : {QPoint(0, 0), QPoint(end.x(), 0), QPoint(0, end.y()), end}) {
            EXPECT_EQ(qAlpha(picture.pixel(corner)), 0);
        }
        for (const QPoint& place : {QPoint(20, 4), end / 2, end - QPoint(20, 4)}) {
            EXPECT_EQ(qAlpha(picture.pixel(place)), 255);
        }
        Click("ImageUpdown");
    }
}

// A column that is too narrow shows another end of the text than a wide one.
TEST_F(ConverterLookTest, TheColumnOfSizesHoldsLargeOnes) {
    ConversionRow row;
    row.name = QStringLiteral("long.wav");
    Open();
    for (const char* size : {"103,359 KB", "9,999,999 KB", "  4,444 KB"}) {
        row.sizeText = QLatin1String(size);
        rules.Rows.Append({row});
    }
    const auto endOf = [this](int line) {
        const QRect cell = List()->visualRect(rules.Rows.index(line, ColumnLong));
        constexpr int margin = 5;
        const QRect end(cell.right() + 1 - List()->columnWidth(ColumnLong) + margin, cell.top(),
                        List()->columnWidth(ColumnLong) - margin, cell.height());
        return List()->viewport()->grab(end).toImage();
    };
    QList<QImage> shown;
    for (int line = 0; line < rules.Rows.Count(); ++line) {
        shown << endOf(line);
    }
    const int usual = List()->columnWidth(ColumnLong);
    List()->header()->resizeSection(ColumnName, 40);
    List()->header()->resizeSection(ColumnLong, usual + 122);
    for (int line = 0; line < rules.Rows.Count(); ++line) {
        const QImage wide = endOf(line);
        EXPECT_EQ(wide.copy(wide.width() - shown[line].width(), 0, shown[line].width(), wide.height()),
                  shown[line])
            << line;
    }
}

} // namespace
} // namespace kestrune
