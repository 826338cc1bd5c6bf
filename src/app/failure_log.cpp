#include "app/failure_log.h"

namespace kestrune {

Q_LOGGING_CATEGORY(logCodecs, "kestrune.codecs", QtCriticalMsg)

} // namespace kestrune
