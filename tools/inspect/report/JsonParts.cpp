#include "inspect/report/JsonParts.h"

#include "inspect/base/Bytes.h"
#include "inspect/base/Utf8.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

struct ValueToJson {
    Json operator()(int32_t value) const { return {{"type", "int32"}, {"value", value}}; }
    Json operator()(int64_t value) const { return {{"type", "int64"}, {"value", value}}; }
    Json operator()(const std::string& value) const {
        Json json = {{"type", "string"}, {"value", toText(value)}};
        if (!isUtf8(value)) json["bytes"] = hex(ByteVector(value.begin(), value.end()), "");
        return json;
    }
    Json operator()(const ByteVector& value) const {
        return {{"type", "buffer"}, {"value", hex(value, "")}};
    }
};

}  // namespace

Json toText(const std::string& text) {
    return toUtf8(text);
}

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : toText(text);
}

void addPath(Json& json, const char* key, const std::string& path) {
    json[key] = toText(path);
    if (!isUtf8(path))
        json[key + std::string("Bytes")] = hex(ByteVector(path.begin(), path.end()), "");
}

Json keysToJson(const Entries& entries) {
    Json keys = Json::object();
    for (const auto& [key, value] : entries) keys[key] = std::visit(ValueToJson{}, value);
    return keys;
}

Json mimeToJson(const Entries& entries) {
    const auto* mime = findValue<std::string>(entries, AMEDIAFORMAT_KEY_MIME);
    return mime != nullptr ? toText(*mime) : Json();
}

Json lineToJson(const host::LogLine& line) {
    return {{"priority", line.priority}, {"tag", line.tag}, {"text", toText(line.text)}};
}

Json verdictToJson(const Verdict& verdict) {
    return {{"verdict", toString(verdict.play)},
            {"plays", plays(verdict.play)},
            {"reason", textOrNull(verdict.reason)},
            {"decoder", textOrNull(verdict.decoder)},
            {"notKnown", arrayOf(verdict.notKnown, toText)}};
}

Json verdictToJson(const FileVerdict& verdict) {
    return {{"verdict", toString(verdict.play)},
            {"plays", verdict.play == FilePlay::kPlays},
            {"reason", textOrNull(verdict.reason)},
            {"decoder", textOrNull(verdict.decoder)}};
}

Json stepToJson(const Step& step) {
    return {{"what", toText(step.what)}, {"answer", toText(step.answer)}};
}

}  // namespace inspect
