// A format of our own, and the values in it.

#pragma once

#include <algorithm>
#include <memory>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Host.h"
#include "platform/MediaFormat.h"

namespace inspect {

using Entries = std::vector<host::FormatEntry>;

// The value under the key when it is of that type, else null.
template <typename T>
const T* findValue(const Entries& entries, std::string_view key) {
    const auto found = std::ranges::find(entries, key, &host::FormatEntry::key);
    return found != entries.end() ? std::get_if<T>(&found->value) : nullptr;
}

class Format {
public:
    AMediaFormat* get() const { return mFormat.get(); }
    Entries entries() const { return host::formatEntries(get()); }

    // The MIME type; null when none is stored. Valid until the format changes.
    const char* mime() const {
        const char* text = nullptr;
        AMediaFormat_getString(get(), AMEDIAFORMAT_KEY_MIME, &text);
        return text;
    }

private:
    struct Delete {
        void operator()(AMediaFormat* format) const { AMediaFormat_delete(format); }
    };
    std::unique_ptr<AMediaFormat, Delete> mFormat{AMediaFormat_new()};
};

}  // namespace inspect
