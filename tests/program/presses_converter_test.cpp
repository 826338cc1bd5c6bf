// Every check box, option and panel key of the converter acts in every way.
#include "control_walk.h"
#include "convert/converter_window_fixture.h"

namespace kestrune {
namespace {

const QStringList formatNames = {
    QStringLiteral("chWMA"),  QStringLiteral("chMP3"),  QStringLiteral("chOGG"),  QStringLiteral("chADPCM"),
    QStringLiteral("chDSP"),  QStringLiteral("chMP2"),  QStringLiteral("chVOX"),  QStringLiteral("chGSM"),
    QStringLiteral("chG721"), QStringLiteral("chG723"), QStringLiteral("chG726"), QStringLiteral("chULAW")};

class ConverterPresses : public ConverterWindowTest {
protected:
    static int IndexOf(const QString& name) { return name.section(u'(', 1).section(u')', 0, 0).toInt(); }
    QStringList Listed() const {
        QStringList names;
        for (int row = 0; row < rules.Rows.Count(); ++row) {
            names << rules.Rows.index(row, ColumnName).data().toString();
        }
        return names;
    }
    std::optional<QString> Held(const QString& name) {
        if (name.startsWith(QLatin1String("Checkin("))) {
            // What is listed follows at once.
            return Listed().join(u' ');
        }
        if (formatNames.contains(name)) {
            return QString::number(
                int(rules.Settings.IsTicked(static_cast<OutputBox>(formatNames.indexOf(name)))));
        }
        if (name.startsWith(QLatin1String("opFreq("))) {
            return QString::number(rules.State.SampleRate);
        }
        if (name.startsWith(QLatin1String("opChannels("))) {
            return QString::number(rules.State.Channels);
        }
        if (name == QLatin1String("ImageOptions")) {
            return QString::number(int(rules.Panels.IsPictureSetShown()));
        }
        if (name == QLatin1String("ImageUpdown")) {
            return QString::number(int(rules.Panels.IsLong()));
        }
        return std::nullopt;
    }
    void Prepare(const QAbstractButton& button) {
        const bool inPanel = Find("PictureSet")->isAncestorOf(&button);
        const bool underPanel = Find("inputSide")->isAncestorOf(&button);
        if ((inPanel && !rules.Panels.IsPictureSetShown()) ||
            (underPanel && rules.Panels.IsPictureSetShown())) {
            rules.Panels.ImageOptions_Click();
        }
    }
};

TEST_F(ConverterPresses, EveryBoxOptionAndKeyActs) {
    for (int type = 0; type < inputTypeCount; ++type) {
        MakeFile(QStringLiteral("file.") + InputTypes::Caption(type).remove(u'.').toLower());
    }
    Open();
    TypePath("LabelIn", "txtInputFile", music.path());
    Click("ListViewInput");
    ASSERT_EQ(Listed().size(), inputTypeCount - 1); // AVI is not ticked
    const QStringList names = ControlWalk({.window = window,
                                           .held = [this](const QString& name) { return Held(name); },
                                           .prepare = [this](QAbstractButton& button) { Prepare(button); },
                                           .panelKeys = {QStringLiteral("ImageUpdown")}})
                                  .Run();
    EXPECT_EQ(names.size(), inputTypeCount + outputBoxCount + 8 + 2 + 2) << names.join(u' ').toStdString();
}

// A tick that the program sets is no press of the user.
TEST_F(ConverterPresses, ATickSetByTheProgramRunsNothing) {
    MakeFile(QStringLiteral("file.wav"));
    Open();
    TypePath("LabelIn", "txtInputFile", music.path());
    Click("ListViewInput");
    TickRow(1);
    ASSERT_TRUE(rules.Rows.IsChecked(1));
    emit rules.Jobs.CheckInShown(2, true);
    EXPECT_TRUE(Find<QAbstractButton>("Checkin(2)")->isChecked());
    EXPECT_FALSE(rules.Jobs.Types().IsTicked(2));
    EXPECT_TRUE(rules.Rows.IsChecked(1)); // a list that was filled anew has no ticks
    emit rules.Settings.CheckOutShown(0, true);
    EXPECT_TRUE(Find<QAbstractButton>("chWMA")->isChecked());
    EXPECT_FALSE(rules.Settings.IsTicked(static_cast<OutputBox>(0)));
}

} // namespace
} // namespace kestrune
