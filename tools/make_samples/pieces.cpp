#include "pieces.h"

#include "voices.h"

#include <array>

namespace kestrune {

namespace {

// Room for what lossy coders overshoot.
constexpr double peakDb = -3;
constexpr double fadeOutSeconds = 0.9;

} // namespace

// Broken chords over a falling bass: C, A minor, F, G.
Sound FirstLight(int rateHz) {
    struct Bar {
        int bass;
        std::array<int, 6> keys;
    };
    constexpr std::array bars = {Bar{36, {60, 64, 67, 71, 74, 71}}, Bar{33, {60, 64, 67, 72, 76, 72}},
                                 Bar{29, {60, 65, 69, 72, 76, 72}}, Bar{31, {59, 62, 67, 71, 74, 79}}};
    constexpr double step = 0.17;
    Sound sound = SilentSound(rateHz, 5.0);
    double start = 0;
    for (const Bar& bar : bars) {
        AddBass(sound, {start, bar.bass + 12, 6 * step, 0.7, 0});
        for (std::size_t at = 0; at < bar.keys.size(); ++at) {
            const double pan = at % 2 == 0 ? -0.4 : 0.4;
            AddPluck(sound, {start, bar.keys[at], 1.4, at == 0 ? 1.0 : 0.8, pan});
            start += step;
        }
    }
    for (const int key : {48, 60, 64, 67, 72}) {
        AddPluck(sound, {start, key, 1.0, 0.7, (key - 60) / 24.0});
    }
    AddRoom(sound, 0.09);
    Finish(sound, 0.6, peakDb);
    return sound;
}

// Bells over a pad, in the scale of D without its third and sixth.
Sound PaperLanterns(int rateHz) {
    struct Stroke {
        double start;
        int key;
        double pan;
    };
    constexpr std::array strokes = {Stroke{0.0, 74, -0.5}, Stroke{0.4, 81, 0.4},  Stroke{0.8, 79, -0.2},
                                    Stroke{1.2, 76, 0.5},  Stroke{1.8, 74, -0.4}, Stroke{2.2, 72, 0.2},
                                    Stroke{2.6, 76, -0.5}, Stroke{3.2, 81, 0.4},  Stroke{3.6, 84, -0.1},
                                    Stroke{4.0, 79, 0.3},  Stroke{4.6, 74, 0.0}};
    Sound sound = SilentSound(rateHz, 6.0);
    for (const Stroke& stroke : strokes) {
        AddBell(sound, {stroke.start, stroke.key, 1.9, 0.8, stroke.pan});
    }
    for (const int key : {50, 57, 62}) {
        AddPad(sound, {0, key, 3.2, 0.6, (key - 56) / 12.0});
    }
    for (const int key : {48, 55, 62}) {
        AddPad(sound, {3.0, key, 3.4, 0.6, (key - 55) / 12.0});
    }
    AddRoom(sound, 0.13);
    Finish(sound, fadeOutSeconds, peakDb);
    return sound;
}

// A small waltz: bass on one, chord on two and three, a tune above.
Sound HarbourSteps(int rateHz) {
    struct Bar {
        int bass;
        std::array<int, 3> chord;
        std::array<int, 3> tune;
    };
    constexpr std::array bars = {Bar{38, {57, 62, 65}, {69, 74, 77}}, Bar{43, {58, 62, 67}, {79, 77, 74}},
                                 Bar{45, {57, 61, 64}, {76, 73, 76}}, Bar{38, {57, 62, 65}, {77, 74, 69}}};
    constexpr double beat = 0.42;
    Sound sound = SilentSound(rateHz, 6.8);
    double start = 0;
    for (const Bar& bar : bars) {
        AddBass(sound, {start, bar.bass, 2 * beat, 0.9, 0});
        for (std::size_t at = 0; at < 3; ++at) {
            const double now = start + static_cast<double>(at) * beat;
            AddPluck(sound, {now, bar.tune[at], 0.9, 0.95, 0.25});
            for (const int key : bar.chord) {
                AddPluck(sound, {now, key, 0.35, at == 0 ? 0.0 : 0.4, -0.35});
            }
        }
        start += 3 * beat;
    }
    for (const int key : {50, 57, 62, 65, 69, 74}) {
        AddPluck(sound, {start + (key - 50) * 0.012, key, 1.8, 0.6, (key - 62) / 20.0});
    }
    AddRoom(sound, 0.08);
    Finish(sound, fadeOutSeconds, peakDb);
    return sound;
}

// Long chords with a high bell on each.
Sound SlowTide(int rateHz) {
    struct Chord {
        std::array<int, 4> keys;
        int bell;
    };
    constexpr std::array chords = {Chord{{45, 57, 60, 64}, 88}, Chord{{41, 57, 60, 65}, 84},
                                   Chord{{43, 55, 59, 62}, 86}, Chord{{45, 57, 61, 64}, 81}};
    Sound sound = SilentSound(rateHz, 6.8);
    double start = 0;
    for (const Chord& chord : chords) {
        for (const int key : chord.keys) {
            AddPad(sound, {start, key, 2.2, 0.8, (key - 55) / 18.0});
        }
        AddBell(sound, {start + 0.4, chord.bell, 1.8, 0.35, -0.3});
        AddBell(sound, {start + 0.8, chord.bell - 5, 1.8, 0.3, 0.3});
        start += 1.6;
    }
    AddRoom(sound, 0.12);
    Finish(sound, fadeOutSeconds, peakDb);
    return sound;
}

// A quick little tune on short bells.
Sound MusicBox(int rateHz) {
    constexpr std::array tune = {76, 79, 84, 83, 79, 76, 74, 77, 81, 79,
                                 77, 74, 72, 76, 79, 83, 84, 79, 76, 72};
    constexpr double step = 0.22;
    Sound sound = SilentSound(rateHz, 6.0);
    double start = 0;
    for (const int key : tune) {
        AddBell(sound, {start, key, 1.1, 0.8, 0});
        start += step;
    }
    constexpr std::array low = {60, 55, 57, 53, 60, 55, 60};
    start = 0;
    for (const int key : low) {
        AddPluck(sound, {start, key, 1.0, 0.8, 0});
        start += 3 * step;
    }
    AddBell(sound, {20 * step, 84, 1.4, 0.6, 0});
    AddRoom(sound, 0.06);
    Finish(sound, fadeOutSeconds, peakDb);
    return sound;
}

// A few low, slow notes that survive a telephone line.
Sound NightSignal(int rateHz) {
    constexpr std::array tune = {64, 67, 71, 69, 67, 64, 62, 59};
    Sound sound = SilentSound(rateHz, 5.5);
    double start = 0;
    for (const int key : tune) {
        AddPluck(sound, {start, key, 1.2, 1.0, 0});
        AddBell(sound, {start, key, 0.9, 0.25, 0});
        start += 0.5;
    }
    for (const int key : {52, 59, 64}) {
        AddPluck(sound, {start, key, 1.3, 0.8, 0});
    }
    AddRoom(sound, 0.05);
    Finish(sound, fadeOutSeconds, -6);
    return sound;
}

} // namespace kestrune
