#include "editors/failure_log.h"

#include <QLoggingCategory>

namespace kestrune {

namespace {
Q_LOGGING_CATEGORY(editorsLog, "kestrune.editors", QtCriticalMsg)
}

void LogEditorFailure(Outcome outcome, const char* call, const QString& subject) {
    if (outcome != Outcome::Ok) {
        qCWarning(editorsLog) << call << "failed with outcome" << static_cast<int>(outcome) << subject;
    }
}

} // namespace kestrune
