// The codec list of a device whose services go by another text type: only the documented way to
// the media player is there.

#include "../../../platform/include/platform/CodecList.h"

#pragma GCC poison defaultServiceManager getService asInterface
