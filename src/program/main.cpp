// Puts the program together with this machine's components and shows its window.
#include "desktop/mpris_service.h"
#include "main_window/frm_main.h"
#include "main_window/shut_down.h"
#include "program/end_signals.h"
#include "program/folder_lock.h"
#include "program/machine_components.h"
#include "program/main_window_parts.h"
#include "program/program.h"
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

    MachineComponents components;
    ProgramState state;
    SetProgramState(state, QApplication::applicationDirPath());
    FolderLock lock(state.AppPath);
    if (!IsOnlyInstance(lock, components.Prompts())) {
        return EXIT_SUCCESS;
    }

    ToolWindowDialogs tools;
    Program program(components, state, tools);
    const MainPictures pictures;
    FrmMain window(MainWindowParts(program, pictures));
    components.Prompts().SetOwner(&window);
    tools.SetMainWindow({state, program.rows, components}, &window);
    if (!program.Load(window)) {
        return EXIT_SUCCESS;
    }
    ShutDown shutDown(program.rows, program.files, EndProcess);
    EndSignals endSignals;
    ConnectEnd(shutDown, endSignals, window);
    MprisService mpris(program.media);
    ConnectDesktop(program.media, mpris, window);
    return QApplication::exec();
}
