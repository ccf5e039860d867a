// The tag reader that each MediaExtractorHelper owns.

#pragma once

#include "platform/RefBase.h"
#include "zrcodecparser/Export.h"

namespace android {

// Reference-counted and without fields of its own.
class ZR_EXPORT ID3Wrapper : public RefBase {
public:
    ID3Wrapper();
    ~ID3Wrapper() override;
};

}  // namespace android
