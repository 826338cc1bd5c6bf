// Where failures of the sound devices go that the user is not told of.
#pragma once

#include <QLoggingCategory>

namespace kestrune {

Q_DECLARE_LOGGING_CATEGORY(soundLog)

} // namespace kestrune
