// A file to be, told as pieces of an old file and new bytes between them.
#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

namespace kestrune {

// Either `bytes`, or, if they are empty, `lengthBytes` from `offset` (bytes from the start) of the old file.
struct FilePiece {
    QByteArray bytes;
    qint64 offset = 0;
    qint64 lengthBytes = 0;
};

class FilePieces {
public:
    void AddBytes(const QByteArray& bytes) {
        if (!bytes.isEmpty()) {
            pieces_.append({bytes, 0, 0});
        }
    }
    void AddRange(qint64 offset, qint64 lengthBytes) {
        if (lengthBytes <= 0) {
            return;
        }
        if (!pieces_.isEmpty() && pieces_.back().bytes.isEmpty() &&
            pieces_.back().offset + pieces_.back().lengthBytes == offset) {
            pieces_.back().lengthBytes += lengthBytes;
        } else {
            pieces_.append({{}, offset, lengthBytes});
        }
    }
    void Append(const FilePieces& others) { pieces_ += others.pieces_; }
    const QList<FilePiece>& All() const { return pieces_; }

private:
    QList<FilePiece> pieces_;
};

} // namespace kestrune
