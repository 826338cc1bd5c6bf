#include "backends/tags/logging.h"

namespace kestrune {

Q_LOGGING_CATEGORY(logTags, "kestrune.tags", QtCriticalMsg)

} // namespace kestrune
