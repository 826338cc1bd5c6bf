// One file that is being written.
#pragma once

#include "backends/codecs/encoding_pipeline.h"
#include "backends/codecs/output_file.h"
#include "backends/codecs/output_format.h"

#include <memory>

namespace kestrune {

// Order of calls: Open, SetSource, any number of Write, Close; destruction closes too. One thread.
class EncodingOutput {
public:
    EncodingOutput();
    ~EncodingOutput();
    EncodingOutput(const EncodingOutput&) = delete;
    EncodingOutput& operator=(const EncodingOutput&) = delete;

    // Once. WriteFailed for a path that can't be written, NotSupported for a format that its encoder refuses;
    // the folder is then as it was.
    Outcome Open(const QString& path, const OutputFormat& format);
    // Counts until the first block.
    void SetSource(const SampleShape& source);
    // Once a block failed the later ones fail alike.
    Outcome Write(const QByteArray& block);
    // Finishes the file. What failed before is told here again; an existing file is then kept as it was, and
    // a new one stays as far as it was written.
    Outcome Close();

private:
    OutputFile file_;
    std::unique_ptr<EncodingPipeline> pipeline_; // while open
};

} // namespace kestrune
