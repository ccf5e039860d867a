#include "inspect/DeviceOptions.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "inspect/base/Distance.h"
#include "inspect/base/InputFile.h"
#include "inspect/callers/Offer.h"
#include "inspect/devices/DeviceList.h"
#include "inspect/devices/Profiles.h"

namespace inspect {
namespace {

constexpr const char* kDefaultDevice = "phone";

// Of these words; the help names them in the option's type already.
CLI::Validator oneOf(std::vector<std::string> words) {
    return CLI::Validator(CLI::IsMember(std::move(words))).description("");
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

std::string listOfDevices() {
    size_t width = 0;
    for (const auto& each : builtInDevices()) width = std::max(width, each.name.size());
    std::string text;
    for (const BuiltInDevice& each : builtInDevices()) {
        text.append(each.name).append(width + 2 - each.name.size(), ' ');
        text.append(each.description).append("\n");
    }
    text.pop_back();
    return text;
}

Decoder anyDecoder(const std::string& mime) {
    Decoder decoder;
    decoder.name = "(any)";
    decoder.type = mime;
    return decoder;
}

bool isOfType(const Decoder& decoder, const std::string& mime) {
    return isSameMime(decoder.type, mime);
}

// Those of the device where it has some of the type.
void keepOnly(std::vector<Decoder>& decoders, const std::vector<std::string>& mimes) {
    std::vector<Decoder> kept;
    for (const std::string& mime : mimes) {
        if (mime == "none") continue;
        const size_t before = kept.size();
        std::ranges::copy_if(decoders, std::back_inserter(kept),
                             [&](const Decoder& each) { return isOfType(each, mime); });
        if (kept.size() == before) kept.push_back(anyDecoder(mime));
    }
    decoders = std::move(kept);
}

// At the commas, but for a file that has some in its name.
void split(const std::string& list, std::vector<std::string>& names) {
    std::error_code ignored;
    if (std::filesystem::exists(list, ignored)) return names.push_back(list);
    for (const std::string& name : CLI::detail::split(list, ',')) {
        names.push_back(CLI::detail::trim_copy(name));
    }
}

void shape(PretendedDevice& device, const DeviceOptions& options) {
    std::vector<Decoder>& decoders = device.description.decoders;
    if (!options.only.empty()) keepOnly(decoders, options.only);
    for (const std::string& mime : options.remove) {
        std::erase_if(decoders, [&](const Decoder& each) { return isOfType(each, mime); });
    }
    for (const std::string& mime : options.add) decoders.push_back(anyDecoder(mime));
    if (options.divxAlternative == "on") device.host.divxAlternative = true;
    if (options.divxAlternative == "off") device.host.divxAlternative = false;
    device.host.mediaServerAlive = options.mediaServer != "dead";
    device.host.serverHasCodecList = options.mediaServer != "no-list";
    device.host.codecInfoAvailable = options.codecInfo != "missing";
    nameDecoders(device);
}

}  // namespace

void addDeviceOptions(CLI::App& app, DeviceOptions& options) {
    CLI::Option* device =
            addOption(app, "--device", options.devices, "FILE|DIR|NAME",
                      "Judge for this device: its codec list (media_codecs.xml), a folder\n"
                      "with one, what dumpsys media.player prints, a list of MIME\n"
                      "types (- is standard input for these), or a known name; more\n"
                      "than once: the first is the one that is shown in full");
    CLI::Option* const all[] = {
            device,
            addOption(app, "--compare", options.compared, "A,B,...",
                      "Print a table of these devices, named as for --device, by files")
                    ->excludes(device),
            app.add_flag_callback(
                    "--list-devices", [] { throw CLI::CallForVersion(listOfDevices(), 0); },
                    "Print the devices that are known by name"),
            addOption(app, "--decoder", options.add, "MIME", "Has a decoder for this MIME type too")
                    ->transform(mimeType()),
            addOption(app, "--no-decoder", options.remove, "MIME",
                      "Has no decoder for this MIME type")
                    ->transform(mimeType()),
            addOption(app, "--only-decoders", options.only, "MIME,...",
                      "Has these decoders and no others; \"none\"")
                    ->delimiter(',')
                    ->transform(mimeType("none")),
            addOption(app, "--divx-alternative", options.divxAlternative, "on|off|unset",
                      "Plays DivX as MPEG-4")
                    ->check(oneOf({"on", "off", "unset"})),
            addOption(app, "--media-server", options.mediaServer, "alive|dead|no-list",
                      "State of the media server")
                    ->check(oneOf({"alive", "dead", "no-list"})),
            addOption(app, "--codec-info", options.codecInfo, "there|missing",
                      "State of the codec list's information")
                    ->check(oneOf({"there", "missing"})),
    };
    for (CLI::Option* each : all) each->group("The device (a typical phone; these change any)");
}

std::vector<PretendedDevice> readDevices(const DeviceOptions& options) {
    std::vector<std::string> names = options.devices;
    for (const std::string& each : options.compared) split(each, names);
    if (names.empty()) names.emplace_back(kDefaultDevice);
    std::vector<PretendedDevice> devices;
    for (const std::string& name : names) {
        if (name.empty()) throw UnknownDevice("is an empty name");
        PretendedDevice& device = devices.emplace_back();
        device.description = loadDevice(name);
        shape(device, options);
    }
    return devices;
}

}  // namespace inspect
