// Puts the program together: the one place that knows both a window and a backend.
#include "backends/audio_file/codec_file.h"
#include "backends/sound/alsa_player.h"
#include "backends/spectrum/tx_spectrum.h"
#include "backends/tags/tag_information.h"
#include "backends/transform/stereo_to_mono.h"
#include "desktop/media_control.h"
#include "desktop/mpris_service.h"
#include "display/audio_display.h"
#include "main_window/frm_main.h"
#include "main_window/recording_tool.h"
#include "main_window/shut_down.h"
#include "main_window/start_up.h"
#include "playback/display_feed.h"
#include "program/application_events.h"
#include "program/converter_opener.h"
#include "program/end_signals.h"
#include "program/folder_lock.h"
#include "program/prompt_dialogs.h"
#include "program/system_clock.h"
#include "program/tag_editor_opener.h"
#include "program/tool_window_dialogs.h"
#include "skin/dialog_frame.h"
#include "skin/skin_style.h"

#include <QApplication>
#include <QDBusConnection>
#include <QSessionManager>
#include <QTimer>
#include <cstdlib>

namespace kestrune {
namespace {

// Joins the window and the desktop's player controls. The bus is asked once the window is on screen.
void ConnectDesktop(MediaControl& media, MprisService& mpris, FrmMain& window) {
    QObject::connect(&media, &MediaControl::VolumeRequested, &window, &FrmMain::SetVolume);
    QObject::connect(&window, &FrmMain::VolumeChanged, &media, &MediaControl::Refresh);
    QObject::connect(&media, &MediaControl::RaiseRequested, &window, &FrmMain::Raise);
    QObject::connect(&media, &MediaControl::QuitRequested, &window, &QWidget::close);
    QMetaObject::invokeMethod(
        &mpris, [&mpris] { mpris.Start(QDBusConnection::sessionBus()); }, Qt::QueuedConnection);
}

// Leaves open dialogs and menus unasked. A long task that lets events through does not return for that, and
// the system that asked does not wait for ever.
void EndProcess() {
    constexpr int graceMs = 1000;
    QTimer::singleShot(graceMs, [] { std::_Exit(EXIT_SUCCESS); });
    QCoreApplication::exit(EXIT_SUCCESS);
}

// Joins the end of the program and all that may ask for it but the window's own close button.
void ConnectEnd(ShutDown& shutDown, EndSignals& endSignals, FrmMain& window) {
    const auto store = [&shutDown](const QSessionManager& /*session*/) { shutDown.StoreForSessionEnd(); };
    QObject::connect(&window, &FrmMain::Unloaded, &window, [&shutDown] { shutDown.WindowClosed(); });
    QObject::connect(&endSignals, &EndSignals::EndRequested, &window, [&shutDown] { shutDown.End(); });
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &window, store);
    QObject::connect(qApp, &QGuiApplication::saveStateRequest, &window, store);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window, [&shutDown] { shutDown.EventsEnded(); });
}

// The toolkit puts its pictures into memory that it shares with the X server, and before it paints there
// again it waits for the server's answer. For small pictures many times a second that costs more than to send
// them. It looks at this when it connects.
constexpr const char* withoutSharedPictures = "QT_XCB_NO_MITSHM";

} // namespace
} // namespace kestrune

int main(int argc, char** argv) {
    using namespace kestrune;

    // Files named on the command line are passed over, and so are options.
    int onlyProgramName = argc > 0 ? 1 : 0;
    const bool isChosen = qEnvironmentVariableIsSet(withoutSharedPictures);
    if (!isChosen) {
        qputenv(withoutSharedPictures, "1");
    }
    QApplication application(onlyProgramName, argv);
    if (!isChosen) {
        // Programs that are started from here have their own choice.
        qunsetenv(withoutSharedPictures);
    }
    QApplication::setApplicationName(QStringLiteral("Kestrune"));
    QApplication::setDesktopFileName(QStringLiteral("kestrune"));
    QApplication::setQuitOnLastWindowClosed(false);
    ApplySkinStyle(application);
    FrameAllDialogs(application);

    ProgramState state;
    PromptDialogs prompts;
    SetProgramState(state, QApplication::applicationDirPath());
    FolderLock lock(state.AppPath);
    if (!IsOnlyInstance(lock, prompts)) {
        return EXIT_SUCCESS;
    }

    SystemClock clock;
    ApplicationEvents pending;
    const auto audioPlayer = MakeAudioPlayer();
    StereoToMonoTransform audioTransform;
    const auto audioFile = MakeAudioFile();
    const auto audioInfo = MakeAudioInformation();
    PlaylistRows rows;
    Options options(state);
    Admission admission(rows, *audioInfo, prompts);
    PlaylistFiles files(state, options, rows, admission, prompts);
    Transport transport({state, rows, options, *audioFile, *audioPlayer, prompts, clock});
    PlaylistEditing editing(
        state, rows, files, prompts,
        {[&transport] { return transport.State().PlayFile; }, [&transport] { transport.StopPlay(); }});
    TxSpectrum spectrum;
    AudioDisplay display(spectrum, clock);
    const DisplayFeed feed({transport, *audioFile, *audioPlayer, audioTransform, display, pending});
    QObject::connect(&feed, &DisplayFeed::Paused, &display, &AudioDisplay::FallToRest);
    ToolWindowDialogs tools(state);
    const ConverterOpener converter({state, rows, prompts, pending, clock, MakeAudioFile});
    tools.SetShowing(ToolWindow::ConverterfrmDialog, [&converter](QWidget* owner) { converter.Show(owner); });
    const TagEditorOpener tagEditor({state, rows, prompts, MakeAudioInformation});
    tools.SetShowing(ToolWindow::frmInfo, [&tagEditor](QWidget* owner) { tagEditor.Show(owner); });
    RecordingTool recording(tools, prompts);
    PlayButtons buttons({state, rows, options, clock, transport, recording});
    MenuRouting routing(state, buttons, rows, tools, prompts);
    VolumeKnob knob{KnobGeometry{}};
    ListTip listTip(clock);
    const MainPictures pictures;
    FrmMain window({pictures, state, options, rows, admission, files, editing, transport, buttons, routing,
                    knob, listTip, display, *audioPlayer});
    prompts.SetOwner(&window);
    tools.SetOwner(&window);

    if (!LoadMainWindow(
            {state, options, rows, files, transport, knob, *audioFile, *audioPlayer, prompts, window})) {
        return EXIT_SUCCESS;
    }
    ShutDown shutDown(rows, files, EndProcess);
    EndSignals endSignals;
    ConnectEnd(shutDown, endSignals, window);
    const auto playingInfo = MakeAudioInformation();
    MediaControl media({options, rows, admission, files, transport, buttons, knob, *audioFile, *playingInfo,
                        [] { return QApplication::activeModalWidget() != nullptr; }});
    MprisService mpris(media);
    ConnectDesktop(media, mpris, window);
    return QApplication::exec();
}
