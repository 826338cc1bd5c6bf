// Every control of the main window can be found by its name.
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

class ControlNameTest : public MainWindowTest, public testing::WithParamInterface<const char*> {};

TEST_P(ControlNameTest, Exists) {
    Start();
    EXPECT_EQ(window.findChildren<QWidget*>(QString::fromLatin1(GetParam())).size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Single, ControlNameTest,
                         testing::Values("ListViewPlaylist", "LabelName", "LabelCaption", "PictureSelToal",
                                         "LabelTemp", "ListView1", "Command1", "PictureStep",
                                         "PictureStepLine1", "PictureStepLine2", "ImageVolumeButtonA",
                                         "ImageVolumeButtonB", "KSTAudioDisplay1", "KSTEqualizer21",
                                         "ImageChgLstBnd", "Image44100", "ImageKBPS", "mnuFile", "mnuPlay",
                                         "mnuOptions", "popmn"));

struct ControlArray {
    const char* name;
    int count;
};

class ControlArrayTest : public MainWindowTest, public testing::WithParamInterface<ControlArray> {};

TEST_P(ControlArrayTest, HasEachIndexOnceAndNoFurther) {
    Start();
    for (int i = 0; i < GetParam().count; ++i) {
        const QString name = QStringLiteral("%1(%2)").arg(QLatin1String(GetParam().name)).arg(i);
        EXPECT_EQ(window.findChildren<QWidget*>(name).size(), 1) << name.toStdString();
    }
    const QString behind = QStringLiteral("%1(%2)").arg(QLatin1String(GetParam().name)).arg(GetParam().count);
    EXPECT_EQ(window.findChild<QWidget*>(behind), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Arrays, ControlArrayTest,
                         testing::Values(ControlArray{"ImageListCmd", 6}, ControlArray{"ImagePlayButton", 6},
                                         ControlArray{"ImageSmall", 3}, ControlArray{"ImageRepeatModeBut", 3},
                                         ControlArray{"ImageWin", 2}, ControlArray{"LabelMenu", 8},
                                         ControlArray{"LabelSeltal", 2}, ControlArray{"ImageData", 4},
                                         ControlArray{"ImageData1", 2}, ControlArray{"ImageVol", 4}));

class ActionNameTest : public MainWindowTest, public testing::WithParamInterface<const char*> {};

TEST_P(ActionNameTest, Exists) {
    Start();
    EXPECT_EQ(window.findChildren<QAction*>(QString::fromLatin1(GetParam())).size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Entries, ActionNameTest,
                         testing::Values("mnuStart", "mnuPause", "mnuStop", "mnfile(10)", "mOptions(3)",
                                         "mOptions(4)", "mOptions(5)", "mOptions(12)", "mnplaylistitem(0)",
                                         "mnplaylistitem(6)", "mnplaylistitem(8)", "popplaylistitem(1)",
                                         "mnSort(0)", "mnSort(5)", "mnpopsort(1)"));

} // namespace
} // namespace kestrune
