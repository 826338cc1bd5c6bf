// Sound files as libavformat sees them.
#pragma once

#include "backends/tags/bounded_file.h"

#include <memory>

struct AVFormatContext;
struct AVIOContext;
struct AVStream;

namespace kestrune {

// Reads through a bounded file of the caller, which outlives the object. Content that asks for the network, a
// device or further files gets none of them.
class LavfReader {
public:
    // Of the library, which others do not move.
    struct Reading {
        BoundedFile& file;
        qint64 position = 0;
    };

    explicit LavfReader(BoundedFile& file);
    ~LavfReader();
    LavfReader(const LavfReader&) = delete;
    LavfReader& operator=(const LavfReader&) = delete;

    // Once. False if the content is of no kind of recorded sound, or holds none that can be decoded.
    bool Open();

    // After an Open that gave true.
    AVFormatContext& Context() const { return *context_; }
    AVStream* Sound() const { return sound_; }

private:
    Reading reading_;
    AVIOContext* io_ = nullptr;
    AVFormatContext* context_ = nullptr;
    AVStream* sound_ = nullptr; // the context's
};

} // namespace kestrune
