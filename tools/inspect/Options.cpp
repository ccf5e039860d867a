#include "inspect/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

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

void addGlueOptions(CLI::App& app, Scope& scope) {
    auto* component = app.add_flag("--component", scope.component,
                                   "Print what a decoder component would be sent for each track");
    app.add_option("--component-name", scope.componentOptions.name,
                   "Take it for this Qualcomm decoder")
            ->type_name("NAME")
            ->allow_extra_args(false)
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

void addDeviceOptions(CLI::App& app, DeviceOptions& device) {
    const std::string group = "The pretended device (a typical phone)";
    app.add_option("--decoder", device.add, "Has a decoder for this MIME type too")
            ->type_name("MIME")
            ->allow_extra_args(false)
            ->group(group);
    app.add_option("--no-decoder", device.remove, "Has no decoder for this MIME type")
            ->type_name("MIME")
            ->allow_extra_args(false)
            ->group(group);
    app.add_option("--only-decoders", device.only, "Has these decoders and no others; \"none\"")
            ->type_name("MIME,...")
            ->allow_extra_args(false)
            ->delimiter(',')
            ->group(group);
    app.add_option("--divx-alternative", device.divxAlternative, "Plays DivX as MPEG-4")
            ->type_name("on|off")
            ->check(oneOf({"on", "off"}))
            ->group(group);
    app.add_option("--media-server", device.mediaServer, "State of the media server")
            ->type_name("alive|dead")
            ->check(oneOf({"alive", "dead"}))
            ->group(group);
    app.add_option("--codec-info", device.codecInfo, "State of the codec list's information")
            ->type_name("there|missing")
            ->check(oneOf({"there", "missing"}))
            ->group(group);
}

void addOutputOptions(CLI::App& app, Options& options) {
    app.add_option("--pictures", options.pictures,
                   "Write the tags' pictures to files in this folder")
            ->type_name("DIR")
            ->allow_extra_args(false)
            ->check(notEmpty());
    app.add_option("--dump-wav", options.scope.dumpWav,
                   "Write the first PCM track, converted to 16 bits, to this WAV file")
            ->type_name("OUT")
            ->allow_extra_args(false)
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

}  // namespace

std::optional<int> readCommandLine(int count, char** arguments, Options& options) {
    CLI::App app(
            "Shows what the codec parser library makes of media files: the container, each "
            "track's MIME type,\nits codec data, whether it plays on a device, and the tags.",
            "zrinspect");
    app.footer(
            "Exit status: 0 when every file was described, 1 when one could not be read or is "
            "truncated,\nor a file could not be written, 2 for a wrong command line.");
    app.set_version_flag("--version", android::ZRCODECPARSER_VERSION,
                         "Print the library's version");
    app.add_option("FILE", options.files, "Files to look at")->type_name("")->required();
    app.add_flag("--json", options.json, "Print one JSON document with every key");
    app.add_flag("--keys", options.keys, "Print every key that the library stored");
    app.add_flag("--log", options.log, "Print what the library wrote to its log");
    app.add_flag("--explain", options.scope.explain, "Print the codec data byte by byte");
    addGlueOptions(app, options.scope);
    app.add_flag("--frames", options.scope.frames,
                 "Compare the key frames that the library finds with those marked");
    addOutputOptions(app, options);
    DeviceOptions device;
    addDeviceOptions(app, device);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kExitUsage;
    }
    shape(options.scope.device, device);
    options.scope.outputs.inputs = options.files;
    return {};
}

}  // namespace inspect
