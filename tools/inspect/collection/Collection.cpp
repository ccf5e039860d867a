#include "inspect/collection/Collection.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <deque>
#include <optional>
#include <utility>

#include "inspect/base/Console.h"
#include "inspect/base/InputFile.h"
#include "inspect/base/Utf8.h"
#include "inspect/collection/Pool.h"
#include "inspect/collection/RunProgress.h"
#include "inspect/collection/Worker.h"

namespace inspect {
namespace {

using namespace std::chrono_literals;

// What has come is kept until all before it has: so many files, and so many bytes.
constexpr size_t kMaxWaiting = 1 << 14;
constexpr size_t kMaxWaitingBytes = 32 << 20;

// SIGINT and the like, taken only while the pool waits.
volatile std::sig_atomic_t gSignal = 0;

void noteSignal(int signal) {
    gSignal = signal;
}

class Signals {
public:
    Signals() {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
            struct sigaction action {};
            sigaction(signal, nullptr, &action);
            if (action.sa_handler != SIG_DFL) continue;
            sigaddset(&held, signal);
            action.sa_handler = noteSignal;
            action.sa_flags = 0;
            sigaction(signal, &action, nullptr);
        }
        sigprocmask(SIG_BLOCK, &held, &mFormer);
    }

    const sigset_t& whileWaiting() const { return mFormer; }

    // As if nobody had handled it.
    [[noreturn]] void end() const {
        std::signal(gSignal, SIG_DFL);
        raise(gSignal);
        sigprocmask(SIG_SETMASK, &mFormer, nullptr);
        _exit(128 + gSignal);
    }

private:
    sigset_t mFormer{};
};

// Why nobody should open it; empty when it is a file.
std::string whyNoFile(const ListedFile& file, struct stat& status) {
    if (!file.error.empty()) return file.error;
    if (file.path == "-") return "standard input is not one of many files";
    if (stat(file.path.c_str(), &status) != 0) return std::strerror(errno);
    if (S_ISFIFO(status.st_mode)) return "is a pipe, for which nobody waits among many files";
    return S_ISREG(status.st_mode) ? "" : "is not a regular file";
}

std::string inWords(std::string code) {
    std::ranges::replace(code, '-', ' ');
    return code;
}

class Run {
public:
    Run(const CollectionOptions& options, const WorkerRules& rules)
        : mOptions(options),
          mRules(rules),
          mFiles(options.sources),
          mProgress(options.sources),
          mPool({.workers = options.workers,
                 .timeout = options.timeout,
                 .prepare = [this] { limitMemory(mRules.maxMemoryMiB); },
                 .answer = [this](const std::string& path) { return examine(path, mRules); }}) {}

    Ending go();

private:
    struct Waiting {
        ListedFile file;
        std::string text;  // of a finding; empty until it has come
        bool isNoMatter = false;
    };

    bool hasEnoughWaiting() const {
        return mWaiting.size() >= kMaxWaiting || mWaitingBytes >= kMaxWaitingBytes;
    }
    bool takeNext();
    void look(Waiting& waiting, uint64_t ticket);
    void place(Answer answer);
    void settleFirst();
    void say(const Finding& finding);
    void sayWhereToGoOn() const;

    const CollectionOptions& mOptions;
    const WorkerRules& mRules;
    FileList mFiles;
    RunProgress mProgress;
    Signals mSignals;
    Pool mPool;
    std::deque<Waiting> mWaiting;  // in the order of the files
    size_t mWaitingBytes = 0;
    uint64_t mSettled = 0;  // the files before the first that waits
    uint64_t mNotPlaying = 0;
    bool mCanPrint = true;
    Ending mEnding;
};

// Returns false when there is none.
bool Run::takeNext() {
    std::optional<ListedFile> file = mFiles.next();
    if (!file) return false;
    const uint64_t ticket = mSettled + mWaiting.size();
    Waiting& waiting = mWaiting.emplace_back();
    waiting.file = std::move(*file);
    if (ticket < mOptions.skip) {
        waiting.isNoMatter = true;
    } else {
        look(waiting, ticket);
    }
    return true;
}

void Run::look(Waiting& waiting, uint64_t ticket) {
    struct stat status {};
    const std::string why = whyNoFile(waiting.file, status);
    if (why.empty()) {
        mPool.give(ticket, waiting.file.path);
    } else if (waiting.file.isFound && status.st_mode != 0) {
        waiting.isNoMatter = true;
    } else {
        waiting.text = encodeFailure(waiting.file.path, why, mRules);
    }
}

void Run::place(Answer answer) {
    Waiting& waiting = mWaiting[answer.ticket - mSettled];
    waiting.text = answer.failure.empty()
                           ? std::move(answer.text)
                           : encodeFailure(waiting.file.path, answer.failure, mRules);
    mWaitingBytes += waiting.text.size();
}

void Run::settleFirst() {
    const Waiting waiting = std::move(mWaiting.front());
    mWaiting.pop_front();
    mSettled++;
    if (waiting.isNoMatter) return;
    mWaitingBytes -= std::min(mWaitingBytes, waiting.text.size());
    const Finding finding = decodeFinding(waiting.text);
    if (!finding.isMedia && waiting.file.isFound) return;
    if (!std::ranges::all_of(finding.row.plays, &PlayRow::plays)) mNotPlaying++;
    say(finding);
}

void Run::say(const Finding& finding) {
    for (const std::string& fault : finding.faults) {
        mProgress.hide();
        complain(fault);
    }
    if (!finding.faults.empty()) mEnding.isComplete = false;
    if (!finding.isMet) mEnding.isMet = false;
    std::string text = finding.line;
    const bool areVerdictsSaid = !mOptions.lines && finding.row.error.empty();
    for (const PlayRow& play : finding.row.plays) {
        if (!areVerdictsSaid || play.plays) continue;
        const std::string device = finding.row.plays.size() > 1 ? play.device + ": " : "";
        text += escaped(finding.row.path + ": " + device + inWords(play.verdict) + ": " +
                        play.reason) +
                '\n';
    }
    if (mOptions.quiet || text.empty()) return;
    mProgress.hide();
    mCanPrint = print(text);
}

void Run::sayWhereToGoOn() const {
    std::string text = "interrupted after " + std::to_string(mSettled) + " files; ";
    complain(text + "to go on, add --skip " + std::to_string(mSettled));
}

Ending Run::go() {
    bool isMore = true;
    while (gSignal == 0 && mCanPrint) {
        while (isMore && !hasEnoughWaiting() && mPool.hasRoom()) isMore = takeNext();
        while (mCanPrint && !mWaiting.empty() &&
               (mWaiting.front().isNoMatter || !mWaiting.front().text.empty())) {
            settleFirst();
        }
        if (!isMore && mWaiting.empty()) break;
        mProgress.show(mSettled, mOptions.skip, mNotPlaying);
        constexpr auto kMostWait = 200ms;
        const auto wait = mPool.isIdle() ? 0ms : kMostWait;
        for (Answer& answer : mPool.wait(wait, mSignals.whileWaiting())) place(std::move(answer));
    }
    mProgress.hide();
    if (!mCanPrint) mEnding.isComplete = false;
    if (gSignal != 0) {
        sayWhereToGoOn();
        mSignals.end();
    }
    return mEnding;
}

}  // namespace

Ending runCollection(const CollectionOptions& options, const Scope& scope,
                     const std::string& check) {
    const WorkerRules rules{.scope = scope,
                            .check = check,
                            .makesLines = options.lines,
                            .maxMemoryMiB = options.maxMemoryMiB};
    return Run(options, rules).go();
}

}  // namespace inspect
