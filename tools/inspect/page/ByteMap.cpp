#include <algorithm>

#include "inspect/base/Utf8.h"
#include "inspect/page/Views.h"

namespace inspect {
namespace {

constexpr size_t kMaxMapBytes = 4096;
constexpr size_t kMaxRecordRows = 600;
constexpr size_t kBytesALine = 16;
constexpr size_t kColours = 4;
constexpr unsigned kDeepest = 8;

// Rows that share bytes, the first of which has them.
struct Field {
    const Row* first = nullptr;
    std::string title;
};

std::string rowText(const Row& row) {
    return row.value.empty() ? row.name : joined({row.name, " = ", row.value});
}

// A row that belongs to the field before it.
bool sharesBytes(const Row& row) {
    return row.bytes.empty() && row.bits > 0;
}

class MapView {
public:
    explicit MapView(const Record& record) : mRecord(record) {
        mClauses.push_back({0, record.clause});
        const size_t count = std::min(record.rows.size(), kMaxRecordRows);
        for (size_t i = 0; i < count; i++) add(record.rows[i]);
        addLines();
        mRowsLeft = record.rows.size() - count;
    }

    Json view() {
        return {{"rows", std::move(mRows)},
                {"lines", std::move(mLines)},
                {"more", mRowsLeft > 0 ? Json(mRowsLeft) : Json()},
                {"moreBytes",
                 mRecord.sizeBytes > mShown ? Json(mRecord.sizeBytes - mShown) : Json()}};
    }

private:
    struct Cited {
        unsigned depth;
        std::string_view clause;
    };

    void add(const Row& row) {
        const bool isHeading = row.bytes.empty() && !sharesBytes(row);
        while (mClauses.size() > 1 && mClauses.back().depth >= row.depth + (isHeading ? 0 : 1)) {
            mClauses.pop_back();
        }
        if (!row.clause.empty()) mClauses.push_back({row.depth, row.clause});
        if (!row.bytes.empty()) mFields.push_back({&row, rowText(row)});
        if (sharesBytes(row) && !mFields.empty())
            mFields.back().title.append("; ").append(rowText(row));
        const std::string_view clause = mClauses.back().clause;
        mRows.push_back(
                {{"offset", isHeading ? Json() : Json(row.offset)},
                 {"field", isHeading || mFields.empty() ? Json() : Json(mFields.size() - 1)},
                 {"isHeading", isHeading},
                 {"depth", std::min(row.depth, kDeepest)},
                 {"name", toUtf8(row.name)},
                 {"value", row.value.empty() ? Json() : Json(shortened(toUtf8(row.value)))},
                 {"size", sizeText(row)},
                 {"clause", clause.empty() ? Json() : Json(clause)}});
    }

    static Json sizeText(const Row& row) {
        if (row.bits > 0) return numbered("", row.bits, row.bits == 1 ? " bit" : " bits");
        if (row.bytes.empty()) return {};
        return numbered("", row.bytes.size(), row.bytes.size() == 1 ? " byte" : " bytes");
    }

    // A field is one cell of each line that it is in.
    void addLines() {
        for (size_t i = 0; i < mFields.size() && mShown < kMaxMapBytes; i++) {
            const Bytes bytes = mFields[i].first->bytes;
            for (size_t at = 0; at < bytes.size() && mShown < kMaxMapBytes;) {
                const size_t room = kBytesALine - mShown % kBytesALine;
                const Bytes part = bytes.subspan(at, std::min(room, bytes.size() - at));
                addCell(i, part, at > 0, at + part.size() < bytes.size());
                at += part.size();
            }
        }
    }

    void addCell(size_t field, Bytes part, bool isContinued, bool goesOn) {
        if (mShown % kBytesALine == 0) mLines.push_back({{"at", mShown}, {"cells", Json::array()}});
        std::string classes = numbered("c", field % kColours);
        if (isContinued) classes += " from";
        if (goesOn) classes += " on";
        mLines.back()["cells"].push_back({{"span", part.size()},
                                          {"classes", classes},
                                          {"id", field},
                                          {"title", shortened(toUtf8(mFields[field].title))},
                                          {"hex", hex(part, " ")}});
        mShown += part.size();
    }

    const Record& mRecord;
    std::vector<Cited> mClauses;
    std::vector<Field> mFields;
    Json mRows = Json::array();
    Json mLines = Json::array();
    size_t mShown = 0;  // bytes
    size_t mRowsLeft = 0;
};

}  // namespace

std::string recordHtml(const Record& record, const std::string& id, Room& room) {
    Json view = MapView(record).view();
    view["id"] = id;
    view["key"] = toUtf8(record.key);
    view["size"] = record.sizeBytes;
    view["recordClause"] = presentText(std::string(record.clause));
    view["summary"] = presentText(shortened(toUtf8(record.summary)));
    std::string html = fillIn("record", view);
    if (html.size() > room.records) {
        view["rows"] = view["lines"] = Json::array();
        view["more"] = record.rows.size();
        view["moreBytes"] = record.sizeBytes;
        html = fillIn("record", view);
    }
    room.records -= std::min(room.records, html.size());
    return html;
}

}  // namespace inspect
