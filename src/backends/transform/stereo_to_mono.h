// Stereo blocks folded into one channel.
#pragma once

#include "components/audio_transform.h"

namespace kestrune {

class StereoToMonoTransform : public KSTAudioTransform2 {
public:
    void StereoToMono(QList<qint16>& samples) override;
};

} // namespace kestrune
