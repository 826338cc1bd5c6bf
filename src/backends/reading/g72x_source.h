// Headerless G.721, G.723 and G.726 data: mono, 2 to 5 bits a sample, packed from the high bits of each byte
// on.
#pragma once

#include "backends/reading/sample_source.h"

#include <QFile>

#include <memory>

struct g726_state_s;

namespace kestrune {

class G72xSource : public DecodingSource {
public:
    // `file` is open for reading; `bits` is 2 to 5 and `rateHz` above 0. `kind` is the name that users read.
    G72xSource(std::unique_ptr<QFile> file, const QString& kind, int rateHz, int bits);
    ~G72xSource() override;

protected:
    bool DecodeNext(std::vector<qint16>& piece) override;
    bool Rewind() override;
    qint64 CountFrames() override;

private:
    std::unique_ptr<QFile> file_;
    int bits_;
    g726_state_s* decoder_ = nullptr;
};

} // namespace kestrune
