#pragma once
#include "platform/Errors.h"
#include "platform/Omx.h"
#include "platform/RefBase.h"

namespace android {
class IOMXNode : public RefBase {
public:
    virtual status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) = 0;
    virtual status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) = 0;
    virtual status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) = 0;
};
}  // namespace android
