#include "platform/RefBase.h"

#include <atomic>

namespace android {

RefBase::~RefBase() = default;

void RefBase::incStrong(const void*) const {
    if (std::atomic_ref(mStrong).fetch_add(1, std::memory_order_relaxed) == 0) {
        const_cast<RefBase*>(this)->onFirstRef();
    }
}

void RefBase::decStrong(const void* id) const {
    if (std::atomic_ref(mStrong).fetch_sub(1, std::memory_order_acq_rel) == 1) {
        const_cast<RefBase*>(this)->onLastStrongRef(id);
        delete this;
    }
}

void RefBase::onFirstRef() {}

void RefBase::onLastStrongRef(const void*) {}

bool RefBase::onIncStrongAttempted(uint32_t, const void*) {
    return false;
}

void RefBase::onLastWeakRef(const void*) {}

}  // namespace android
