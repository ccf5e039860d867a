#include "inspect/collection/Collection.h"

#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <deque>
#include <iostream>
#include <optional>
#include <utility>

#include "inspect/base/Console.h"
#include "inspect/base/InputFile.h"
#include "inspect/base/Utf8.h"
#include "inspect/collection/Against.h"
#include "inspect/collection/Database.h"
#include "inspect/collection/Pool.h"
#include "inspect/collection/RunProgress.h"
#include "inspect/collection/Sandbox.h"
#include "inspect/collection/Signals.h"
#include "inspect/collection/Worker.h"
#include "inspect/report/Outcome.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using namespace std::chrono_literals;

// What has come is kept until all before it has: so many files, and so many bytes.
constexpr size_t kMaxWaiting = 1 << 14;
constexpr size_t kMaxWaitingBytes = 32 << 20;

// Whoever writes to the file right now is not done.
bool hasChanged(const std::string& path, int64_t sizeBytes, int64_t nanoseconds) {
    struct stat status {};
    return stat(path.c_str(), &status) != 0 || status.st_size != sizeBytes ||
           modifiedNs(status) != nanoseconds;
}

std::string inWords(std::string code) {
    std::ranges::replace(code, '-', ' ');
    return code;
}

class Run {
public:
    Run(const CollectionOptions& options, const WorkerRules& rules, const RowReader& reader)
        : mOptions(options),
          mRules(rules),
          mReader(reader),
          mFiles(options.sources),
          mProgress(options.sources),
          mPool({.workers = options.workers,
                 .timeout = options.timeout,
                 .prepare =
                         [this] {
                             limitMemory(mRules.maxMemoryMiB);
                             forbidAllButOpenFiles();
                         },
                 .answer = [this](Request each) { return examine(std::move(each), mRules); }}) {
        if (!options.against.empty()) mAgainst.emplace(options.against);
        if (options.database.empty()) return;
        std::string settings;
        for (const PretendedDevice& device : rules.scope.devices) settings += describe(device);
        if (rules.scope.verify) settings += "--verify\n";
        mDatabase.emplace(options.database, android::ZRCODECPARSER_VERSION, settings);
    }

    Ending go();

private:
    struct Waiting {
        ListedFile file;
        std::string text;  // of a finding; empty until it has come
        bool isNoMatter = false;
        int64_t sizeBytes = 0;   // when it was opened
        int64_t modifiedNs = 0;  //
    };

    bool hasEnoughWaiting() const {
        return mWaiting.size() >= kMaxWaiting || mWaitingBytes >= kMaxWaitingBytes;
    }
    bool takeNext();
    void look(Waiting& waiting, uint64_t ticket);
    void open(Waiting& waiting, uint64_t ticket);
    bool isUnchanged(const std::string& path, const struct stat& status);
    void place(Answer answer);
    Finding findingOf(const Waiting& waiting) const;
    void settleFirst();
    void say(const Finding& finding);
    void weigh(const FileRow& row);
    void lookAtAll(const sigset_t& whileWaiting);
    void sayWhereToGoOn() const;
    void tell(const std::string& text);
    void sum(bool isWhole);

    const CollectionOptions& mOptions;
    const WorkerRules& mRules;
    const RowReader& mReader;
    FileList mFiles;
    RunProgress mProgress;
    Pool mPool;
    std::deque<Waiting> mWaiting;  // in the order of the files
    size_t mWaitingBytes = 0;
    uint64_t mSettled = 0;  // the files before the first that waits
    std::optional<Database> mDatabase;
    std::optional<Against> mAgainst;
    uint64_t mNotPlaying = 0;
    bool mAreAllSeen = true;  // that are there
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
    if (isOther(waiting.file, status)) {
        waiting.isNoMatter = true;
        mEnding.otherFiles++;
    } else if (why.empty() && isUnchanged(waiting.file.path, status)) {
        waiting.isNoMatter = true;
    } else if (why.empty()) {
        open(waiting, ticket);
    } else {
        waiting.text = encodeFailure(waiting.file.path, why, mRules);
        // A folder may be back tomorrow.
        const bool isFolderLost = !waiting.file.error.empty() || !waiting.file.isFound;
        if (isFolderLost && status.st_mode == 0) mAreAllSeen = false;
    }
}

void Run::open(Waiting& waiting, uint64_t ticket) {
    const std::string& path = waiting.file.path;
    OpenedFile file;
    try {
        file = openRegularFile(path);
    } catch (const FileError& error) {
        waiting.text = encodeFailure(path, error.what(), mRules);
        return;
    }
    waiting.sizeBytes = file.sizeBytes;
    waiting.modifiedNs = file.modifiedNs;
    mPool.give(ticket, requestFor(path, std::move(file)));
}

bool Run::isUnchanged(const std::string& path, const struct stat& status) {
    if (!mDatabase || !mDatabase->isCurrent(path, status.st_size, modifiedNs(status))) return false;
    mDatabase->keep(path);
    mEnding.unchangedFiles++;
    return true;
}

void Run::place(Answer answer) {
    Waiting& waiting = mWaiting[answer.ticket - mSettled];
    const std::string& path = waiting.file.path;
    if (!answer.failure.empty()) {
        waiting.text = encodeFailure(path, answer.failure, mRules);
    } else if (hasChanged(path, waiting.sizeBytes, waiting.modifiedNs)) {
        const bool isMedia = decodeFinding(answer.text).isMedia;
        waiting.text = encodeFailure(path, "changed while it was read", mRules, isMedia);
    } else {
        waiting.text = std::move(answer.text);
    }
    mWaitingBytes += waiting.text.size();
}

