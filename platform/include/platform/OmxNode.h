/// @file
/// The handle of a codec component.

#pragma once

#include <cstddef>

#include "platform/Errors.h"
#include "platform/Omx.h"
#include "platform/RefBase.h"

namespace android {

/// The operations of OpenMAX IL 1.1.2 3.2.2 that a component is set up with. Each returns 0 or the
/// component's status. Sizes are in bytes.
class IOMXNode : public RefBase {
public:
    /// Has the component tell its parameters of an index.
    virtual status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) = 0;
    /// Gives the component parameters of an index.
    virtual status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) = 0;
    /// Stores the index under which the component knows an extension.
    virtual status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) = 0;

protected:
    ~IOMXNode() override;  ///< when the last reference goes
};

}  // namespace android
