#include "backends/tags/headerless.h"

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

struct HeaderlessKind {
    const char* extension;
    const char* kind;
    int formatTag;
    int rateHz;
    int channels;
    int bitsPerSample; // as stored when plain samples, else 16
    qint64 blockBytes; // smallest unit of whole frames ...
    qint64 blockFrames;
};

constexpr std::array kinds = {
    HeaderlessKind{".vox", "Dialogic VOX", 0x10, 8000, 1, 16, 1, 2},
    HeaderlessKind{".raw", "PCM", 1, 44100, 2, 16, 4, 1},
    HeaderlessKind{".pcm", "PCM", 1, 44100, 2, 16, 4, 1},
    HeaderlessKind{".gsm", "GSM 6.10", 0x31, 8000, 1, 16, 33, 160},
    HeaderlessKind{".g721", "G.721", 0x40, 8000, 1, 16, 1, 2},
    HeaderlessKind{".g723", "G.723", 0x14, 8000, 1, 16, 5, 8},
    HeaderlessKind{".g726", "G.726", 0x45, 8000, 1, 16, 1, 2},
    HeaderlessKind{".adpcm", "IMA ADPCM", 0x11, 8000, 1, 16, 1, 2},
};

const HeaderlessKind* FindKind(const QString& extension) {
    const auto* const found = std::find_if(kinds.begin(), kinds.end(), [&](const HeaderlessKind& kind) {
        return extension == QLatin1String(kind.extension);
    });
    return found == kinds.end() ? nullptr : found;
}

} // namespace

bool IsHeaderlessExtension(const QString& extension) {
    return FindKind(extension) != nullptr;
}

std::optional<AudioFacts> HeaderlessFacts(const QString& extension, qint64 sizeBytes) {
    const HeaderlessKind* kind = FindKind(extension);
    if (kind == nullptr || sizeBytes <= 0) {
        return std::nullopt;
    }
    AudioFacts facts;
    facts.kind = QString::fromLatin1(kind->kind);
    facts.formatTag = kind->formatTag;
    facts.rateHz = kind->rateHz;
    facts.channels = kind->channels;
    facts.bitsPerSample = kind->bitsPerSample;
    facts.bitrateBps = static_cast<int>(kind->blockBytes * 8 * kind->rateHz / kind->blockFrames);
    // A piece of a block at the end still holds the frames that its bytes complete, except in GSM's whole
    // blocks.
    const qint64 blocks = sizeBytes / kind->blockBytes;
    const qint64 restBytes = kind->blockBytes == 33 ? 0 : sizeBytes % kind->blockBytes;
    facts.frames = blocks * kind->blockFrames + restBytes * kind->blockFrames / kind->blockBytes;
    facts.durationMs = DurationOfFrames(facts.frames, facts.rateHz);
    return facts;
}

} // namespace kestrune
