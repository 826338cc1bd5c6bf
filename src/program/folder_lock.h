// Keeps a second instance from running in the same folder. What counts are locks of the kernel, on the file
// "kestrune.lock" and on the folder itself: they end with the process, however it ends, and what stands in
// the file, or from whom it comes, locks nobody out.
#pragma once

#include "main_window/start_up.h"

#include <QByteArray>

namespace kestrune {

class FolderLock : public InstanceLock {
public:
    explicit FolderLock(const QString& folder);
    ~FolderLock() override;
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    // False while another instance has the folder; the call may be repeated. True also where nothing can be
    // locked, as in a folder that is not there: there is then nothing to guard. Held until this object goes.
    bool TryLock() override;

private:
    enum class Result { Locked, Taken, Impossible };
    static Result Lock(int& file);
    void TellOwner() const;
    void Release();

    QByteArray folderPath_;
    QByteArray filePath_;
    // Open files, -1 for none.
    int lockFile_ = -1;
    int folder_ = -1;
};

} // namespace kestrune
