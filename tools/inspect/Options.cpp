#include "inspect/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <sstream>

#include "inspect/CollectionOptions.h"
#include "inspect/DeviceOptions.h"
#include "inspect/devices/DeviceList.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

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

CLI::Validator notEmpty() {
    return CLI::Validator(
            [](const std::string& text) {
                return text.empty() ? "is an empty name" : std::string();
            },
            "");
}

void addOutputOptions(CLI::App& app, Options& options) {
    addOption(app, "--html", options.html, "OUT",
              "Write one HTML page: of files all there is, byte maps and key frames\n"
              "too, of folders and lists a table")
            ->check(notEmpty());
    addOption(app, "--pictures", options.pictures, "DIR",
              "Write the tags' pictures to files in this folder")
            ->check(notEmpty());
    addOption(app, "--dump-wav", options.scope.dumpWav, "OUT",
              "Write the first PCM track, converted to 16 bits, to this WAV file")
            ->check(notEmpty());
    app.add_flag("--force", options.scope.outputs.overwrites,
                 "Let --html, --pictures and --dump-wav overwrite files");
    app.callback([&app, &options] {
        if (options.files.empty() && options.collection.sources.list.empty()) {
            throw CLI::RequiredError("FILE");
        }
        options.collection.isWanted = isForCollection(app, options);
        if (options.scope.outputs.overwrites && options.html.empty() && options.pictures.empty() &&
            options.scope.dumpWav.empty()) {
            throw CLI::RequiresError("--force", "--html, --pictures or --dump-wav");
        }
        if (options.files.size() > 1 && !options.scope.dumpWav.empty()) {
            throw CLI::ValidationError("--dump-wav", "takes one FILE only");
        }
    });
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

Scope Options::gathered() const {
    Scope all = scope;
    if (html.empty()) return all;
    all.fix = all.explain = all.frames = all.component = all.waveform = true;
    return all;
}

std::optional<CommandLineEnd> readCommandLine(int count, char** arguments, Options& options) {
    CLI::App app(
            "Shows what the codec parser library makes of media files: the container, each "
            "track's MIME type,\nits codec data, whether it plays on a device, and the tags.",
            "zrinspect");
    app.footer(
            "Exit status: 0 when every file was described, 1 when one could not be read, is "
            "truncated or fails\n--verify, or a file could not be written, 2 for a wrong command "
            "line or an unknown device, 3\nwhen --check is not met, or less plays than in "
            "--against, and nothing else is wrong.");
    app.set_version_flag("--version", android::ZRCODECPARSER_VERSION,
                         "Print the library's version");
    app.add_option("FILE", options.files, "Files and folders to look at; - is standard input")
            ->type_name("");
    app.add_flag("--json", options.json, "Print one JSON document; docs/json.md names every field");
    app.add_flag("--keys", options.keys, "Print every key that the library stored");
    app.add_flag("--fix", options.scope.fix,
                 "Print what to change so that a file plays, as an ffmpeg command");
    app.add_flag("--check{all}", options.check,
                 "Exit with 3 when something does not play: =video, =audio or =all")
            ->check(CLI::IsMember({"video", "audio", "all"}).description(""));
    app.add_flag("--quiet,-q", options.quiet, "Print errors only, and the lines of --jsonl");
    app.add_flag("--log", options.log, "Print what the library wrote to its log");
    addOption(app, "--width", options.columns, "COLUMNS",
              "Break lines and tables there, not at the terminal's edge; 0 is nowhere")
            ->check(CLI::Range(0, 1 << 16).description(""));
    app.add_flag("--explain", options.scope.explain, "Print the codec data byte by byte");
    addGlueOptions(app, options.scope);
    app.add_flag("--frames", options.scope.frames,
                 "Compare the key frames that the library finds with those marked");
    app.add_flag("--verify", options.scope.verify,
                 "Read every sample and say whether all are there, whole and in order");
    addOutputOptions(app, options);
    DeviceOptions device;
    addDeviceOptions(app, device);
    addCollectionOptions(app, options.collection);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        std::ostringstream text;
        if (app.exit(error, text, text) == 0) return CommandLineEnd{0, text.str()};
        return CommandLineEnd{kExitUsage, error.what() + hintOnDash(app.remaining())};
    }
    options.isCompared = !device.compared.empty();
    options.isDeviceNamed = options.isCompared || !device.devices.empty();
    const std::string option = options.isCompared ? "--compare: " : "--device: ";
    try {
        options.scope.devices = readDevices(device);
    } catch (const UnknownDevice& error) {
        return CommandLineEnd{kExitUsage, option + error.what()};
    } catch (const FileError& error) {
        return CommandLineEnd{kExitFileError, option + error.what()};
    }
    options.scope.outputs.inputs = options.files;
    for (const std::string& each : {options.collection.sources.list, options.collection.database,
                                    options.collection.against}) {
        if (!each.empty()) options.scope.outputs.inputs.push_back(each);
    }
    options.collection.sources.paths = options.files;
    options.collection.quiet = options.quiet;
    options.collection.check = options.check;
    return {};
}

}  // namespace inspect
