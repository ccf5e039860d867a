/// @file
/// Intrusive reference counting: RefBase is the counted object, sp<T> a strong reference to one.

#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace android {

/// The virtual operations stand in the order of their slots, which derived classes of other
/// binaries depend on. An object deletes itself when its last strong reference goes.
class RefBase {
public:
    RefBase(const RefBase&) = delete;
    RefBase& operator=(const RefBase&) = delete;

    /// Counts a reference; the id is not looked at.
    void incStrong(const void* id) const;
    /// Takes one back; the last one deletes the object.
    void decStrong(const void* id) const;

protected:
    RefBase() = default;  ///< without a reference
    virtual ~RefBase();   ///< of a derived class

    /// @{
    /// For derived classes of other binaries; does nothing here.
    virtual void onFirstRef();
    virtual void onLastStrongRef(const void* id);
    virtual bool onIncStrongAttempted(uint32_t flags, const void* id);
    virtual void onLastWeakRef(const void* id);
    /// @}

private:
    mutable int32_t mStrong = 0;  // counted atomically
};

/// A strong reference, or null. Several threads may hold references to one object; one sp is used
/// by one thread at a time.
template <typename T>
class sp {
public:
    /// @{
    /// A reference to the object, null without one.
    constexpr sp() = default;
    constexpr sp(std::nullptr_t) {}
    sp(T* object) : mObject(object) { acquire(); }
    sp(const sp& other) : mObject(other.mObject) { acquire(); }
    sp(sp&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
    template <typename U>
    sp(const sp<U>& other) : mObject(other.get()) {
        acquire();
    }
    /// @}
    /// Gives the reference back.
    ~sp() { clear(); }

    /// Refers to what the other one does.
    sp& operator=(sp other) {
        std::swap(mObject, other.mObject);
        return *this;
    }

    /// Gives the reference back and is null.
    void clear() {
        if (T* object = std::exchange(mObject, nullptr)) object->decStrong(this);
    }

    /// @{
    /// As a plain pointer.
    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }
    /// @}

private:
    void acquire() {
        if (mObject != nullptr) mObject->incStrong(this);
    }

    T* mObject = nullptr;
};

/// @{
/// Whether two are the same object, or one is null.
template <typename T, typename U>
bool operator==(const sp<T>& left, const sp<U>& right) {
    return left.get() == right.get();
}

template <typename T>
bool operator==(const sp<T>& reference, std::nullptr_t) {
    return reference.get() == nullptr;
}

template <typename T, typename U>
bool operator!=(const sp<T>& left, const U& right) {
    return !(left == right);
}
/// @}

}  // namespace android
