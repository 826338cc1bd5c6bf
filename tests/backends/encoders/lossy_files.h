// Sound that is coded with loss, and what is measured of it once a judge decoded it.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "support/test_files.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace kestrune {

// Interleaved samples, full scale 1.0.
struct Sound {
    int rateHz = 44100;
    int channels = 2;
    std::vector<float> samples;

    qint64 Frames() const { return static_cast<qint64>(samples.size()) / channels; }
};

// Chords of changing pitch with sharp attacks and a little noise, different in each channel.
Sound Music(double seconds, int rateHz, int channels, quint32 seed = 5);
// White noise with the given peak.
Sound Noise(double seconds, int rateHz, int channels, float peak = 0.3F, quint32 seed = 9);

// Gives an encoder some frames in the form that it takes; integers are the nearest ones.
Outcome Write(SampleEncoder& encoder, const Sound& sound, qint64 from, qint64 frames);
// Runs an encoder over the sound, by blocks of odd sizes, and expects each step to be Ok.
QByteArray Coded(SampleEncoder& encoder, const Sound& sound);

// What ffmpeg decodes of a file, as floats.
Sound DecodedByFfmpeg(const QString& path, int rateHz, int channels);
// What ffprobe tells of the first audio stream, by its names such as "sample_rate", with commas between.
QString Probed(const QString& path, const QString& names);
// The length that the container tells, in seconds.
double ProbedSeconds(const QString& path);

// Power of what differs against the power of `original`, in dB; the higher, the closer. Over the frames of
// `original`, which `decoded` begins `lag` frames later.
double SignalToNoiseDb(const Sound& original, const Sound& decoded, qint64 lag = 0);
// The lag from 0 to `most` frames at which the two are closest.
qint64 ClosestLag(const Sound& original, const Sound& decoded, qint64 most);

// Mean power of the first channel between two frequencies, in dB of full scale.
double BandDb(const Sound& sound, double lowHz, double highHz);

} // namespace kestrune
