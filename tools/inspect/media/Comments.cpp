#include "inspect/media/Comments.h"

namespace inspect {
namespace {

constexpr uint32_t kMaxComments = 1 << 16;

// A text behind its length; empty when it does not fit.
std::optional<Bytes> takeText(ByteCursor& cursor, const CommentHeader& header, Comments& comments,
                              const std::string& what) {
    const size_t position = header.bytes.size() - cursor.remaining();
    const uint32_t sizeBytes = cursor.le32();
    const size_t left = cursor.remaining();
    const Bytes text = cursor.take(sizeBytes);
    if (cursor.ok()) return text;
    const std::string where =
            header.offset
                    ? "offset " + std::to_string(*header.offset + static_cast<int64_t>(position))
                    : "byte " + std::to_string(position) + " of the header";
    comments.notes.push_back("malformed " + what + ": it claims " + std::to_string(sizeBytes) +
                             " bytes at " + where + ", and " + std::to_string(left) + " are left");
    return {};
}

}  // namespace

Comments splitComments(const CommentHeader& header) {
    Comments comments;
    ByteCursor cursor(header.bytes);
    if (!takeText(cursor, header, comments, "vendor")) return comments;
    const uint32_t count = cursor.le32();
    for (uint32_t i = 0; i < count && i < kMaxComments; i++) {
        const std::string what =
                "comment " + std::to_string(i + 1) + " of " + std::to_string(count);
        const auto text = takeText(cursor, header, comments, what);
        if (!text) return comments;
        comments.list.emplace_back(text->begin(), text->end());
    }
    if (!cursor.ok()) comments.notes.push_back("malformed: it ends before the first comment");
    if (count > kMaxComments) comments.notes.push_back("only 65536 comments are looked at");
    return comments;
}

}  // namespace inspect
