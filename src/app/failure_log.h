// The log of failures that the user is not told of. One place passes a failure over, and says so here.
#pragma once

#include "components/outcome.h"

#include <QLoggingCategory>
#include <QString>

namespace kestrune {

// "kestrune.files", "kestrune.playlist" and so on, by what failed. Each is silent unless QT_LOGGING_RULES
// asks for it. Failures are warnings. Any thread.
Q_DECLARE_LOGGING_CATEGORY(logFiles)    // whole files
Q_DECLARE_LOGGING_CATEGORY(logPlaylist) // playlists
Q_DECLARE_LOGGING_CATEGORY(logCodecs)   // reading and writing of audio files
Q_DECLARE_LOGGING_CATEGORY(logSound)    // sound devices and servers
Q_DECLARE_LOGGING_CATEGORY(logTags)     // tags
Q_DECLARE_LOGGING_CATEGORY(logConvert)  // the converter's run
Q_DECLARE_LOGGING_CATEGORY(logEditors)  // the editors
Q_DECLARE_LOGGING_CATEGORY(logDesktop)  // the session bus
Q_DECLARE_LOGGING_CATEGORY(logSkin)     // pictures of the skin
Q_DECLARE_LOGGING_CATEGORY(logHelp)     // help pages
Q_DECLARE_LOGGING_CATEGORY(logProgram)  // signals of the system

using LogCategory = const QLoggingCategory& (*)();

// Goes on after a call that failed: a line in the log for anything but Ok. `call` names what was asked,
// `subject` the file that it was about, if any.
void PassOver(LogCategory log, Outcome outcome, const char* call, const QString& subject = {});

} // namespace kestrune