Finding Run::findingOf(const Waiting& waiting) const {
    try {
        return decodeFinding(waiting.text);
    } catch (const FileError& error) {
        return decodeFinding(encodeFailure(waiting.file.path, error.what(), mRules));
    }
}

void Run::settleFirst() {
    const Waiting waiting = std::move(mWaiting.front());
    mWaiting.pop_front();
    mSettled++;
    if (waiting.isNoMatter) return;
    mWaitingBytes -= std::min(mWaitingBytes, waiting.text.size());
    const Finding finding = findingOf(waiting);
    const FileRow& row = finding.row;
    if (!finding.isMedia && waiting.file.isFound) {
        mEnding.otherFiles++;
        if (mDatabase && row.sizeBytes && row.modifiedNs) {
            mDatabase->putOther(row.path, *row.sizeBytes, *row.modifiedNs);
        }
        return;
    }
    if (!std::ranges::all_of(row.plays, &PlayRow::plays)) mNotPlaying++;
    say(finding);
    if (mDatabase) {
        mDatabase->put(row);
    } else {
        weigh(row);
    }
}

void Run::say(const Finding& finding) {
    for (const std::string& fault : finding.faults) {
        mProgress.hide();
        complain(fault);
    }
    std::string text = finding.line;
    const bool areVerdictsSaid = !mOptions.lines && finding.row.error.empty();
    for (const PlayRow& play : finding.row.plays) {
        if (!areVerdictsSaid || play.plays) continue;
        const std::string device = finding.row.plays.size() > 1 ? play.device + ": " : "";
        text += escaped(finding.row.path + ": " + device + inWords(play.verdict) + ": " +
                        play.reason) +
                '\n';
    }
    if (text.empty() || (mOptions.quiet && !mOptions.lines)) return;
    mProgress.hide();
    mCanPrint = print(text);
}

void Run::weigh(const FileRow& row) {
    mEnding.summary.add(row);
    if (mAgainst) mAgainst->add(row);
    if (mReader) mReader(row);
    if (!row.error.empty() || !row.fault.empty()) mEnding.isComplete = false;
    if (!meets(mOptions.check, row)) mEnding.isMet = false;
}

// Beside the lines.
void Run::tell(const std::string& text) {
    if (mOptions.quiet) return;
    if (mOptions.lines) {
        std::cerr << text << std::flush;
    } else if (mCanPrint) {
        mCanPrint = print(text);
    }
}

// isWhole: nothing was left out
void Run::sum(bool isWhole) {
    size_t gone = 0;
    if (mDatabase) {
        if (isWhole && mAreAllSeen) gone = mDatabase->dropMissing(mOptions.sources.paths);
        mDatabase->forEach([this](const FileRow& row) { weigh(row); });
    }
    if (mAgainst) {
        for (const std::string& note : mAgainst->notes()) complain(note);
        const bool areAllKnown = isWhole || mDatabase;
        const auto lost = static_cast<size_t>(ChangeKind::kPlaysNoMore);
        for (const auto& [device, counts] :
             sayChanges([this](const std::string& text) { tell(text); }, *mAgainst, areAllKnown)) {
            if (counts[lost] > 0) mEnding.isMet = false;
        }
        tell("\n");
    }
    std::string text = summaryText(mEnding.summary);
    const auto addCount = [&](const char* what, uint64_t count) {
        if (count > 0) text.append(what).append(": ").append(std::to_string(count)) += '\n';
    };
    addCount("other files, which are no media", mEnding.otherFiles);
    addCount("files that have not changed since an earlier run", mEnding.unchangedFiles);
    addCount("files that have gone since", gone);
    tell(text);
}

void Run::sayWhereToGoOn() const {
    const std::string settled = std::to_string(mSettled);
    const std::string how = mDatabase ? "run the same again" : "add --skip " + settled;
    complain("interrupted after " + settled + " files; to go on, " + how);
}

void Run::lookAtAll(const sigset_t& whileWaiting) {
    bool isMore = true;
    while (Signals::caught() == 0 && mCanPrint) {
        while (isMore && !hasEnoughWaiting() && mPool.hasRoom()) isMore = takeNext();
        while (mCanPrint && !mWaiting.empty() &&
               (mWaiting.front().isNoMatter || !mWaiting.front().text.empty())) {
            settleFirst();
        }
        if (!isMore && mWaiting.empty()) break;
        mProgress.show(mSettled, mOptions.skip, mNotPlaying);
        constexpr std::chrono::milliseconds kMostWait{200};
        const auto wait = mPool.isIdle() ? 0ms : kMostWait;
        std::vector<Answer> answers = mPool.wait(wait, whileWaiting);
        for (Answer& answer : answers) place(std::move(answer));
        if (answers.empty() && mDatabase) mDatabase->commit();  // there is time
    }
    mProgress.hide();
    if (mDatabase) mDatabase->commit();
    if (Signals::caught() != 0) sayWhereToGoOn();
}

// When all is written and said, a signal ends it at once.
Ending Run::go() {
    lookAtAll(Signals().whileWaiting());
    if (mCanPrint) sum(Signals::caught() == 0 && mOptions.skip == 0);
    if (!mCanPrint) mEnding.isComplete = mEnding.isWhole = false;
    if (Signals::caught() != 0) raise(Signals::caught());
    return std::move(mEnding);
}

}  // namespace

Ending runCollection(const CollectionOptions& options, const Scope& scope,
                     const RowReader& reader) {
    const WorkerRules rules{
            .scope = scope, .makesLines = options.lines, .maxMemoryMiB = options.maxMemoryMiB};
    try {
        return Run(options, rules, reader).go();
    } catch (const FileError& error) {
        complain(error.what());
        Ending ending;
        ending.isComplete = ending.isWhole = false;
        return ending;
    }
}

}  // namespace inspect
