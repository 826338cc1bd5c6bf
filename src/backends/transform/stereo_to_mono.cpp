#include "backends/transform/stereo_to_mono.h"

namespace kestrune {

void StereoToMonoTransform::StereoToMono(QList<qint16>& samples) {
    const qsizetype frames = samples.size() / 2;
    qint16* const data = samples.data();
    for (qsizetype frame = 0; frame < frames; ++frame) {
        // The division of int rounds toward zero, and the sum of two samples fits an int.
        data[frame] = static_cast<qint16>((data[2 * frame] + data[2 * frame + 1]) / 2);
    }
    samples.resize(frames);
}

} // namespace kestrune
