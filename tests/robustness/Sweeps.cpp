// Each operation with each of its allocations, reads, calls and writes failing once, and what it
// holds of memory. Prints how many that were.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <unistd.h>

#include <csignal>
#include <cstring>
#include <set>
#include <sstream>

#include "platform/Strings.h"
#include "robustness/Allocations.h"
#include "robustness/Operations.h"
#include "support/Tag.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/WavDump.h"

namespace {

using android::status_t;
using sweeps::ledger;
using sweeps::Operation;
using sweeps::Trial;

constexpr auto kStatuses = std::to_array<int32_t>({-1, -5, -38, -1010, INT32_MIN, 1, INT32_MAX});

void watch(const Operation& operation, Trial& run) {
    const sweeps::Unwatched former;
    sweeps::watched = true;
    run.perform(operation);
}

std::set<std::string> linesOf(const std::string& text) {
    std::istringstream in(text);
    std::set<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.insert(line);
    return lines;
}

// The file, and where it has both tags, those without the v2 tag and without both.
std::vector<std::string> withoutTags(const std::string& file) {
    std::vector<std::string> files(file.size() > 128 && file.starts_with("ID3") ? 3 : 1, file);
    for (size_t i = 1; i < files.size(); ++i) files[i][0] = '-';
    if (files.size() > 1) files[2][file.size() - 128] = '-';
    return files;
}

// What the platform makes at its first use, it keeps: that is not counted.
class Sweeps : public testing::Test {
protected:
    static void SetUpTestSuite() {
        for (const Operation& operation : sweeps::operations())
            Trial(operation.input(sweeps::kSmall)).perform(operation);
    }
};

// --- Allocations ---

struct Refusals {
    long failed = 0, thrown = 0, lossy = 0, ineffective = 0;
};

// What may come of a trial that had to do without some memory: the results, and the entries of
// stores and lines of the log.
struct Possible {
    std::set<std::string> notes, entries;
};

Possible possibleOf(const Operation& operation, const std::string& input) {
    Possible all{{}, linesOf(Trial(input).stores())};
    for (const auto& file : withoutTags(input)) {
        Trial trial(file);
        trial.perform(operation);
        all.notes.insert(trial.notes);
        all.entries.merge(linesOf(trial.stores() + trial.log));
    }
    return all;
}

// A call that returns has done without a tag, a picture or a text, and loses no memory. From one
// that std::bad_alloc leaves what it worked on is lost, and no more. In both cases the stores hold
// whole values, and the next call does all of it.
void refuse(const Operation& operation, const std::string& input, long refused, Refusals& counts) {
    const Possible possible = possibleOf(operation, input);
    const auto name = std::string(operation.name) + ' ' + std::to_string(refused);
    bool thrown = false;
    size_t peak = 0;
    {
        Trial truth(input), trial(input);
        truth.perform(operation);
        ledger.refused = refused;
        try {
            watch(operation, trial);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        peak = ledger.peak;
        counts.ineffective += trial.outcome() == truth.outcome();
        for (const std::string& line : linesOf(trial.stores() + trial.log))
            EXPECT_TRUE(possible.entries.contains(line) || line.ends_with("string()"))
                    << name << line;
        const bool tellsFrames = name.starts_with("ID3::ID3");
        EXPECT_TRUE(thrown || tellsFrames || possible.notes.contains(trial.notes)) << name;

        trial.again();
        trial.perform(operation);
        EXPECT_EQ(trial.notes + trial.log, truth.notes + truth.log) << name;
        EXPECT_TRUE(std::ranges::includes(linesOf(trial.stores()), linesOf(truth.stores())))
                << name;
    }
    const size_t lost = sweeps::releaseLost();
    EXPECT_LE(lost, thrown ? peak : 0) << name;
    ++counts.failed;
    counts.thrown += thrown;
    counts.lossy += lost > 0;
}

TEST_F(Sweeps, Allocations) {
    Refusals counts;
    for (const Operation& operation : sweeps::operations()) {
        const std::string input = operation.input(sweeps::kSmall);
        long allocations = 0;
        {
            Trial run(input);
            watch(operation, run);
            allocations = ledger.count;
        }
        EXPECT_EQ(sweeps::releaseLost(), 0u) << operation.name;
        for (long i = 0; i < allocations; ++i) refuse(operation, input, i, counts);
    }
    std::printf(
            "| operations | %zu |\n| allocations that failed | %ld |\n"
            "| of these, calls that std::bad_alloc left | %ld |\n"
            "| of these, with memory lost | %ld |\n| calls that went on as if nothing were | %ld "
            "|\n",
            sweeps::operations().size(), counts.failed, counts.thrown, counts.lossy,
            counts.ineffective);
}

// Whatever a text's memory would have been for, it comes out as it must without.
TEST_F(Sweeps, NoMemoryForTexts) {
    const auto repeated = [](char16_t unit) {  // too often for the stack
        const std::u16string units(1000, unit);
        return std::string(reinterpret_cast<const char*>(units.data()), 2000);
    };
    const auto textOf = [&repeated](const std::string& mark, char16_t unit) {
        const auto tag = test::tag(3, 0, test::frameV2_3("TIT2", mark + repeated(unit)));
        const android::ID3 id3(reinterpret_cast<const uint8_t*>(tag.data()), tag.size(), true);
        const android::ID3::Iterator title(id3, "TIT2");
        std::optional<android::String8> text(std::in_place);
        text->setTo("former");
        {
            const sweeps::Unwatched former;
            sweeps::watched = true;
            ledger.refused = 0;
            title.getString(&*text);
        }
        const std::string copy(text->c_str(), text->size());
        text.reset();
        EXPECT_EQ(sweeps::releaseLost(), 0u);
        return copy;
    };
    EXPECT_EQ(textOf("\1\xFE\xFF", 0x2620), "");
    EXPECT_EQ(textOf("\2", 0x2620), "");
    EXPECT_EQ(textOf("\1\xFE\xFF", 0xE900), repeated(0xA9C3));  // U+00E9, for once not narrowed
    EXPECT_EQ(textOf("\1\xFF\xFE", 0x00E9), repeated(0xA9C3));
}

// --- Sources ---

// A read that gives less than was asked for is one of a tag that is not there, whatever else it
// says; a size is believed.
TEST_F(Sweeps, Sources) {
    long lies = 0;
    int most = 0;
    const auto perform = [&](const Operation& operation, Trial& trial) {
        trial.perform(operation);
        ++lies;
        most = std::max(most, trial.source.reads);
        EXPECT_LE(trial.source.asked, 2 * trial.first.size() + 300) << operation.name;
        return trial.notes + trial.stores();
    };
    const auto resultOf = [&](const Operation& operation, const std::string& file) {
        Trial trial(file);
        trial.perform(operation);
        return trial.notes + trial.stores();
    };
    for (const Operation& operation : sweeps::operations()) {
        if (!operation.readsTag) continue;
        const std::string whole = operation.input(sweeps::kSmall);
        for (const std::string& file : withoutTags(whole)) {
            const bool hasV2 = file.starts_with("ID3");
            const std::string other = withoutTags(whole)[hasV2 ? 1 : 2];
            Trial truth(file);
            perform(operation, truth);
            for (int read = 0; read < truth.source.reads; ++read) {
                // The header of a v2 tag that is not there is read in vain, whatever is said of it.
                const bool isVain = !hasV2 && read == 0;
                for (const ssize_t off : {-1000000000L, -1000L, -11L, -1L, 0L, 1L, 1000000000L}) {
                    Trial trial(file);
                    trial.source.spoiltRead = read;
                    trial.source.answer =
                            static_cast<ssize_t>(truth.source.sizes[static_cast<size_t>(read)]) +
                            off;
                    EXPECT_EQ(perform(operation, trial),
                              resultOf(operation, off < 0 && !isVain ? other : file))
                            << operation.name << ' ' << read << ' ' << off;
                }
            }
            const auto size = static_cast<off64_t>(file.size());
            const auto is = [&](off64_t answer, int32_t status, const std::string& expected) {
                Trial trial(file);
                trial.source.sizeAnswer = answer;
                trial.source.sizeStatus = status;
                EXPECT_EQ(perform(operation, trial), resultOf(operation, hasV2 ? file : expected))
                        << operation.name << ' ' << answer << ' ' << status;
            };
            const std::string none = withoutTags(whole)[2];
            for (const int32_t status : kStatuses) is(size, status, none);
            for (const off64_t answer : {-129L, 0L, 127L, size - 1, size + 1, INT64_MAX})
                is(answer, 0, none);
            is(128, 0, none);
        }
    }
    std::printf("| answers of sources that lied | %ld |\n| most reads of one call | %d |\n", lies,
                most);
    EXPECT_EQ(most, 3);
}

// --- Components ---

void refuseCall(const Operation& operation, size_t call, status_t status) {
    const auto name = std::string(operation.name) + ' ' + std::to_string(call);
    const char effect = operation.component[call];
    const auto calls = static_cast<int>(std::strlen(operation.component));
    const std::string number = std::to_string(status);
    Trial truth(""), trial("");
    truth.perform(operation);
    EXPECT_EQ(truth.node->count, calls) << name;
    trial.node->refusedCall = static_cast<int>(call);
    trial.node->refusal = status;
    const std::string fatal = test::fatalText([&] { watch(operation, trial); });
    EXPECT_EQ(trial.node->count, effect == 'i' ? calls : static_cast<int>(call) + 1) << name;
    EXPECT_EQ(trial.stores(), truth.stores()) << name;
    if (effect == 'f') {
        EXPECT_TRUE(fatal.ends_with("(status_t)0) failed: " + number + " vs. 0")) << name << fatal;
    } else {
        EXPECT_EQ(trial.notes, effect == 'r' ? number + " \n" : truth.notes) << name;
    }
}

TEST_F(Sweeps, Components) {
    long calls = 0;
    for (const Operation& operation : sweeps::operations()) {
        for (size_t i = 0; operation.component[i] != '\0'; ++i) {
            for (const int32_t status : kStatuses) {
                refuseCall(operation, i, status);
                EXPECT_EQ(sweeps::releaseLost(), 0u) << operation.name;
                ++calls;
            }
        }
    }
    std::printf("| calls that a component refused | %ld |\n", calls);
}

// --- Disks ---

// Whatever becomes of a write, the results are the same; and one that comes out short is made
// good for by the system's library.
TEST_F(Sweeps, Disks) {
    long writes = 0;
    for (const Operation& operation : sweeps::operations()) {
        if (!std::string_view(operation.name).starts_with("WavDump")) continue;
        const std::string input = operation.input(sweeps::kSmall);
        Trial truth(input);
        truth.perform(operation);
        for (int write = 0; write < truth.disk.writes; ++write) {
            for (const ssize_t written : {0, 1, 7}) {
                Trial trial(input);
                trial.disk.spoiltWrite = write;
                trial.disk.written = written;
                trial.perform(operation);
                EXPECT_EQ(trial.notes + trial.log, truth.notes + truth.log) << operation.name;
                EXPECT_LE(trial.disk.file.size(), truth.disk.file.size() + input.size());
                ++writes;
                trial.again();
                trial.perform(operation);
                EXPECT_TRUE(trial.outcome() == truth.outcome()) << operation.name << write;
            }
        }
    }
    std::printf("| writes that failed or came out short | %ld |\n", writes);

    // A disk that is full, and a limit to the size of files.
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit former = [] {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        return limit;
    }();
    const rlimit low{1000, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &low);
    const std::string limited = testing::TempDir() + "robustness-" + std::to_string(getpid());
    for (const std::string& name : {std::string("/dev/full"), limited}) {
        android::WavDump dump(name.c_str());
        EXPECT_EQ(dump.open(48000, 16, 2), 0);
        const std::vector<uint8_t> samples(10000);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(dump.dump(samples.data(), 10000), 10000u);
    }
    setrlimit(RLIMIT_FSIZE, &former);
    std::remove(limited.c_str());
}

// --- Memory ---

// For inputs that grow: what is held at most and allocated in all, with what is stored, is so many
// times the input as the table says.
TEST_F(Sweeps, Memory) {
    size_t others = 0, most = 0;
    std::printf("| operation | input | most held | input times | allocated, input times |\n");
    for (const Operation& operation : sweeps::operations()) {
        sweeps::Ledger told;
        size_t bytes = 0;
        double peak = 0, sum = 0;
        for (const size_t size : {100u, 1000u, 10000u, 100000u, 1000000u}) {
            const std::string input = operation.input(size);
            {
                Trial trial(input);
                watch(operation, trial);
                told = ledger;
            }
            EXPECT_EQ(sweeps::releaseLost(), 0u) << operation.name;
            bytes = input.size();
            const auto times = [&](size_t held) {
                const size_t beyond = held - std::min(held, operation.fixed);
                return static_cast<double>(beyond) / static_cast<double>(bytes);
            };
            EXPECT_LE(times(told.peak), operation.peak) << operation.name << size;
            EXPECT_LE(times(told.sum), operation.sum) << operation.name << size;
            peak = std::max(peak, times(told.peak));
            sum = std::max(sum, times(told.sum));
        }
        if (told.peak > 10000) {
            std::printf("| `%s` | %zu | %zu | %.1f | %.1f |\n", operation.name, bytes, told.peak,
                        peak, sum);
        } else {
            ++others;
            most = std::max(most, told.sum);
        }
    }
    std::printf("| %zu others | | at most %zu | | |\n", others, most);
}

}  // namespace
