// Where the pages lie that come with the program.
#pragma once

#include <QString>

namespace kestrune {

// The folder of the built-in help for HelpBook::Open. Registers it on the first call.
QString BuiltInHelpFolder();

} // namespace kestrune
