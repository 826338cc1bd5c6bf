#include "app/failure_log.h"

namespace kestrune {

Q_LOGGING_CATEGORY(logFiles, "kestrune.files", QtCriticalMsg)
Q_LOGGING_CATEGORY(logPlaylist, "kestrune.playlist", QtCriticalMsg)
Q_LOGGING_CATEGORY(logCodecs, "kestrune.codecs", QtCriticalMsg)
Q_LOGGING_CATEGORY(logSound, "kestrune.sound", QtCriticalMsg)
Q_LOGGING_CATEGORY(logTags, "kestrune.tags", QtCriticalMsg)
Q_LOGGING_CATEGORY(logConvert, "kestrune.convert", QtCriticalMsg)
Q_LOGGING_CATEGORY(logEditors, "kestrune.editors", QtCriticalMsg)
Q_LOGGING_CATEGORY(logDesktop, "kestrune.desktop", QtCriticalMsg)
Q_LOGGING_CATEGORY(logSkin, "kestrune.skin", QtCriticalMsg)
Q_LOGGING_CATEGORY(logHelp, "kestrune.help", QtCriticalMsg)
Q_LOGGING_CATEGORY(logProgram, "kestrune.program", QtCriticalMsg)

void PassOver(LogCategory log, Outcome outcome, const char* call, const QString& subject) {
    if (outcome != Outcome::Ok) {
        qCWarning(log) << call << "failed with outcome" << static_cast<int>(outcome) << subject;
    }
}

} // namespace kestrune
