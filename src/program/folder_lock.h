// A lock file in the program's folder. A crash does not leave it locked.
#pragma once

#include "main_window/start_up.h"

#include <QLockFile>

namespace kestrune {

class FolderLock : public InstanceLock {
public:
    explicit FolderLock(const QString& folder);
    bool TryLock() override;

private:
    QLockFile file_;
};

} // namespace kestrune
