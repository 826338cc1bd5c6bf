// A transform that remembers the blocks it was given and folds each pair by taking its sum apart in steps.
#pragma once

#include "components/audio_transform.h"

namespace kestrune {

class FakeAudioTransform : public KSTAudioTransform2 {
public:
    QList<QList<qint16>> given;

    void StereoToMono(QList<qint16>& samples) override {
        given.append(samples);
        QList<qint16> folded;
        for (qsizetype i = 0; i + 1 < samples.size(); i += 2) {
            const qint32 sum = qint32{samples[i]} + samples[i + 1];
            folded.append(static_cast<qint16>(sum / 2));
        }
        samples = folded;
    }
};

} // namespace kestrune
