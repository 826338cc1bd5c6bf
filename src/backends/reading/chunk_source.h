// Headerless data of codings that come in chunks of one size, mono: GSM 6.10, Dialogic (OKI) and IMA ADPCM.
#pragma once

#include "backends/reading/lavc_decoder.h"
#include "backends/reading/sample_source.h"

#include <QFile>

#include <memory>

namespace kestrune {

// Every chunk needs the decoder's state from the one before, so a seek backward decodes from the start.
class ChunkSource : public DecodingSource {
public:
    enum class Coding { Gsm, OkiAdpcm, ImaAdpcm };

    // `file` is open for reading, `rateHz` above 0. `kind` is the name that users read. Null if there is no
    // decoder.
    static std::unique_ptr<ChunkSource> Open(std::unique_ptr<QFile> file, Coding coding, const QString& kind,
                                             int rateHz);

protected:
    bool DecodeNext(std::vector<qint16>& piece) override;
    bool Rewind() override;
    qint64 CountFrames() override;

private:
    ChunkSource(std::unique_ptr<QFile> file, Coding coding, const QString& kind, int rateHz);

    std::unique_ptr<QFile> file_;
    Coding coding_;
    ParametersPtr parameters_;
    LavcDecoder decoder_;
    FrameConverter converter_;
};

} // namespace kestrune
