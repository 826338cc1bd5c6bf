#include "skin/skin_log.h"

namespace kestrune {

Q_LOGGING_CATEGORY(skinLog, "kestrune.skin", QtCriticalMsg)

} // namespace kestrune
