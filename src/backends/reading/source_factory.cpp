#include "backends/reading/source_factory.h"

#include "backends/formats/leading_tag.h"
#include "backends/reading/chunk_source.h"
#include "backends/reading/g72x_source.h"
#include "backends/reading/lavf_source.h"
#include "backends/reading/mpc_source.h"
#include "backends/reading/pcm_source.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

using FilePtr = std::unique_ptr<QFile>;

constexpr int lowestRateHz = 100;
constexpr int highestRateHz = 1000000;
constexpr qint64 headBytes = 16;

OpenedSource Opened(std::unique_ptr<SampleSource> source) {
    const Outcome outcome = source ? Outcome::Ok : Outcome::NotDecodable;
    return {std::move(source), outcome};
}

QByteArray HeadAt(QFile& file, qint64 position) {
    return file.seek(position) ? file.read(headBytes) : QByteArray();
}

bool IsMusepack(QFile& file) {
    const QByteArray head = HeadAt(file, LeadingTagBytes(file));
    return head.startsWith("MP+") || head.startsWith("MPCK");
}

bool HasMark(const QByteArray& head) {
    static constexpr std::array marks = {"OggS",
                                         "fLaC",
                                         "ID3",
                                         ".snd",
                                         "FORM",
                                         "MP+",
                                         "MPCK",
                                         "wvPk",
                                         "caff",
                                         "riff",
                                         "TTA1",
                                         "MAC ",
                                         "\x1A\x45\xDF\xA3",
                                         "\x30\x26\xB2\x75"};
    const bool chunked = head.startsWith("RIFF") || head.startsWith("RF64") || head.startsWith("BW64");
    const bool mediaBox = head.mid(4, 4) == "ftyp";
    return chunked || mediaBox ||
           std::any_of(marks.begin(), marks.end(), [&](const char* mark) { return head.startsWith(mark); });
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
    return Opened(ChunkSource::Open(std::move(file), coding, format.rateHz));
}

OpenedSource OpenG72x(FilePtr file, const QString& kind, const OutputFormat& format) {
    if (!IsSensible(format) || format.bits < 2 || format.bits > 5) {
        return {nullptr, Outcome::NotSupported};
    }
    return Opened(std::make_unique<G72xSource>(std::move(file), kind, format.rateHz, format.bits));
}

// The file is not taken when the extension is none of a headerless kind.
OpenedSource OpenHeaderless(FilePtr& file, const HeaderlessFormats& formats) {
    const QString extension = QFileInfo(file->fileName()).suffix().toLower();
    if (extension == QLatin1String("raw") || extension == QLatin1String("pcm")) {
        return OpenRaw(std::move(file), formats.raw);
    }
    if (extension == QLatin1String("vox")) {
        return OpenChunks(std::move(file), ChunkSource::Coding::OkiAdpcm, formats.vox);
    }
    if (extension == QLatin1String("gsm")) {
        return OpenChunks(std::move(file), ChunkSource::Coding::Gsm, formats.gsm);
    }
    if (extension == QLatin1String("adpcm")) {
        return OpenChunks(std::move(file), ChunkSource::Coding::ImaAdpcm, formats.adpcm);
    }
    if (extension == QLatin1String("g721")) {
        return OpenG72x(std::move(file), QStringLiteral("G.721"), formats.g721);
    }
    if (extension == QLatin1String("g723")) {
        return OpenG72x(std::move(file), QStringLiteral("G.723"), formats.g723);
    }
    if (extension == QLatin1String("g726")) {
        return OpenG72x(std::move(file), QStringLiteral("G.726"), formats.g726);
    }
    return {};
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
    const QByteArray head = HeadAt(*file, 0);
    if (head.isEmpty()) {
        return {nullptr, Outcome::NotDecodable};
    }
    if (std::unique_ptr<SampleSource> wave = OpenPlainWave(file)) {
        return Opened(std::move(wave));
    }
    if (IsMusepack(*file)) {
        return Opened(MpcSource::Open(std::move(file)));
    }
    if (!HasMark(head)) {
        OpenedSource opened = OpenHeaderless(file, headerless);
        if (!file) {
            return opened;
        }
    }
    return Opened(LavfSource::Open(path));
}

} // namespace kestrune
