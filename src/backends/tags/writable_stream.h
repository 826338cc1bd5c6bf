// Lets TagLib change an open file.
#pragma once

#include <taglib/tiostream.h>

#include <QtGlobal>

namespace kestrune {

// Over a file descriptor of the caller, who keeps it open as long as the stream lives. TagLib asks no
// operation whether it worked, so a failure is kept until Failed is asked; nothing is written after it.
class WritableStream : public TagLib::IOStream {
public:
    explicit WritableStream(int file) : file_(file) {}

    bool Failed() const { return failed_; }

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    bool readOnly() const override { return false; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return position_; }
    long length() override;
    void truncate(long length) override;

private:
    void Put(const char* bytes, qint64 count, qint64 position);
    // Moves what stands from `from` to the end of the file.
    void MoveTail(qint64 from, qint64 to);

    int file_;
    long position_ = 0;
    bool failed_ = false;
};

} // namespace kestrune
