#include "convert/passed_over.h"

namespace kestrune {

Q_LOGGING_CATEGORY(convertLog, "kestrune.convert", QtCriticalMsg)

void PassOver(Outcome outcome, const char* call, const QString& subject) {
    if (outcome != Outcome::Ok) {
        qCWarning(convertLog) << call << "failed with outcome" << static_cast<int>(outcome) << subject;
    }
}

} // namespace kestrune
