// A component that takes every parameter and remembers it. On a device it is the codec's own.

#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/OmxNode.h"

namespace glue {

struct Parameter {
    OMX_INDEXTYPE index;
    std::vector<uint8_t> bytes;
};

class Component : public android::IOMXNode {
public:
    // Tells what it received last, or else leaves the caller's bytes as they are.
    android::status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) override {
        for (const Parameter& each : mReceived) {
            if (each.index == index && each.bytes.size() == size) {
                memcpy(params, each.bytes.data(), size);
            }
        }
        return android::OK;
    }

    android::status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override {
        const auto* bytes = static_cast<const uint8_t*>(params);
        mReceived.push_back({index, std::vector<uint8_t>(bytes, bytes + size)});
        return android::OK;
    }

    // Knows no extensions.
    android::status_t getExtensionIndex(const char*, OMX_INDEXTYPE*) override {
        return android::ERROR_UNSUPPORTED;
    }

    const std::vector<Parameter>& received() const { return mReceived; }

private:
    std::vector<Parameter> mReceived;
};

}  // namespace glue
