// Turns blocks of samples into blocks of another channel count.
#pragma once

#include <QList>
#include <QtGlobal>

namespace kestrune {

class KSTAudioTransform2 {
public:
    virtual ~KSTAudioTransform2() = default;
    // Folds interleaved stereo into one channel in place: each pair becomes its mean, halves rounded toward
    // zero, so two samples become one. A last sample without a partner is dropped. Any thread, never blocks,
    // cannot fail.
    virtual void StereoToMono(QList<qint16>& samples) = 0;
};

} // namespace kestrune
