// A codec component that remembers what it is told.

#pragma once

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/OmxNode.h"

namespace test {

struct Call {
    std::string name;  // "get 0400000a", "set 0400000a", "extension NAME"
    std::vector<uint8_t> bytes{};

    // A number in the parameters, little-endian.
    uint32_t at(size_t offset, size_t size = 4) const {
        uint32_t value = 0;
        for (size_t i = size; i > 0; --i) value = value << 8 | bytes.at(offset + i - 1);
        return value;
    }
};

// Returns A5 for every byte behind size, version and port.
class Component : public android::IOMXNode {
public:
    std::vector<Call> calls;
    std::map<size_t, android::status_t> errors;  // by the number of the call

    android::status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) override {
        auto* bytes = static_cast<uint8_t*>(params);
        const auto status = record({"get " + hex(index), {bytes, bytes + size}});
        if (status == 0 && size > 12) std::memset(bytes + 12, 0xA5, size - 12);
        return status;
    }

    android::status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override {
        const auto* bytes = static_cast<const uint8_t*>(params);
        return record({"set " + hex(index), {bytes, bytes + size}});
    }

    android::status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) override {
        *index = static_cast<OMX_INDEXTYPE>(0x7F0000EE);
        return record({std::string("extension ") + name});
    }

    // The names of the calls, each with a newline.
    std::string text() const {
        std::string names;
        for (const Call& call : calls) names += call.name + "\n";
        return names;
    }

private:
    static std::string hex(OMX_INDEXTYPE index) {
        char text[9];
        std::snprintf(text, sizeof(text), "%08x", static_cast<unsigned>(index));
        return text;
    }

    android::status_t record(Call call) {
        calls.push_back(std::move(call));
        const auto error = errors.find(calls.size() - 1);
        return error == errors.end() ? 0 : error->second;
    }
};

}  // namespace test
