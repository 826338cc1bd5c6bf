// Gives the abstract classes with signals their one home.
#include "components/audio_file.h"
#include "components/audio_information.h"
#include "components/audio_player.h"
#include "components/audio_transform.h"
#include "components/clock.h"
#include "components/pcm.h"
#include "components/pending_events.h"
#include "components/user_prompts.h"
