#define ZR_PCM_ISA kNeon
#include "Helper/pcm/Blocks.h"
