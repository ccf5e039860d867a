#include "inspect/media/Comments.h"

#include <algorithm>

namespace inspect {

void CommentHeader::split(Bytes bytes, std::optional<int64_t> offset) {
    constexpr uint32_t kMaxComments = 1 << 16;
    ByteCursor cursor(bytes);
    const auto takeText = [&](const std::string& what) {
        const auto position = static_cast<int64_t>(bytes.size() - cursor.remaining());
        const uint32_t sizeBytes = cursor.le32();
        const size_t left = cursor.remaining();
        const Bytes text = cursor.take(sizeBytes);
        const std::string where = offset ? "offset " + std::to_string(*offset + position)
                                         : "byte " + std::to_string(position) + " of the header";
        if (!cursor.ok()) {
            notes.push_back("malformed " + what + ": it claims " + std::to_string(sizeBytes) +
                            " bytes at " + where + ", and " + std::to_string(left) + " are left");
        }
        return text;
    };
    takeText("vendor");
    const uint32_t count = cursor.le32();
    if (!cursor.ok() && notes.empty())
        notes.push_back("malformed: it ends before the first comment");
    for (uint32_t i = 1; i <= std::min(count, kMaxComments) && cursor.ok(); i++) {
        const Bytes text =
                takeText("comment " + std::to_string(i) + " of " + std::to_string(count));
        if (cursor.ok()) list.emplace_back(text.begin(), text.end());
    }
    if (cursor.ok() && count > kMaxComments) notes.push_back("only 65536 comments are looked at");
}

}  // namespace inspect
