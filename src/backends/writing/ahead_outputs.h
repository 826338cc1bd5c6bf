// Outputs that are encoded before they are created, from the samples of the output before them.
#pragma once

#include "backends/formats/output_format.h"
#include "backends/writing/encoding_pool.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace kestrune {

using Blocks = std::vector<QByteArray>;

// An output that is being encoded in memory: of these blocks, if they are taken to be of this shape.
struct AheadOutput {
    EncodingJobPtr job;
    std::shared_ptr<const Blocks> blocks;
    SampleShape source;
};

// Order of calls: Expect for each output; Start, Feed for each block and EndFeed for the file that is written
// first; then Take for each file that is created. One thread.
class AheadOutputs {
public:
    // `pool` outlives this. `mostBytes` bounds what the blocks and the encoded files come to in memory; above
    // it expected outputs are given up, those with the most bytes a second first.
    AheadOutputs(EncodingPool& pool, qint64 mostBytes);
    ~AheadOutputs();
    AheadOutputs(const AheadOutputs&) = delete;
    AheadOutputs& operator=(const AheadOutputs&) = delete;

    void Expect(const QString& path, const OutputFormat& format);
    // Gives up everything but what was taken.
    void Forget();
    bool AnyExpected() const { return !expected_.empty(); }

    // What is expected takes the place of what was started before.
    void Start(const SampleShape& source);
    void Feed(const QByteArray& block);
    void EndFeed();

    // For a file that is created now: none if it is not expected, or was in another format. It is expected no
    // longer.
    std::optional<AheadOutput> Take(const QString& path, const OutputFormat& format);

private:
    struct Output {
        QString path;
        OutputFormat format;
        EncodingJobPtr job; // once started
    };

    // Bytes that the blocks and their encoded files will take.
    double Bytes() const;
    void GiveUpWhatIsTooMuch();
    void DropStarted();

    EncodingPool& pool_;
    const double mostBytes_;
    std::vector<Output> expected_;
    std::vector<Output> started_;
    std::shared_ptr<Blocks> blocks_; // given to those that were started
    double blockBytes_ = 0;          // of all of blocks_
    SampleShape source_;
};

} // namespace kestrune
