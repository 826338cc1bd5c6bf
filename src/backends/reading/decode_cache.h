// Reading of files by blocks, with the samples of the last one kept.
#pragma once

#include "backends/formats/output_format.h"
#include "backends/reading/ahead_decoder.h"
#include "backends/reading/sample_source.h"
#include "components/outcome.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace kestrune {

// What makes two openings of a path openings of the same content.
struct FileIdentity {
    QString path;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 bytes = 0;
    qint64 modifiedNs = 0;
    qint64 changedNs = 0; // content, name or rights
    // Of a file that may be read by them.
    std::optional<HeaderlessFormats> formats = {};
    bool operator==(const FileIdentity&) const = default;
};

// Reads one file at a time. Once it reads ahead, a file that is read from its start is decoded by a thread,
// and if it keeps blocks, the next opening of the same unchanged file takes them from memory. What is read is
// the same either way. Positions and lengths are bytes. One thread.
class DecodeCache {
public:
    DecodeCache();
    ~DecodeCache();
    DecodeCache(const DecodeCache&) = delete;
    DecodeCache& operator=(const DecodeCache&) = delete;

    // From now on, and keeps files of up to so many bytes of samples; 0 for none.
    void ReadAhead(qint64 mostKeptBytes);
    // From now on, and lets go what was kept. So at the start.
    void ReadAtOnce();
    // As OpenSource.
    Outcome Open(const QString& path, const HeaderlessFormats& headerless);
    void Close();

    // All that follows only while a file is open.
    bool IsOpen() const { return open_; }
    const SourceInfo& Info() const { return info_; }
    qint64 LengthBytes();
    // At most `bytes`, whole frames; fewer only at the end.
    QByteArray Read(qint64 bytes);
    qint64 SeekTo(qint64 position);

private:
    bool StartsAhead(qint64 bytes) const;
    bool IsAhead(qint64 bytes);
    QByteArray ReadFromDecoder();
    void LeaveAhead();
    QByteArray ReadDirectly(qint64 bytes);
    qint64 Frame() const;

    bool readsAhead_ = false;
    qint64 mostKeptBytes_ = 0;
    bool open_ = false;
    HeaderlessFormats headerless_; // of the open file
    FileIdentity identity_;
    SourceInfo info_;
    std::unique_ptr<SampleSource> source_; // null while the blocks come from the decoder
    bool untouched_ = false;               // nothing was read, and the reader not moved
    qint64 lengthBytes_ = -1;              // as the source told it; -1 not asked

    // The file decoded last, which need not be the open one.
    std::unique_ptr<AheadDecoder> decoder_;
    FileIdentity decodedIdentity_;
    SourceInfo decodedInfo_;
    qint64 position_ = 0; // in the blocks of the decoder
    bool ahead_ = false;  // the open file is read from the decoder
};

} // namespace kestrune
