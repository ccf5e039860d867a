#include "inspect/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <numeric>
#include <sstream>
#include <string_view>

#include "inspect/callers/Offer.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

struct DeviceOptions {
    std::vector<std::string> add;
    std::vector<std::string> remove;
    std::vector<std::string> only;
    std::string divxAlternative;
    std::string mediaServer;
    std::string codecInfo;
};

int32_t numberOf(const std::string& text) {
    int32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end) {
        throw CLI::ConversionError(text, "--component-key, which takes a number of 32 bits");
    }
    return number;
}

// With one value each time.
template <typename Target>
CLI::Option* addOption(CLI::App& app, const char* name, Target& target, const char* type,
                       const char* help) {
    return app.add_option(name, target, help)->type_name(type)->allow_extra_args(false);
}

void addGlueOptions(CLI::App& app, Scope& scope) {
    auto* component = app.add_flag("--component", scope.component,
                                   "Print what a decoder component would be sent for each track");
    addOption(app, "--component-name", scope.componentOptions.name, "NAME",
              "Take it for this Qualcomm decoder")
            ->needs(component);
    const auto addKeys = [&scope](const std::vector<std::string>& words) {
        for (size_t i = 0; i + 1 < words.size(); i += 2) {
            scope.componentOptions.keys.emplace_back(words[i], numberOf(words[i + 1]));
        }
    };
    app.add_option_function<std::vector<std::string>>(
               "--component-key", addKeys,
               "Put this number into its format, as a parser that knows more would")
            ->type_name("KEY NUMBER")
            ->type_size(2)
            ->allow_extra_args(false)
            ->needs(component);
    app.add_flag("--legacy", scope.legacy, "Print the tracks as older parsers see them");
}

// Of these words; the help names them in the option's type already.
CLI::Validator oneOf(std::vector<std::string> words) {
    return CLI::Validator(CLI::IsMember(std::move(words))).description("");
}

CLI::Validator notEmpty() {
    return CLI::Validator(
            [](const std::string& text) {
                return text.empty() ? "is an empty name" : std::string();
            },
            "");
}

