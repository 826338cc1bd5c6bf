// One file that is being written.
#pragma once

#include "backends/formats/output_format.h"
#include "backends/writing/ahead_outputs.h"
#include "backends/writing/encoding_pipeline.h"
#include "backends/writing/encoding_pool.h"
#include "backends/writing/output_file.h"

#include <memory>
#include <optional>

namespace kestrune {

// Order of calls: Open or OpenAhead, SetSource, any number of Write, Close; destruction closes too. One
// thread. With a pool the blocks are encoded by its threads: Write waits while more than a few are behind,
// and what fails is told by a later Write or by Close.
class EncodingOutput {
public:
    // Without a pool every call encodes what it is given. The pool outlives this.
    explicit EncodingOutput(EncodingPool* pool);
    ~EncodingOutput();
    EncodingOutput(const EncodingOutput&) = delete;
    EncodingOutput& operator=(const EncodingOutput&) = delete;

    // Once. WriteFailed for a path that can't be written, NotSupported for a format that its encoder refuses;
    // the folder is then as it was.
    Outcome Open(const QString& path, const OutputFormat& format);
    // The same for a file that is being encoded already in that format. What it comes to is taken if the
    // blocks that are written are the ones that were encoded. When there are fewer and the encoder went
    // beyond them, it is cut as encoded_cut.h tells. When one differs, all is encoded anew.
    Outcome OpenAhead(const QString& path, const OutputFormat& format, const AheadOutput& ahead);
    // Counts until the first block.
    void SetSource(const SampleShape& source);
    // Once a block failed the later ones fail alike.
    Outcome Write(const QByteArray& block);
    // Finishes the file. What failed before is told here again; an existing file is then kept as it was, and
    // a new one stays as far as it was written.
    Outcome Close();

private:
    bool IsNextAhead(const QByteArray& block) const;
    Outcome WriteAhead(const QByteArray& block);
    Outcome WriteInPool(const QByteArray& block);
    Outcome CloseAhead();
    Outcome CloseInPool();
    Outcome CloseAnew();
    // Of what was encoded ahead, the part that was written.
    Outcome Cut();
    double PartWritten() const;
    qint64 FramesWritten() const;
    // Leaves what was encoded ahead, and begins with the blocks that were written so far: the threads are
    // given all of them at once.
    Outcome EncodeAnew();

    EncodingPool* pool_;
    OutputFile file_;
    OutputFormat format_;
    SampleShape source_;
    bool open_ = false;
    bool written_ = false; // a block came
    std::optional<AheadOutput> ahead_;
    std::unique_ptr<EncodingPipeline> pipeline_; // until the pool has it
    EncodingJobPtr job_;
    qint64 blocks_ = 0;             // given to the job, or found to be those encoded ahead
    qint64 mayBeBehind_;            // blocks
    Outcome outcome_ = Outcome::Ok; // of encoding anew
};

} // namespace kestrune
