// Whether a run can write to a folder.
#pragma once

#include <QString>

namespace kestrune {

// True when a listing of the folder finds a file. An empty file of a name that no other has is put there for
// that time, so that an empty folder passes if it can be written. A folder that cannot be written passes if
// it holds files. `folder` ends in a separator.
bool IsOutputFolderValid(const QString& folder);

} // namespace kestrune
