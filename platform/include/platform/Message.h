/// @file
/// The key/value store in which tracks and buffers are described to components.

#pragma once

#include <cstdint>

#include "platform/RefBase.h"
#include "platform/Strings.h"

namespace android {

/// @cond
class ABuffer;
/// @endcond

/// A store of numbers, texts and buffers under text keys, one thread at a time.
///
/// Each setter stores the value in place of whatever was under the key: texts as copies, buffers as
/// references. A finder returns true, and writes its output, only for a value of its type.
///
/// One that describes a track holds what the track's AMediaFormat holds, under the same keys.
class AMessage : public RefBase {
public:
    AMessage();  ///< empty

    /// @{
    /// Stores a value.
    void setInt32(const char* key, int32_t value);
    void setInt64(const char* key, int64_t value);
    void setString(const char* key, const char* value);
    void setBuffer(const char* key, const sp<ABuffer>& value);
    /// @}

    /// @{
    /// Whether there is a value of this type, and the value.
    bool findInt32(const char* key, int32_t* value) const;
    bool findInt64(const char* key, int64_t* value) const;
    bool findString(const char* key, AString* value) const;
    bool findBuffer(const char* key, sp<ABuffer>* value) const;
    /// @}

    void clear();  ///< leaves it empty

protected:
    ~AMessage() override;  ///< when the last reference goes

private:
    struct Entries;
    Entries* mEntries;  // owned
};

}  // namespace android
