// The update check's record in "associateupdate.src": four bytes behind the file's other content.
#pragma once

#include <QString>

namespace kestrune {

struct UpdateRecord {
    bool AutoCheck = false;
    qint16 FirstRunDone = 0;
};

// A file that is missing or too short reads as zeros.
UpdateRecord ReadUpdateRecord(const QString& file);
// False when the file could not be replaced. All other bytes of the file stay.
bool WriteUpdateRecord(const QString& file, const UpdateRecord& record);

} // namespace kestrune
