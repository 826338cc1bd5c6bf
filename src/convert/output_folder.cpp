#include "convert/output_folder.h"

#include "app/failure_log.h"
#include "convert/folder_listing.h"

#include <QFile>
#include <QUuid>

namespace kestrune {

bool IsOutputFolderValid(const QString& folder) {
    QFile probe(folder + QStringLiteral("kestrune-") + QUuid::createUuid().toString(QUuid::WithoutBraces) +
                QStringLiteral(".tmp"));
    const bool isMade = probe.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    probe.close();
    const bool holdsFiles = HoldsFiles(folder);
    if (!isMade || !probe.remove()) {
        qCWarning(logConvert) << "probe of the output folder:" << probe.fileName() << probe.errorString();
    }
    return holdsFiles;
}

} // namespace kestrune
