// Uncompressed and companded samples straight from a file: WAVE files of any size and headerless data.
#pragma once

#include "backends/formats/pcm_coding.h"
#include "backends/formats/wave_header.h"
#include "backends/reading/frame_converter.h"
#include "backends/reading/sample_source.h"

#include <QFile>

#include <memory>

namespace kestrune {

// Where the samples of a file stand and what they are.
struct PcmLayout {
    PcmCoding coding = PcmCoding::Signed16;
    int rateHz = 0;
    int channels = 0;
    quint32 speakerMask = 0; // of the WAVE header; 0 for the usual order of the channel count
    qint64 dataOffset = 0;   // bytes
    qint64 dataBytes = 0;
};

class PcmSource : public DecodingSource {
public:
    // `file` is open for reading.
    PcmSource(std::unique_ptr<QFile> file, const PcmLayout& layout);
    ~PcmSource() override;

    // The layout of a WAVE file; empty if its samples need a decoder.
    static std::optional<PcmLayout> LayoutOf(const WaveHeader& header);

protected:
    bool DecodeNext(std::vector<qint16>& piece) override;
    bool Rewind() override;
    qint64 JumpBefore(qint64 frame) override;
    qint64 CountFrames() override;

private:
    qint64 FrameBytes() const;

    std::unique_ptr<QFile> file_;
    PcmLayout layout_;
    AVChannelLayout speakers_ = {};
    FrameConverter converter_;
    QByteArray expanded_; // a block in a sample format that the converter knows
};

} // namespace kestrune
