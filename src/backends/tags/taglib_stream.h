// Lets TagLib read through a bounded file.
#pragma once

#include "backends/tags/bounded_file.h"

#include <taglib/tiostream.h>

namespace kestrune {

// Read only: the writing operations do nothing. The file is the caller's and outlives the stream.
class TagLibStream : public TagLib::IOStream {
public:
    explicit TagLibStream(BoundedFile& file) : file_(file) {}

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& /*data*/) override {}
    void insert(const TagLib::ByteVector& /*data*/, unsigned long /*start*/,
                unsigned long /*replace*/) override {}
    void removeBlock(unsigned long /*start*/, unsigned long /*length*/) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return file_.Position(); }
    long length() override { return file_.SizeBytes(); }
    void truncate(long /*length*/) override {}

private:
    BoundedFile& file_;
};

} // namespace kestrune
