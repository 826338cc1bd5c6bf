// Audio files that the tests make: noise and tones from a seed, coded by tools that are not ours.
#pragma once

#include "components/audio_file.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <vector>

namespace kestrune {

// Seeded noise with a tone in each channel, interleaved, at about a third of full scale.
std::vector<qint16> NoiseAndTones(int frames, int channels, int rateHz, quint32 seed);
QByteArray BytesOf(const std::vector<qint16>& samples);

// The header of a WAVE file in its plain form.
struct WaveShape {
    quint16 tag = 1;
    quint16 channels = 2;
    quint32 rateHz = 44100;
    quint16 bits = 16;
};
QByteArray WaveFile(const WaveShape& shape, const QByteArray& data);
// As above with a data size of the caller's choice, and no samples behind it.
QByteArray WaveHead(const WaveShape& shape, quint32 dataBytes);

// MPEG layer I frames, 44100 Hz stereo at 384 kbit/s, with samples of a seed: no packaged tool writes them.
QByteArray LayerOneFile(int frames, quint32 seed);
// A dictation file of the SP kind whose coded data is noise of a seed: no packaged tool writes them.
QByteArray DictationFile(int blocks, quint32 seed);
// A WAVE file of the 0x22 kind, likewise.
QByteArray TrueSpeechFile(int blocks, quint32 seed);

class TestFolder {
public:
    QString Path(const QString& name) const { return folder_.filePath(name); }
    QString Write(const QString& name, const QByteArray& content) const;

private:
    QTemporaryDir folder_;
};

QByteArray ReadWholeFile(const QString& path);

// Runs a program to its end. Standard output goes to `output` if given. False, with a test failure that shows
// its messages, if it fails.
bool RunTool(const QString& program, const QStringList& arguments, QByteArray* output = nullptr);

// All samples from the reader's position on, by blocks of odd sizes.
QByteArray ReadToEnd(KSTAudioFile2& file);

// Differences of two runs of 16-bit samples.
struct Comparison {
    qint64 ourSamples = 0;
    qint64 judgeSamples = 0;
    int largest = 0; // over the samples that both have
};
Comparison Compare(const QByteArray& ours, const QByteArray& judge);

// Seeks to random places, and expects of each the same samples as `whole` has there.
void ExpectExactSeeks(KSTAudioFile2& file, const QByteArray& whole, int places);

} // namespace kestrune
