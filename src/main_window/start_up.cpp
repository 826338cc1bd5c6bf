#include "main_window/start_up.h"

#include "app/paths.h"
#include "app/update_record.h"
#include "playlist/playlist_order.h"

#include <QCoreApplication>

namespace kestrune {

namespace {

constexpr double startKnobX = 640;
constexpr double startKnobY = 330;

void ChooseDevice(KSTAudioPlayer2& player, int count) {
    for (int device = 0; device < count; ++device) {
        player.SetDeviceIndex(device);
        if (player.IsDeviceUsable()) {
            return;
        }
    }
}

// The update check has no window yet, so the record is kept and nothing is shown.
void KeepUpdateRecord(const ProgramState& state) {
    const QString file = OwnFile(state.AppPath, QStringLiteral("associateupdate.src"));
    UpdateRecord record = ReadUpdateRecord(file);
    if (record.FirstRunDone != 0 && !record.AutoCheck) {
        return;
    }
    record.FirstRunDone = 1;
    WriteUpdateRecord(file, record);
}

} // namespace

void SetProgramState(ProgramState& state, const QString& executableFolder) {
    state.UpdateAtStartup = true;
    state.AppTitle = QStringLiteral("Kestrune ");
    state.AppVersion = QStringLiteral("V5.4");
    state.BuildNumber = 50410;
    state.BuildText = QStringLiteral("( Build %1 )").arg(state.BuildNumber);
    state.AppPath = FindAppPath(executableFolder);
    state.HelpFile = state.AppPath + QStringLiteral("/kestrune.chm");
    state.DesktopDir = FindDesktopDir();
    state.StartupDir = FindStartupDir();
    state.WinDir = FindConfigDir();
    state.SysDir = QStringLiteral("/usr/lib");
}

bool IsOnlyInstance(InstanceLock& lock, UserPrompts& prompts) {
    if (lock.TryLock()) {
        return true;
    }
    prompts.Message(QCoreApplication::translate("kestrune::StartUp", "This programme is running!"),
                    PromptIcon::Information);
    return false;
}

bool LoadMainWindow(const StartUpParts& parts) {
    parts.window.Hide();
    // Asking opens the devices, so it is asked once.
    const int deviceCount = parts.audioPlayer.DeviceCount();
    if (deviceCount < 1 &&
        !parts.prompts.AskYesNo(
            QCoreApplication::translate(
                "kestrune::StartUp", "There is no Audio Device installed on this machine, continue anyway? "),
            PromptIcon::Warning)) {
        return false;
    }
    ChooseDevice(parts.audioPlayer, deviceCount);
    parts.window.FillColourList();
    parts.window.PrepareDisplay();
    parts.transport.SetPlayButtonTrueFalse(ButtonPlay, false);
    parts.audioFile.SetBlockOption(1, -1);
    parts.audioFile.SetBlockOption(2, 2);
    parts.options.SetColumnsToStart();
    parts.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    parts.window.PrepareSkin();
    parts.options.SetPlaylistItem(-1);
    parts.window.PaintSkin();
    parts.options.SaveGetOptions(false, true);
    parts.window.SizeAndCentre();
    KeepUpdateRecord(parts.state);
    parts.state.UpdateAtStartup = false;
    parts.knob.MoveValumeButton(1, startKnobX, startKnobY);
    parts.window.ShowKnob();
    OrderList(parts.rows, static_cast<int>(OrderIndex::Index));
    parts.rows.SetAscending(true);
    parts.options.SaveGetCurPath(QStringLiteral("GET"));
    parts.window.Show();
    return true;
}

void UnloadMainWindow(PlaylistRows& rows, PlaylistFiles& files) {
    OrderList(rows, static_cast<int>(OrderIndex::Index));
    rows.SetAscending(true);
    files.OpenSavePlayList(QStringLiteral("SAVE"), true);
}

} // namespace kestrune
