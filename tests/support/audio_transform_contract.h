// What every KSTAudioTransform2 promises. A test file instantiates it for each kind that it knows.
#pragma once

#include "components/audio_transform.h"

#include <gtest/gtest.h>

namespace kestrune {

template <typename Transform>
class AudioTransformContract : public testing::Test {
protected:
    QList<qint16> Folded(QList<qint16> samples) {
        transform.StereoToMono(samples);
        return samples;
    }
    Transform transform;
};

TYPED_TEST_SUITE_P(AudioTransformContract);

TYPED_TEST_P(AudioTransformContract, AnEmptyBlockStaysEmpty) {
    EXPECT_TRUE(this->Folded({}).isEmpty());
}

TYPED_TEST_P(AudioTransformContract, EachPairBecomesItsMean) {
    EXPECT_EQ(this->Folded({100, 200, -100, -300, 7, 7}), (QList<qint16>{150, -200, 7}));
}

TYPED_TEST_P(AudioTransformContract, HalvesAreRoundedTowardZero) {
    EXPECT_EQ(this->Folded({1, 2, -1, -2, 0, 1, 0, -1}), (QList<qint16>{1, -1, 0, 0}));
}

TYPED_TEST_P(AudioTransformContract, TheLoudestPairDoesNotWrapAround) {
    EXPECT_EQ(this->Folded({32767, 32767, -32768, -32768, 32767, -32768}), (QList<qint16>{32767, -32768, 0}));
}

TYPED_TEST_P(AudioTransformContract, ALastSampleWithoutPartnerIsDropped) {
    EXPECT_EQ(this->Folded({4, 6, 9}), (QList<qint16>{5}));
}

REGISTER_TYPED_TEST_SUITE_P(AudioTransformContract, AnEmptyBlockStaysEmpty, EachPairBecomesItsMean,
                            HalvesAreRoundedTowardZero, TheLoudestPairDoesNotWrapAround,
                            ALastSampleWithoutPartnerIsDropped);

} // namespace kestrune
