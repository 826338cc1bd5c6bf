// The audio packets of a file, by libavformat.
#pragma once

#include "backends/reading/lavc_decoder.h"

#include <QFile>
#include <QString>

#include <memory>

extern "C" {
#include <libavformat/avformat.h>
}

namespace kestrune {

// Reads the first audio stream of a plain file. Whatever the file says, no other file and no network address
// is opened.
class LavfInput {
public:
    // A file from behind its leading tags on. Pictures in them may be megabytes, in which kinds are not
    // looked for and which each opening would read.
    struct Window {
        QFile file;
        qint64 start = 0;
        qint64 position = 0; // behind the start, of the next read by the library

        qint64 Size() const { return file.size() - start; }
    };

    // Null if the file can't be opened or holds no audio.
    static std::unique_ptr<LavfInput> Open(const QString& path);
    ~LavfInput();
    LavfInput(const LavfInput&) = delete;
    LavfInput& operator=(const LavfInput&) = delete;

    const AVStream& Audio() const { return *stream_; }
    // Short name of the container, such as "mp3" or "ogg".
    const char* ContainerName() const { return context_->iformat->name; }
    qint64 FileBytes() const { return window_.Size(); }
    int ContainerBitrate() const;
    // Container's duration in the time base of the stream; 0 if unknown.
    qint64 Duration() const;

    // The next packet of the stream; false at the end or where the file is broken off.
    bool Read(AVPacket& packet);
    // Goes on reading at a byte, counted as AVPacket::pos does, which a packet is to begin at.
    bool SeekToByte(qint64 position);
    // Goes on reading at the last packet at or before a time, in units of the stream.
    bool SeekToTime(qint64 timestamp);

private:
    LavfInput() = default;
    bool OpenContext(const QString& path);
    bool ChooseStream();

    Window window_;
    AVIOContext* io_ = nullptr;
    AVFormatContext* context_ = nullptr;
    AVStream* stream_ = nullptr;
};

} // namespace kestrune
