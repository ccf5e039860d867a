#include "Helper/pcm/Convert.h"

#include "Helper/pcm/Samples.h"

namespace android::pcm {

#define ZR_FORWARD(name, Conversion)                              \
    void name(const uint8_t* from, uint8_t* to, size_t samples) { \
        plainForward<Conversion>(from, to, samples);              \
    }
#define ZR_BACKWARD(name, Conversion)                             \
    void name(const uint8_t* from, uint8_t* to, size_t samples) { \
        plainBackward<Conversion>(from, to, samples);             \
    }

ZR_BACKWARD(signed8ToInt16, Signed8ToInt16)
ZR_BACKWARD(unsigned8ToInt16, Unsigned8ToInt16)
ZR_BACKWARD(int24ToFloat, Int24ToFloat)
ZR_FORWARD(int24ToInt16, Int24ToInt16)
ZR_FORWARD(bigInt24ToInt16, BigInt24ToInt16)
ZR_FORWARD(int32ToInt16, Int32ToInt16)
ZR_FORWARD(int32ToInt24, Int32ToInt24)
ZR_FORWARD(int32ToBigInt24, Int32ToBigInt24)
ZR_FORWARD(floatToInt24, FloatToInt24)
ZR_FORWARD(floatToBigInt24, FloatToBigInt24)
ZR_FORWARD(int32ToFloat, Int32ToFloat)
ZR_FORWARD(bigInt32ToFloat, BigInt32ToFloat)
ZR_FORWARD(int24ToInt32, Int24ToInt32)
ZR_FORWARD(bigInt24ToInt32, BigInt24ToInt32)
ZR_FORWARD(swap16, Swap16)
ZR_FORWARD(swap24, Swap24)
ZR_FORWARD(swap32, Swap32)

}  // namespace android::pcm
