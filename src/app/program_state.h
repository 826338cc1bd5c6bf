// State that every part of the program shares. One object, owned by main and passed by reference.
#pragma once

#include <QString>
#include <QtGlobal>

namespace kestrune {

struct ProgramState {
    QString AppTitle;       // "Kestrune ", prefix of captions
    QString AppVersion;     // "V5.4"
    qint32 BuildNumber = 0; // 50410
    QString BuildText;      // "( Build 50410 )"
    QString AppPath;        // folder of the program's data files, without a separator at its end
    QString HelpFile;
    QString WinDir;     // folder of the user's settings
    QString SysDir;     // folder of the system's libraries
    QString DesktopDir; // the user's desktop folder
    QString StartupDir; // programs that start with the session
    bool UpdateAtStartup = false;
    int CurIndex = 0;     // 1-based row to play, 0 for none
    int LastIndex = 0;    // 1-based row last started, 0 for none
    int ClickedIndex = 0; // 1-based row last clicked
    QString CurPath;      // folder last used in a file dialog
    bool SeekDragging = false;
    quint8 BurnMode = 0;
    quint8 ConvertMode = 0;
    bool HelpOpened = false;
};

} // namespace kestrune
