#include "help/help_resources.h"

#include <QtGlobal>

// The macro declares a function, which must not lie in a namespace.
static void RegisterHelpPages() {
    Q_INIT_RESOURCE(kestrune_help);
}

namespace kestrune {

QString BuiltInHelpFolder() {
    RegisterHelpPages();
    return QStringLiteral(":/kestrune/help");
}

} // namespace kestrune
