#include "backends/reading/source_factory.h"

#include "backends/formats/file_kind.h"
#include "backends/formats/headerless_kind.h"
#include "backends/reading/chunk_source.h"
#include "backends/reading/g72x_source.h"
#include "backends/reading/lavf_source.h"
#include "backends/reading/mpc_source.h"
#include "backends/reading/pcm_source.h"

#include <QFile>
#include <QFileInfo>

namespace kestrune {

namespace {

using FilePtr = std::unique_ptr<QFile>;

constexpr int lowestRateHz = 100;
constexpr int highestRateHz = 1000000;

OpenedSource Opened(std::unique_ptr<SampleSource> source) {
    const Outcome outcome = source ? Outcome::Ok : Outcome::NotDecodable;
    return {std::move(source), outcome};
}

bool IsSensible(const OutputFormat& format) {
    return format.rateHz >= lowestRateHz && format.rateHz <= highestRateHz && format.channels >= 1 &&
           format.channels <= 2;
}

OpenedSource OpenRaw(FilePtr file, const OutputFormat& format) {
    const std::optional<PcmCoding> coding = RawPcmCoding(format);
    if (!coding || !IsSensible(format)) {
        return {nullptr, Outcome::NotSupported};
    }
    PcmLayout layout;
    layout.coding = *coding;
    layout.rateHz = format.rateHz;
    layout.channels = format.channels;
    layout.dataBytes = file->size();
    return Opened(std::make_unique<PcmSource>(std::move(file), layout));
}

OpenedSource OpenChunks(FilePtr file, ChunkSource::Coding coding, const OutputFormat& format) {
    if (!IsSensible(format)) {
        return {nullptr, Outcome::NotSupported};
    }
    return Opened(ChunkSource::Open(std::move(file), coding, OutputKindName(format), format.rateHz));
}

OpenedSource OpenG72x(FilePtr file, const OutputFormat& format) {
    if (!IsSensible(format) || format.bits < 2 || format.bits > 5) {
        return {nullptr, Outcome::NotSupported};
    }
    return Opened(
        std::make_unique<G72xSource>(std::move(file), OutputKindName(format), format.rateHz, format.bits));
}

OpenedSource OpenHeaderless(FilePtr file, const OutputFormat& format) {
    switch (format.kind) {
    case FormatKind::Raw:
        return OpenRaw(std::move(file), format);
    case FormatKind::Vox:
        return OpenChunks(std::move(file), ChunkSource::Coding::OkiAdpcm, format);
    case FormatKind::Gsm:
        return OpenChunks(std::move(file), ChunkSource::Coding::Gsm, format);
    case FormatKind::ImaAdpcm:
        return OpenChunks(std::move(file), ChunkSource::Coding::ImaAdpcm, format);
    default:
        return OpenG72x(std::move(file), format);
    }
}

// Empty if the file is no WAVE, or one whose samples need a decoder; then the file is not taken.
std::unique_ptr<SampleSource> OpenPlainWave(FilePtr& file) {
    const std::optional<WaveHeader> header = ReadWaveHeader(*file);
    if (!header) {
        return nullptr;
    }
    const std::optional<PcmLayout> layout = PcmSource::LayoutOf(*header);
    return layout ? std::make_unique<PcmSource>(std::move(file), *layout) : nullptr;
}

} // namespace

OpenedSource OpenSource(const QString& path, const HeaderlessFormats& headerless) {
    auto file = std::make_unique<QFile>(path);
    if (!QFileInfo(path).isFile() || !file->open(QIODevice::ReadOnly)) {
        return {nullptr, Outcome::NotFound};
    }
    DeviceBytes bytes(*file);
    if (bytes.ReadAt(0, 1).isEmpty()) {
        return {nullptr, Outcome::NotDecodable};
    }
    if (std::unique_ptr<SampleSource> wave = OpenPlainWave(file)) {
        return Opened(std::move(wave));
    }
    const FileMark mark = FindMark(bytes);
    if (mark.kind == FileKind::Musepack) {
        return Opened(MpcSource::Open(std::move(file), mark.start));
    }
    const HeaderlessKind* kind = HeaderlessKindOf(path);
    if (kind != nullptr && !mark.IsSure()) {
        return OpenHeaderless(std::move(file), headerless.*kind->format);
    }
    return Opened(LavfSource::Open(path));
}

} // namespace kestrune
