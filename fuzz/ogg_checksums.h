// Checksums of Ogg pages: with a wrong one no change of a page is looked at.
#pragma once

#include <QByteArray>
#include <QtEndian>

extern "C" {
#include <libavutil/crc.h>
}

#include <cstdint>

namespace kestrune::fuzz {

// The length of the page at `at`; 0 if it does not lie in the file.
inline qsizetype OggPageBytes(const QByteArray& bytes, qsizetype at) {
    constexpr qsizetype segmentsAt = 26;
    constexpr qsizetype headBytes = 27;
    if (at + headBytes > bytes.size()) {
        return 0;
    }
    const qsizetype segments = static_cast<uint8_t>(bytes[at + segmentsAt]);
    if (at + headBytes + segments > bytes.size()) {
        return 0;
    }
    qsizetype pageBytes = headBytes + segments;
    for (qsizetype segment = 0; segment < segments; ++segment) {
        pageBytes += static_cast<uint8_t>(bytes[at + headBytes + segment]);
    }
    return at + pageBytes <= bytes.size() ? pageBytes : 0;
}

inline QByteArray WithOggChecksums(QByteArray bytes) {
    constexpr qsizetype checksumAt = 22;
    for (qsizetype at = bytes.indexOf("OggS"); at >= 0; at = bytes.indexOf("OggS", at + 1)) {
        if (const qsizetype pageBytes = OggPageBytes(bytes, at)) {
            auto* page = reinterpret_cast<uint8_t*>(bytes.data() + at);
            qToBigEndian<quint32>(0, page + checksumAt);
            const uint32_t sum =
                av_crc(av_crc_get_table(AV_CRC_32_IEEE), 0, page, static_cast<size_t>(pageBytes));
            qToBigEndian<quint32>(sum, page + checksumAt);
        }
    }
    return bytes;
}

} // namespace kestrune::fuzz
