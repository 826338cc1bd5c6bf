// Musepack files, stream versions 7 and 8.
#pragma once

#include "backends/reading/frame_converter.h"
#include "backends/reading/sample_source.h"

#include <QFile>

#include <memory>

#include <mpc/mpcdec.h>

namespace kestrune {

// Where the encoder says that no bands are filled with noise, the library's own seek gives the samples of a
// straight decode. Otherwise the noise comes of a generator that runs from the first frame on, and a seek
// backward decodes from the start.
class MpcSource : public DecodingSource {
public:
    // `file` is open for reading, `start` where the coding begins in it. Null if it is no Musepack.
    static std::unique_ptr<MpcSource> Open(std::unique_ptr<QFile> file, qint64 start);
    // What the library reads.
    struct Window {
        std::unique_ptr<QFile> file;
        qint64 start = 0;
    };
    ~MpcSource() override;

protected:
    bool DecodeNext(std::vector<qint16>& piece) override;
    bool Rewind() override;
    qint64 JumpBefore(qint64 frame) override;
    qint64 CountFrames() override;

private:
    MpcSource(std::unique_ptr<QFile> file, qint64 start);

    Window window_;
    mpc_reader reader_ = {};
    mpc_demux* demuxer_ = nullptr;
    mpc_streaminfo stream_ = {};
    AVChannelLayout speakers_ = {};
    std::unique_ptr<FrameConverter> converter_;
    std::vector<MPC_SAMPLE_FORMAT> decoded_; // of one frame of the coding
};

} // namespace kestrune
