#include "backends/sound/sound_log.h"

namespace kestrune {

Q_LOGGING_CATEGORY(soundLog, "kestrune.sound", QtCriticalMsg)

} // namespace kestrune
