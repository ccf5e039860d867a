// Prints a line for each codec: its code, the MIME type asked for, the alternative, the one stored,
// what happens without a decoder, and the keys that come with it.

#include <cstdio>

#include "Helper/vocabulary/CodecTable.h"
#include "zrcodecparser/CodecType.h"

int main() {
    using namespace android;
    constexpr const char* kWithoutDecoder[] = {"not offered", "offered all the same",
                                               "as MPEG-4, if the device has that feature"};
    const auto orEmpty = [](const char* text) { return text != nullptr ? text : ""; };
    for (int32_t code = 0; code < kCodecTypeSubRip; ++code) {
        const CodecRow* row = findCodecRow(code);
        if (row == nullptr) continue;
        std::printf("%d\t%s\t%s\t%s\t%s\t", code, row->primary, orEmpty(row->alternative),
                    orEmpty(row->mime), kWithoutDecoder[static_cast<int>(row->withoutDecoder)]);
        for (const CodecExtra& extra : row->extras) {
            if (extra.key != nullptr) std::printf(" %s", extra.key);
        }
        std::puts("");
    }
}
