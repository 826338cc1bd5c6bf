// Puts a new file in the place of an old one, in one step.
#pragma once

#include "backends/tags/file_pieces.h"
#include "components/outcome.h"

#include <QByteArray>
#include <QString>

namespace kestrune {

// The new file comes about beside the old one, without a name or under a hidden one, and takes its place only
// when all of it is on the disk: whatever ends the process or the machine, there is the old file or the new
// one. A link is followed and stays. Permissions, access lists and other attributes go over to the new file,
// and the owner as far as the system allows it.
// Where a new file cannot take the place, the old one gets the new content, which then stands in a nameless
// file first: when it has further names (hard links), in a folder that takes no file, and where the system
// refuses the permissions or the move. What ends the process or the machine inside of that can leave a part
// of the old content and a part of the new. Call order: Begin, then Fill and whatever is done to Descriptor,
// then Commit; an object that goes away without leaves no trace. One thread.
class FileReplacement {
public:
    explicit FileReplacement(const QString& path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Ok, NotFound if the file is gone, or WriteFailed if it is write-protected or there is no room. Removes
    // what killed saves left in the folder.
    Outcome Begin();
    // Writes the pieces of the old file, in their order. Ok or WriteFailed.
    Outcome Fill(const FilePieces& pieces);
    // The new file, open for reading and writing; -1 before Begin. Stays this object's.
    int Descriptor() const { return to_; }
    // A path to read it by as long as this object has it open.
    QString PathOfNew() const;
    qint64 OldSizeBytes() const { return oldSizeBytes_; }
    // Ok, or WriteFailed: then the old file is as it was.
    Outcome Commit();

private:
    bool MakeNew();
    bool TakePlace();
    bool NameIt();
    bool CopyUnderAName();
    bool TakeOverAttributes();
    bool WriteIntoOld();
    void FlushFolder();
    void CloseAll();

    QByteArray target_; // of links the file that they lead to
    QByteArray folder_;
    QByteArray temporary_; // empty when there is none
    bool inPlace_ = false;
    int from_ = -1;
    int to_ = -1;
    qint64 oldSizeBytes_ = 0;
};

} // namespace kestrune
