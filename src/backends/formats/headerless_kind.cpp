#include "backends/formats/headerless_kind.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

constexpr std::array kinds = {
    HeaderlessKind{"vox", &HeaderlessFormats::vox, 0x10, 1, 2, false},
    HeaderlessKind{"raw", &HeaderlessFormats::raw, 1, 4, 1, false},
    HeaderlessKind{"pcm", &HeaderlessFormats::raw, 1, 4, 1, false},
    HeaderlessKind{"gsm", &HeaderlessFormats::gsm, 0x31, 33, 160, true},
    HeaderlessKind{"g721", &HeaderlessFormats::g721, 0x40, 1, 2, false},
    HeaderlessKind{"g723", &HeaderlessFormats::g723, 0x14, 5, 8, false},
    HeaderlessKind{"g726", &HeaderlessFormats::g726, 0x45, 1, 2, false},
    HeaderlessKind{"adpcm", &HeaderlessFormats::adpcm, 0x11, 1, 2, false},
};

} // namespace

const HeaderlessKind* HeaderlessKindOf(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    const auto* const found = std::find_if(kinds.begin(), kinds.end(), [&](const HeaderlessKind& kind) {
        return extension == QLatin1String(kind.extension);
    });
    return found == kinds.end() ? nullptr : found;
}

qint64 UsualFrames(const HeaderlessKind& kind, qint64 sizeBytes) {
    const qint64 blocks = sizeBytes / kind.blockBytes;
    const qint64 restBytes = kind.onlyWholeBlocks ? 0 : sizeBytes % kind.blockBytes;
    return blocks * kind.blockFrames + restBytes * kind.blockFrames / kind.blockBytes;
}

int UsualBitrate(const HeaderlessKind& kind) {
    const int rateHz = (HeaderlessFormats().*kind.format).rateHz;
    return static_cast<int>(kind.blockBytes * 8 * rateHz / kind.blockFrames);
}

} // namespace kestrune