// How many characters have to be put in, left out or changed.
size_t distance(std::string_view from, std::string_view to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); i++) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < to.size(); j++) {
            const size_t changed = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// Becomes the library's spelling of a type that it looks for. One more word may be good as well.
CLI::Validator mimeType(std::string_view otherWord = {}) {
    const auto check = [otherWord](std::string& text) -> std::string {
        const std::string wanted = CLI::detail::to_lower(CLI::detail::trim_copy(text));
        std::set<std::string> known = knownDecoders();
        if (!otherWord.empty()) known.emplace(otherWord);
        const auto far = [&wanted](const std::string& mime) {
            return distance(wanted, CLI::detail::to_lower(mime));
        };
        const std::string nearest = *std::ranges::min_element(known, {}, far);
        if (far(nearest) > 0) {
            return "the library never looks for a decoder of \"" + text + "\"; the nearest is " +
                   nearest;
        }
        text = nearest;
        return {};
    };
    return CLI::Validator(check, "");
}

void addDeviceOptions(CLI::App& app, DeviceOptions& device) {
    CLI::Option* const all[] = {
            addOption(app, "--decoder", device.add, "MIME", "Has a decoder for this MIME type too")
                    ->transform(mimeType()),
            addOption(app, "--no-decoder", device.remove, "MIME",
                      "Has no decoder for this MIME type")
                    ->transform(mimeType()),
            addOption(app, "--only-decoders", device.only, "MIME,...",
                      "Has these decoders and no others; \"none\"")
                    ->delimiter(',')
                    ->transform(mimeType("none")),
            addOption(app, "--divx-alternative", device.divxAlternative, "on|off",
                      "Plays DivX as MPEG-4")
                    ->check(oneOf({"on", "off"})),
            addOption(app, "--media-server", device.mediaServer, "alive|dead",
                      "State of the media server")
                    ->check(oneOf({"alive", "dead"})),
            addOption(app, "--codec-info", device.codecInfo, "there|missing",
                      "State of the codec list's information")
                    ->check(oneOf({"there", "missing"})),
    };
    for (CLI::Option* each : all) each->group("The pretended device (a typical phone)");
}

void addOutputOptions(CLI::App& app, Options& options) {
    addOption(app, "--pictures", options.pictures, "DIR",
              "Write the tags' pictures to files in this folder")
            ->check(notEmpty());
    addOption(app, "--dump-wav", options.scope.dumpWav, "OUT",
              "Write the first PCM track, converted to 16 bits, to this WAV file")
            ->check(notEmpty());
    app.add_flag("--force", options.scope.outputs.overwrites,
                 "Let --pictures and --dump-wav overwrite files");
    app.callback([&options] {
        if (options.scope.outputs.overwrites && options.pictures.empty() &&
            options.scope.dumpWav.empty()) {
            throw CLI::RequiresError("--force", "--pictures or --dump-wav");
        }
        if (options.files.size() > 1 && !options.scope.dumpWav.empty()) {
            throw CLI::ValidationError("--dump-wav", "takes one FILE only");
        }
    });
}

void shape(host::Device& device, const DeviceOptions& options) {
    if (!options.only.empty()) {
        device.decoders = options.only;
        std::erase(device.decoders, "none");
    }
    for (const std::string& mime : options.remove) std::erase(device.decoders, mime);
    device.decoders.insert(device.decoders.end(), options.add.begin(), options.add.end());
    if (!options.divxAlternative.empty()) device.divxAlternative = options.divxAlternative == "on";
    device.mediaServerAlive = options.mediaServer != "dead";
    device.codecInfoAvailable = options.codecInfo != "missing";
}

// Names of files that look like options.
std::string hintOnDash(const std::vector<std::string>& unexpected) {
    const auto exists = [](const std::string& name) {
        std::error_code ignored;
        return std::filesystem::exists(name, ignored);
    };
    const auto file = std::ranges::find_if(unexpected, exists);
    return file != unexpected.end() ? "; for the file of that name, write ./" + *file : "";
}

}  // namespace

std::optional<CommandLineEnd> readCommandLine(int count, char** arguments, Options& options) {
    CLI::App app(
            "Shows what the codec parser library makes of media files: the container, each "
            "track's MIME type,\nits codec data, whether it plays on a device, and the tags.",
            "zrinspect");
    app.footer(
            "Exit status: 0 when every file was described, 1 when one could not be read, is "
            "truncated or fails\n--verify, or a file could not be written, 2 for a wrong command "
            "line.");
    app.set_version_flag("--version", android::ZRCODECPARSER_VERSION,
                         "Print the library's version");
    app.add_option("FILE", options.files, "Files to look at; - is standard input")
            ->type_name("")
            ->required();
    app.add_flag("--json", options.json, "Print one JSON document with every key");
    app.add_flag("--keys", options.keys, "Print every key that the library stored");
    app.add_flag("--log", options.log, "Print what the library wrote to its log");
    app.add_flag("--explain", options.scope.explain, "Print the codec data byte by byte");
    addGlueOptions(app, options.scope);
    app.add_flag("--frames", options.scope.frames,
                 "Compare the key frames that the library finds with those marked");
    app.add_flag("--verify", options.scope.verify,
                 "Read every sample and say whether they are all there, whole and in order");
    addOutputOptions(app, options);
    DeviceOptions device;
    addDeviceOptions(app, device);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        std::ostringstream text;
        if (app.exit(error, text, text) == 0) return CommandLineEnd{0, text.str()};
        return CommandLineEnd{kExitUsage, error.what() + hintOnDash(app.remaining())};
    }
    PretendedDevice pretended;
    pretended.host = host::typicalPhone();
    for (const std::string& mime : pretended.host.decoders) {
        Decoder decoder;
        decoder.type = mime;
        pretended.description.decoders.push_back(decoder);
    }
    shape(pretended.host, device);
    options.scope.devices.push_back(pretended);
    options.scope.outputs.inputs = options.files;
    return {};
}

}  // namespace inspect
