// Parameter structures on their way to a component and back.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Helper/base/Check.h"
#include "platform/OmxNode.h"

namespace android::omx {

inline constexpr uint32_t kInputPort = 0;
inline constexpr uint32_t kOutputPort = 1;

// The decoder makers' and the device's own indices.
constexpr OMX_INDEXTYPE vendorIndex(uint32_t index) {
    return static_cast<OMX_INDEXTYPE>(index);
}

// A published structure, zero but for its size, version 1.0.0.0 and port.
template <typename Params>
Params makeParams(uint32_t port) {
    Params params;
    std::memset(&params, 0, sizeof(params));
    params.nSize = sizeof(params);
    params.nVersion.s.nVersionMajor = 1;
    params.nPortIndex = port;
    return params;
}

template <typename Params>
status_t getParams(IOMXNode& node, OMX_INDEXTYPE index, Params* params) {
    return node.getParameter(index, params, sizeof(*params));
}

template <typename Params>
status_t setParams(IOMXNode& node, OMX_INDEXTYPE index, const Params& params) {
    return node.setParameter(index, &params, sizeof(params));
}

inline void checkOk(status_t err, const char* operands = "err,(status_t)0") {
    if (err != OK) base::fatalNotEqual(base::kAtMediaCodecHelper, operands, err, 0);
}

// A structure of a layout that no published header has: bytes with numbers at offsets,
// little-endian. Whatever is not put there stays zero, or as the component returned it.
template <size_t kSize>
class ParameterImage {
public:
    // The low bytes of the value, as many as the field is wide.
    void put(size_t offset, int64_t value, size_t width) {
        for (size_t i = 0; i < width; ++i) {
            mBytes[offset + i] = static_cast<uint8_t>(value >> (8 * i) & 0xFF);
        }
    }
    void put32(size_t offset, int64_t value) { put(offset, value, 4); }

    // The size, version 1.0.0.0 and port, where every structure has them.
    void putHeader(uint32_t port) {
        put32(0, kSize);
        put32(4, 1);
        put32(8, port);
    }

    status_t get(IOMXNode& node, OMX_INDEXTYPE index) { return getParams(node, index, &mBytes); }
    status_t set(IOMXNode& node, OMX_INDEXTYPE index) const {
        return setParams(node, index, mBytes);
    }

private:
    std::array<uint8_t, kSize> mBytes{};
};

}  // namespace android::omx
