#include "inspect/CollectionOptions.h"

#include <algorithm>
#include <filesystem>
#include <thread>

#include "inspect/DeviceOptions.h"

namespace inspect {
namespace {

constexpr const char* kGroup = "Many files";

// What they print is not said in one line a file.
constexpr const char* kNeedLines[] = {"--fix",    "--keys",      "--log",   "--explain",
                                      "--frames", "--component", "--legacy"};
constexpr const char* kForFewFiles[] = {"--json", "--pictures", "--dump-wav"};

bool isGiven(const CLI::App& app, const char* name) {
    return app.get_option(name)->count() > 0;
}

}  // namespace

void addCollectionOptions(CLI::App& app, CollectionOptions& options) {
    options.workers = std::max(1U, std::thread::hardware_concurrency());
    CLI::Option* list = addOption(app, "--files-from", options.sources.list, "LIST",
                                  "Look at the files named in this one, a name a line;\n"
                                  "- is standard input");
    CLI::Option* const all[] = {
            list,
            app.add_flag("-0", options.sources.endsWithNul, "The names there end with a zero byte")
                    ->needs(list),
            addOption(app, "-j", options.workers, "N",
                      "Look at so many files at a time (one a processor)")
                    ->check(CLI::Range(1, 1024).description("")),
            app.add_option_function<double>(
                       "--timeout",
                       [&options](double seconds) {
                           options.timeout = std::chrono::ceil<std::chrono::milliseconds>(
                                   std::chrono::duration<double>(seconds));
                       },
                       "Give a file up after so long; 0 is never (30)")
                    ->type_name("SECONDS")
                    ->check(CLI::Range(0., 1e6).description("")),
            addOption(app, "--max-memory", options.maxMemoryMiB, "MIB",
                      "Give a file up that takes more memory; 0 is any (1024)")
                    ->check(CLI::Range(0, 1 << 20).description("")),
            app.add_flag("--jsonl", options.lines,
                         "Print a JSON object a file, each on a line; the summary goes\n"
                         "to standard error"),
            addOption(app, "--db", options.database, "FILE",
                      "Keep what is found in this SQLite database, and look only at\n"
                      "files that are new or have changed since"),
            addOption(app, "--against", options.against, "OLD",
                      "Say what is different from these JSON lines or this database\n"
                      "of an earlier run"),
            addOption(app, "--skip", options.skip, "N", "Skip so many files of the list"),
    };
    for (CLI::Option* each : all) each->group(kGroup);
}

bool isForCollection(const CLI::App& app, const Options& options) {
    const auto options_ = app.get_options([](const CLI::Option* option) {
        return option->get_group() == kGroup && option->count() > 0;
    });
    const auto isFolder = [](const std::string& path) {
        std::error_code ignored;
        return std::filesystem::is_directory(path, ignored);
    };
    if (options_.empty() && std::ranges::none_of(options.files, isFolder)) return false;
    for (const char* name : kForFewFiles) {
        if (isGiven(app, name)) throw CLI::ValidationError(name, "is not for many files");
    }
    if (options.collection.lines) return true;
    for (const char* name : kNeedLines) {
        if (!isGiven(app, name)) continue;
        const bool isForPage = !options.html.empty() && std::string_view(name) == "--fix";
        if (!isForPage) throw CLI::RequiresError(std::string(name) + " for many files", "--jsonl");
        // A database does not keep what to change.
        if (!options.collection.database.empty()) {
            throw CLI::ValidationError(name, "goes on the page in a run without --db");
        }
    }
    return true;
}

}  // namespace inspect
