#include "backends/formats/pcm_coding.h"

#include "backends/formats/wave_header.h"

namespace kestrune {

std::optional<PcmCoding> IntegerPcmCoding(int bits) {
    switch (bits) {
    case 8:
        return PcmCoding::Unsigned8;
    case 16:
        return PcmCoding::Signed16;
    case 24:
        return PcmCoding::Signed24;
    case 32:
        return PcmCoding::Signed32;
    default:
        return {};
    }
}

std::optional<PcmCoding> FloatPcmCoding(int bits) {
    switch (bits) {
    case 32:
        return PcmCoding::Float32;
    case 64:
        return PcmCoding::Float64;
    default:
        return {};
    }
}

std::optional<PcmCoding> RawPcmCoding(const OutputFormat& format) {
    switch (format.rawType) {
    case RawALaw:
        return PcmCoding::ALaw;
    case RawMuLaw:
        return PcmCoding::MuLaw;
    case RawPcm:
        return IntegerPcmCoding(format.bits);
    default:
        return {};
    }
}

std::optional<PcmCoding> WavePcmCoding(quint16 tag, int bits) {
    switch (tag) {
    case WaveTagPcm:
        return IntegerPcmCoding(bits);
    case WaveTagFloat:
        return FloatPcmCoding(bits);
    case WaveTagALaw:
        return PcmCoding::ALaw;
    case WaveTagMuLaw:
        return PcmCoding::MuLaw;
    default:
        return {};
    }
}

} // namespace kestrune
