#include "inspect/page/Page.h"

extern "C" {
#include <libavutil/base64.h>
#include <libavutil/mem.h>
#include <libavutil/sha.h>
}

#include <algorithm>
#include <array>
#include <kainjow/mustache.hpp>
#include <memory>
#include <new>
#include <stdexcept>

#include "inspect/base/Utf8.h"
#include "inspect/page/PageFiles.h"

namespace inspect {
namespace {

using TemplateData = kainjow::mustache::data;
using kainjow::mustache::mustache;

std::string textOf(std::string_view name) {
    const auto file = std::ranges::find(pageFiles(), name, &PageFile::name);
    if (file == pageFiles().end()) throw std::logic_error("no such file of the page");
    return std::string(file->text);
}

TemplateData dataOf(const Json& json) {
    if (json.is_null()) return TemplateData(TemplateData::type::bool_false);
    if (json.is_boolean()) {
        return TemplateData(json.get<bool>() ? TemplateData::type::bool_true
                                             : TemplateData::type::bool_false);
    }
    if (json.is_string()) return TemplateData(visible(json.get_ref<const std::string&>()));
    if (json.is_array()) {
        TemplateData list(TemplateData::type::list);
        for (const Json& each : json) list.push_back(dataOf(each));
        return list;
    }
    if (!json.is_object()) return TemplateData(json.dump());
    TemplateData object(TemplateData::type::object);
    for (const auto& [key, value] : json.items()) object.set(key, dataOf(value));
    return object;
}

// The source expression of ours that Content Security Policy Level 3 2.3.1 allows by its hash.
std::string hashSource(const std::string& text) {
    constexpr int kBits = 256;
    std::array<uint8_t, kBits / 8> hash{};
    const std::unique_ptr<AVSHA, decltype(&av_free)> sha(av_sha_alloc(), av_free);
    if (sha == nullptr) throw std::bad_alloc();
    av_sha_init(sha.get(), kBits);
    av_sha_update(sha.get(), reinterpret_cast<const uint8_t*>(text.data()), text.size());
    av_sha_final(sha.get(), hash.data());
    return "sha256-" + base64(hash);
}

}  // namespace

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text += part;
    return text;
}

std::string numbered(std::string_view before, uint64_t number, std::string_view after) {
    return joined({before, std::to_string(number), after});
}

std::string base64(Bytes data) {
    const int size = static_cast<int>(data.size());
    std::string text(AV_BASE64_SIZE(data.size()), '\0');
    av_base64_encode(text.data(), static_cast<int>(text.size()), data.data(), size);
    text.pop_back();  // the zero byte
    return text;
}

std::string fillIn(std::string_view name, const Json& values) {
    mustache form(textOf(std::string(name).append(".mustache")));
    std::string text = form.render(dataOf(values));
    if (!form.is_valid()) throw std::logic_error(form.error_message());
    return text;
}

std::string escapedHtml(std::string_view text) {
    return kainjow::mustache::html_escape(visible(text));
}

std::string wholePage(const std::string& title, const std::string& bodyHtml,
                      const std::string& more) {
    std::string style = textOf("page.css");
    std::string script = textOf("page.js");
    if (!more.empty()) {
        style += textOf(more + ".css");
        script += textOf(more + ".js");
    }
    return fillIn("page", {{"title", title},
                           {"bodyHtml", bodyHtml},
                           {"styleHtml", style},
                           {"scriptHtml", script},
                           {"styleHash", hashSource(style)},
                           {"scriptHash", hashSource(script)}});
}

}  // namespace inspect
