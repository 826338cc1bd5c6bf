// Every option of the tag editor acts in every way; the cue list, the help and the about window have none.
#include "control_walk.h"
#include "editors/frm_cue_list.h"
#include "editors/frm_info.h"
#include "editors/tag_editor_fixture.h"
#include "help/help_window.h"
#include "program/frm_splash.h"

namespace kestrune {
namespace {

class EditorPresses : public TagEditorFixture {
protected:
    static QStringList WalkEmpty(QWidget& window) {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        return ControlWalk({.window = window, .held = [](const QString&) { return std::nullopt; }}).Run();
    }
};

TEST_F(EditorPresses, EveryOptionOfTheTagEditorActs) {
    FrmInfo window({state, rows, information, prompts}, nullptr);
    window.Load();
    window.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto held = [this](const QString& /*name*/) {
        return std::optional(QString::number(static_cast<int>(information.TagVersion())));
    };
    EXPECT_EQ(ControlWalk({.window = window, .held = held}).Run(), QStringList({"Option1(0)", "Option1(1)"}));
}

TEST_F(EditorPresses, TheOthersHaveNone) {
    FrmCueList cues(information, nullptr);
    cues.Load();
    EXPECT_EQ(WalkEmpty(cues), QStringList());
    HelpWindow help;
    EXPECT_EQ(WalkEmpty(help), QStringList());
    FrmSplash about(state);
    EXPECT_EQ(WalkEmpty(about), QStringList());
}

} // namespace
} // namespace kestrune
