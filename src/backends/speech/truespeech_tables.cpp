#include "backends/speech/truespeech_tables.h"

namespace kestrune {

namespace {

constexpr std::array<qint16, 32> stage0 = {-32192, -31900, -31538, -31139, -30715, -30242, -29737, -29196,
                                           -28591, -27934, -27170, -26353, -25471, -24455, -23220, -21806,
                                           -20086, -18166, -16092, -13876, -11463, -8749,  -5674,  -1901,
                                           2415,   6858,   10732,  14367,  17913,  21610,  25539,  29621};
constexpr std::array<qint16, 32> stage1 = {-24731, -19093, -14973, -11407, -8168, -5196, -2532, -167,
                                           2139,   4358,   6482,   8522,   10441, 12280, 14054, 15762,
                                           17375,  18875,  20294,  21607,  22832, 23971, 25068, 26105,
                                           27092,  27994,  28830,  29613,  30315, 30960, 31578, 32165};
constexpr std::array<qint16, 16> stage2 = {-26888, -23628, -20667, -17837, -15183, -12596, -10129, -7650,
                                           -5133,  -2496,  247,    3104,   6273,   9882,   14187,  19808};
constexpr std::array<qint16, 16> stage3 = {-14764, -8462, -4182, -620,  2410,  5183,  7803,  10284,
                                           12662,  14985, 17311, 19618, 21887, 24144, 26392, 28557};
constexpr std::array<qint16, 16> stage4 = {-21529, -17496, -14308, -11482, -8946, -6700, -4574, -2536,
                                           -472,   1615,   3767,   6072,   8618,  11659, 15266, 19961};
constexpr std::array<qint16, 8> stage5 = {-10981, -3794, 1070, 5063, 8800, 12571, 16606, 21381};
constexpr std::array<qint16, 8> stage6 = {-19120, -14299, -9856, -5737, -1917, 1874, 6161, 11800};
constexpr std::array<qint16, 8> stage7 = {-12560, -6919, -2373, 1606, 5365, 9215, 13679, 19085};

} // namespace

std::span<const qint16> TrueSpeechReflections(int stage) {
    switch (stage) {
    case 0:
        return stage0;
    case 1:
        return stage1;
    case 2:
        return stage2;
    case 3:
        return stage3;
    case 4:
        return stage4;
    case 5:
        return stage5;
    case 6:
        return stage6;
    default:
        return stage7;
    }
}

const std::array<int, 16> trueSpeechPulseUnits = {2,   4,   6,   10,  16,  25,   40,   64,
                                                  101, 161, 256, 406, 645, 1024, 1625, 2580};

const std::array<int, trueSpeechOrder> trueSpeechPredictorDecay = {32571, 32376, 32182, 31989,
                                                                   31797, 31606, 31416, 31228};
const std::array<int, trueSpeechOrder> trueSpeechZeroDecay = {18022, 9912, 5452, 2998, 1649, 907, 499, 274};
const std::array<int, trueSpeechOrder> trueSpeechPoleDecay = {24576, 18432, 13824, 10368,
                                                              7776,  5832,  4374,  3281};

} // namespace kestrune
