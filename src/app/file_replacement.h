// Puts a new file in the place of an old one, in one step. All that replaces a file as a whole stands on
// this: safe_file.h for content that is in memory, the outputs of encoders, the saving of tags.
#pragma once

#include "app/file_pieces.h"
#include "components/outcome.h"

#include <QByteArray>
#include <QString>

namespace kestrune {

// Where a path leads: through links, also to a file that is not there yet. A link that leads round in a
// circle is given back at some point of it.
QString LinksFollowed(const QString& path);

// What happens where a new file cannot take the place of the old one as it was: when that has further names
// (hard links), in a folder that takes no file, and where the system refuses the permissions or the move.
enum class Replacing {
    // The old file gets the new content, which stands in a nameless file first. What ends the process or the
    // machine inside of that can leave a part of the old content and a part of the new. It takes as long as
    // writing all once more.
    KeepsFile,
    // Further names keep the old content, permissions are best effort, all else fails. The disk may hear of
    // it
    // later, all at once: a machine that goes off meanwhile has the old file.
    KeepsName,
    // Only where nothing stands: what came there meanwhile is left alone, and Commit fails.
    KeepsOthers,
};

// The new file comes about beside the old one, without a name or under a hidden one, and takes its place only
// when all of it is on the disk: whatever ends the process or the machine, there is the old file or the new
// one. A link is followed and stays. Permissions, access lists and other attributes go over to the new file,
// and the owner as far as the system allows it. Call order: one Begin, then Fill and whatever is done to
// Descriptor, then Commit; an object that goes away without leaves no trace. One thread at a time.
class FileReplacement {
public:
    explicit FileReplacement(const QString& path, Replacing how = Replacing::KeepsFile);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Ok, NotFound if the file is gone or none of plain content, or WriteFailed if it is write-protected or
    // there is no room. Removes what killed saves left in the folder.
    Outcome Begin();
    // The same for a path where nothing stands yet, with the permissions (mode bits) that the new file gets
    // unless the system is told to take some off. Ok or WriteFailed.
    Outcome BeginNew(unsigned permissions = 0666);
    // Writes the pieces of the old file, in their order. Ok or WriteFailed.
    Outcome Fill(const FilePieces& pieces);
    // The new file, open for reading and writing; -1 before Begin. Stays this object's.
    int Descriptor() const { return to_; }
    // A path to read it by as long as this object has it open.
    QString PathOfNew() const;
    qint64 OldSizeBytes() const { return oldSizeBytes_; }
    // Ok, or WriteFailed: then the old file is as it was. Descriptor is closed by it mostly.
    Outcome Commit();

private:
    bool MakeNew();
    bool TakePlace();
    bool MoveOver();
    bool NameIt();
    bool CopyUnderAName();
    bool TakeOverAttributes();
    bool TakesOverEnough() { return TakeOverAttributes() || how_ != Replacing::KeepsFile; }
    bool WriteIntoOld();
    void FlushFolder();
    void CloseAll();

    Replacing how_;
    unsigned permissions_; // while the new file is made
    QByteArray target_;    // of links the file that they lead to
    QByteArray folder_;
    QByteArray temporary_; // empty when there is none
    bool inPlace_ = false;
    int from_ = -1; // of a file that is there
    int to_ = -1;
    qint64 oldSizeBytes_ = 0;
};

} // namespace kestrune
