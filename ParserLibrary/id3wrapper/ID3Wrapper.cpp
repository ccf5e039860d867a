#include "zrcodecparser/ID3Wrapper.h"

namespace android {

ID3Wrapper::ID3Wrapper() = default;

ID3Wrapper::~ID3Wrapper() = default;

}  // namespace android
