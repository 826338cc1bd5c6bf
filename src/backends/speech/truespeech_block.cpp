#include "backends/speech/truespeech_block.h"

#include <QtEndian>

namespace kestrune {

namespace {

constexpr int bitsPerWord = 32;
constexpr std::array<int, trueSpeechOrder> reflectionBits = {5, 5, 4, 4, 4, 3, 3, 3};
constexpr int pitchBits = 7;
constexpr int nibbleBits = 4;
constexpr int sizeBits = 14;
constexpr int placeBits = 27;
constexpr int secondHalfPlaceBits = 15;

// Bits from the top of 32-bit little-endian words on.
class BitWriter {
public:
    void Put(int bits, quint32 value) {
        for (int bit = bits - 1; bit >= 0; --bit, ++position_) {
            words_[position_ / bitsPerWord] |= (value >> bit & 1U)
                                               << (bitsPerWord - 1 - position_ % bitsPerWord);
        }
    }
    void Put(int bits, int value) { Put(bits, static_cast<quint32>(value)); }
    TrueSpeechBytes Bytes() const {
        TrueSpeechBytes bytes;
        for (size_t word = 0; word < words_.size(); ++word) {
            qToLittleEndian(words_[word], bytes.data() + word * sizeof(quint32));
        }
        return bytes;
    }

private:
    std::array<quint32, trueSpeechBlockBytes / 4> words_ = {};
    size_t position_ = 0;
};

class BitReader {
public:
    explicit BitReader(const TrueSpeechBytes& bytes) : bytes_(bytes) {}
    quint32 Get(int bits) {
        quint32 value = 0;
        for (int bit = 0; bit < bits; ++bit, ++position_) {
            const auto word =
                qFromLittleEndian<quint32>(bytes_.data() + position_ / bitsPerWord * sizeof(quint32));
            value = value << 1 | (word >> (bitsPerWord - 1 - position_ % bitsPerWord) & 1U);
        }
        return value;
    }
    int GetInt(int bits) { return static_cast<int>(Get(bits)); }

private:
    const TrueSpeechBytes& bytes_;
    size_t position_ = 0;
};

// Ways to choose so many (second index) of all (first index).
using Choices = std::array<std::array<quint32, 4>, 30>;

constexpr Choices MakeChoices() {
    Choices ways = {};
    for (size_t all = 0; all < ways.size(); ++all) {
        ways[all][0] = 1;
        for (size_t chosen = 1; all > 0 && chosen < ways[all].size(); ++chosen) {
            ways[all][chosen] = ways[all - 1][chosen] + ways[all - 1][chosen - 1];
        }
    }
    return ways;
}

constexpr Choices choices = MakeChoices();

constexpr int halfSamples = trueSpeechSubframeSamples / 2;
constexpr int firstHalfPulses = 3;

// Sets of places are numbered by their first place, then by their second, and so on: those that use a place
// stand before those that leave it free.
quint32 RankOf(std::span<const int> places, int offset) {
    quint32 rank = 0;
    size_t next = 0;
    for (int place = 0; place < halfSamples && next < places.size(); ++place) {
        if (places[next] == offset + place) {
            ++next;
        } else {
            rank += choices[static_cast<size_t>(halfSamples - 1 - place)][places.size() - next - 1];
        }
    }
    return rank;
}

void PlacesOf(quint32 rank, int offset, std::span<int> places) {
    size_t next = 0;
    for (int place = 0; place < halfSamples && next < places.size(); ++place) {
        const quint32 taken = choices[static_cast<size_t>(halfSamples - 1 - place)][places.size() - next - 1];
        if (rank < taken) {
            places[next++] = offset + place;
        } else {
            rank -= taken;
        }
    }
}

} // namespace

TrueSpeechBytes PackTrueSpeech(const TrueSpeechBlock& block) {
    BitWriter bits;
    for (size_t stage = trueSpeechOrder; stage-- > 0;) {
        bits.Put(reflectionBits[stage], block.reflection[stage]);
    }
    bits.Put(1, block.blended ? 1 : 0);
    bits.Put(nibbleBits, block.lag[0] >> nibbleBits);
    for (size_t subframe = trueSpeechSubframes; subframe-- > 0;) {
        bits.Put(pitchBits, block.subframes[subframe].pitch);
    }
    bits.Put(nibbleBits, block.lag[1]);
    bits.Put(sizeBits, block.subframes[1].pulseSizes);
    bits.Put(sizeBits, block.subframes[0].pulseSizes);
    bits.Put(nibbleBits, block.lag[1] >> nibbleBits);
    bits.Put(sizeBits, block.subframes[3].pulseSizes);
    bits.Put(sizeBits, block.subframes[2].pulseSizes);
    for (size_t subframe = 0; subframe < trueSpeechSubframes; ++subframe) {
        bits.Put(1, block.lag[0] >> subframe);
        bits.Put(placeBits, block.subframes[subframe].pulsePlaces);
        bits.Put(nibbleBits, block.subframes[subframe].pulseGain);
    }
    return bits.Bytes();
}

TrueSpeechBlock UnpackTrueSpeech(const TrueSpeechBytes& bytes) {
    BitReader bits(bytes);
    TrueSpeechBlock block;
    for (size_t stage = trueSpeechOrder; stage-- > 0;) {
        block.reflection[stage] = bits.GetInt(reflectionBits[stage]);
    }
    block.blended = bits.Get(1) != 0;
    block.lag[0] = bits.GetInt(nibbleBits) << nibbleBits;
    for (size_t subframe = trueSpeechSubframes; subframe-- > 0;) {
        block.subframes[subframe].pitch = bits.GetInt(pitchBits);
    }
    block.lag[1] = bits.GetInt(nibbleBits);
    block.subframes[1].pulseSizes = bits.GetInt(sizeBits);
    block.subframes[0].pulseSizes = bits.GetInt(sizeBits);
    block.lag[1] |= bits.GetInt(nibbleBits) << nibbleBits;
    block.subframes[3].pulseSizes = bits.GetInt(sizeBits);
    block.subframes[2].pulseSizes = bits.GetInt(sizeBits);
    for (size_t subframe = 0; subframe < trueSpeechSubframes; ++subframe) {
        block.lag[0] |= bits.GetInt(1) << subframe;
        block.subframes[subframe].pulsePlaces = bits.Get(placeBits);
        block.subframes[subframe].pulseGain = bits.GetInt(nibbleBits);
    }
    return block;
}

quint32 PulsePlaces(const PulsePositions& positions) {
    const std::span all(positions);
    return RankOf(all.first(firstHalfPulses), 0) << secondHalfPlaceBits |
           RankOf(all.subspan(firstHalfPulses), halfSamples);
}

PulsePositions PulsePositionsOf(quint32 places) {
    PulsePositions positions;
    positions.fill(-1);
    const std::span all(positions);
    PlacesOf(places >> secondHalfPlaceBits, 0, all.first(firstHalfPulses));
    PlacesOf(places & ((1U << secondHalfPlaceBits) - 1), halfSamples, all.subspan(firstHalfPulses));
    return positions;
}

} // namespace kestrune
