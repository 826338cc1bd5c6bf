// Puts the program together: the one place that knows both a window and a backend.
#include "app/folder_lock.h"
#include "app/frm_main.h"
#include "app/prompt_dialogs.h"
#include "app/start_up.h"
#include "app/system_clock.h"
#include "backends/codecs/codec_file.h"
#include "backends/sound/alsa_player.h"
#include "backends/tags/tag_information.h"

#include <QApplication>
#include <QFont>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace kestrune;

    // Files named on the command line are passed over, and so are options.
    int onlyProgramName = argc > 0 ? 1 : 0;
    QApplication application(onlyProgramName, argv);
    QApplication::setApplicationName(QStringLiteral("Kestrune"));
    QApplication::setDesktopFileName(QStringLiteral("kestrune"));
    QApplication::setQuitOnLastWindowClosed(false);
    QFont face(QStringLiteral("Inter"));
    face.setPixelSize(11);
    QApplication::setFont(face);

    ProgramState state;
    PromptDialogs prompts;
    SetProgramState(state, QApplication::applicationDirPath());
    FolderLock lock(state.AppPath);
    if (!IsOnlyInstance(lock, prompts)) {
        return EXIT_SUCCESS;
    }

    SystemClock clock;
    const auto audioPlayer = MakeAudioPlayer();
    const auto audioFile = MakeAudioFile();
    const auto audioInfo = MakeAudioInformation();
    PlaylistRows rows;
    Options options(state);
    Admission admission(rows, *audioInfo, prompts);
    PlaylistFiles files(state, options, rows, admission, prompts);
    Transport transport({state, rows, options, *audioFile, *audioPlayer, prompts, clock});
    VolumeKnob knob{KnobGeometry{}};
    FrmMain window({state, options, rows, admission, files, transport, knob, *audioPlayer});
    prompts.SetOwner(&window);

    if (!LoadMainWindow(
            {state, options, rows, files, transport, knob, *audioFile, *audioPlayer, prompts, window})) {
        return EXIT_SUCCESS;
    }
    return QApplication::exec();
}
