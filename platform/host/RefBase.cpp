#include "platform/RefBase.h"

namespace android {

RefBase::~RefBase() = default;

void RefBase::incStrong(const void*) const {
    if (__atomic_fetch_add(&mStrong, 1, __ATOMIC_RELAXED) == 0) {
        const_cast<RefBase*>(this)->onFirstRef();
    }
}

void RefBase::decStrong(const void* id) const {
    if (__atomic_fetch_sub(&mStrong, 1, __ATOMIC_ACQ_REL) == 1) {
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
