// A tip shows the signs of a file's texts as they stand: a name may look like markup.
#include "convert/converter_window_fixture.h"
#include "editors/frm_info.h"
#include "editors/tag_editor_fixture.h"
#include "main_window/main_window_fixture.h"

#include <QHelpEvent>
#include <QToolTip>

namespace kestrune {
namespace {

const QString marked = QStringLiteral("<b>bold</b>.wav");

// The tip that comes up over a widget, as letters and not as what they could mean.
void ExpectPlainTip(QWidget* widget, const QPoint& place) {
    QToolTip::hideText();
    QHelpEvent event(QEvent::ToolTip, place, widget->mapToGlobal(place));
    QCoreApplication::sendEvent(widget, &event);
    ASSERT_TRUE(QToolTip::text().contains(marked)) << QToolTip::text().toStdString();
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top->inherits("QTipLabel")) {
            const auto* tip = qobject_cast<QLabel*>(top);
            EXPECT_EQ(tip->textFormat(), Qt::PlainText);
            EXPECT_GE(tip->width(), tip->fontMetrics().horizontalAdvance(marked));
        }
    }
}

class MainWindowTips : public MainWindowTest {};

TEST_F(MainWindowTips, ArePlain) {
    Start();
    PlaylistRow row;
    row.fields[RowText] = QStringLiteral("1.One");
    row.fields[SubFormats] = marked;
    rows.Append(row);
    ExpectPlainTip(List()->viewport(), RowPoint(1));
    auto* format = Find<QLabel>(QStringLiteral("LabelFormat"));
    emit transport.KhzShown(true, marked);
    ExpectPlainTip(format, format->rect().center());
}

class ConverterTips : public ConverterWindowTest {};

TEST_F(ConverterTips, ArePlain) {
    Open();
    emit rules.Jobs.ToolTipShown(QStringLiteral("/music/") + marked);
    ExpectPlainTip(List()->viewport(), {40, 60});
    const QString path = QString(60, QLatin1Char('m')) + marked;
    TypePath("LabelOut", "TextOutPath", path);
    QTest::keyClick(Find("TextOutPath"), Qt::Key_Return);
    ExpectPlainTip(Find("LabelOut"), {20, 10});
    rules.Settings.SetFormatText(FormatBox::txtWMAFormatString, path);
    rules.Panels.ImageOptions_Click();
    ExpectPlainTip(Find("txtWMAFormatString"), {20, 10});
}

class EditorTips : public TagEditorFixture {};

TEST_F(EditorTips, ArePlain) {
    rows.SetField(2, SubFileName, marked);
    FrmInfo window({state, rows, information, prompts}, nullptr);
    window.Load();
    window.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto* file = window.findChild<QLineEdit*>(QStringLiteral("aFile"));
    ExpectPlainTip(file, {20, 10});
}

} // namespace
} // namespace kestrune
