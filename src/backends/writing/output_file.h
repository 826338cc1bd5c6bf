// The file that an encoder writes to, and how it comes to its name.
#pragma once

#include "components/outcome.h"

#include <QString>

#include <memory>

class QFile;
class QIODevice;

namespace kestrune {

class FileReplacement;

// A new file stands under its name from Open on, and stays there however far it was written. An existing one
// is left as it is until Commit puts the new content in its place as FileReplacement does that keeps the
// name, so that it can be read meanwhile, and the end is never waited for longer than the disk takes. A link
// stays a link: what it names is written. One thread at a time, which may change from call to call.
class OutputFile {
public:
    OutputFile();
    // Without Commit an existing file is kept, and a new one stays as far as it was written.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Once. WriteFailed when the path cannot be written: a folder, a device, a file or folder that is write
    // protected, a folder that does not exist. Nothing was made then.
    Outcome Open(const QString& path);
    // Open for reading and writing, empty at first; lives as long as this.
    QIODevice& Device();
    // Makes it empty again. False if that failed.
    bool Clear();
    // Keeps only the first bytes. False if that failed.
    bool Shorten(qint64 bytes);
    // Brings all to the disk. WriteFailed when something could not be written; then as without Commit.
    Outcome Commit();
    // Takes back what Open made.
    void Discard();

private:
    Outcome OpenNew(const QString& path);
    Outcome OpenBeside(const QString& path);

    QString path_;                                 // with links followed
    std::unique_ptr<FileReplacement> replacement_; // of an existing file
    std::unique_ptr<QFile> file_; // what is written to; after the replacement, which has it open
};

} // namespace kestrune
