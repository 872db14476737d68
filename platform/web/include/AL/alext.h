// The extensions that the game asks for; the browser's sound library has their numbers in no header.
#pragma once

#include <AL/al.h>

#define AL_FORMAT_STEREO_FLOAT32 0x10011  // AL_EXT_float32, which it has
#define AL_NUM_RESAMPLERS_SOFT 0x1210     // AL_SOFT_source_resampler, which it has not
#define AL_SOURCE_RESAMPLER_SOFT 0x1212
