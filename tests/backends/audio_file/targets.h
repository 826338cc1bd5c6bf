// The outputs of the converter: how each is asked for, and who judges what was written.
#pragma once

#include "components/audio_file.h"
#include "support/judges.h"

#include <QString>

#include <functional>
#include <vector>

namespace kestrune {

// Rate and channels of a sound.
struct SoundShape {
    int rateHz = 0;
    int channels = 0;
};

struct Target {
    QString ending; // of the file name, as the converter makes it
    // Chooses the format for a wanted shape, which the target need not keep to.
    std::function<Outcome(KSTAudioFile2&, const SoundShape&)> set;
    // The shape that is written when that shape is wanted.
    std::function<SoundShape(const SoundShape&)> written;
    QString codec; // as ffprobe calls it; empty for headerless kinds, which it can't tell
    std::function<std::vector<qint16>(const QString& file, const SoundShape&)> decode;
    int frameSamples = 1; // of the coding: by how much the length may be beyond the sound
    int mostDelay = 8;    // frames by which a decoder may be late or early
    double leastDb = 0;   // signal to noise that each sound of the tests keeps
    double leastGain = 0.98;
};

// All but the one that writes in the format of a template.
std::vector<Target> ConverterTargets();

// The loop of the converter's run for one output. `input` and `output` are reused from file to file.
Outcome ConvertFile(KSTAudioFile2& input, KSTAudioFile2& output, const QString& source,
                    const QString& target);

} // namespace kestrune
