#include "backends/transform/stereo_to_mono.h"
#include "support/audio_transform_contract.h"
#include "support/fake_audio_transform.h"

namespace kestrune {

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, AudioTransformContract, FakeAudioTransform);
INSTANTIATE_TYPED_TEST_SUITE_P(Backend, AudioTransformContract, StereoToMonoTransform);

} // namespace kestrune
