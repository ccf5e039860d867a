#include "inspect/collection/Pool.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "inspect/base/InputFile.h"
#include "inspect/collection/Sandbox.h"

namespace inspect {
namespace {

using namespace std::chrono_literals;

// One at work and one that waits, so that a process never does.
constexpr size_t kJobsAtATime = 2;

// More than any file's lines and pictures come to.
constexpr uint32_t kMostAnswerBytes = 1U << 29;

constexpr int kOwnSocket = STDERR_FILENO + 1;

// A worker neither reads what is the user's nor writes where the user does, but for what a
// sanitizer says, and keeps nothing else that the first process has open.
void keepOnly(int socket) {
    if (dup2(socket, kOwnSocket) < 0) _exit(1);
    closefrom(kOwnSocket + 1);
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    if (!kIsSanitized || isatty(STDERR_FILENO) != 0) dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

// By somebody, or by the kernel when memory is short. status: wait()'s
bool isKilled(int status) {
    return WIFSIGNALED(status) && (WTERMSIG(status) == SIGKILL || WTERMSIG(status) == SIGTERM);
}

std::string howItEnded(int status) {
    if (!WIFSIGNALED(status)) {
        return "the demuxer ended the process with status " + std::to_string(WEXITSTATUS(status));
    }
    const int signal = WTERMSIG(status);
    if (isKilled(status)) return "the process that read it was killed, twice";
    const char* name = sigabbrev_np(signal);
    return std::string("the demuxer crashed (SIG") + (name != nullptr ? name : "?") + ')';
}

std::string tookLongerThan(std::chrono::duration<double> seconds) {
    std::string text = std::to_string(seconds.count());
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return "took longer than " + text + " s";
}

// As many as there are descriptors for, beside what else is open.
size_t possible(size_t workers) {
    constexpr rlim_t kOthers = 16;
    constexpr rlim_t kEach = 1 + kJobsAtATime;
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return workers;
    return std::min<rlim_t>(workers, (std::max(limit.rlim_cur, kOthers + kEach) - kOthers) / kEach);
}

[[noreturn]] void failToStart(int reason) {
    throw FileError(std::string("cannot start a worker: ") + std::strerror(reason));
}

}  // namespace

// Where SIGCHLD is ignored, nobody learns how a process ended.
Pool::Pool(PoolRules rules) : mRules(std::move(rules)), mProcesses(possible(mRules.workers)) {
    std::signal(SIGCHLD, SIG_DFL);
}

Pool::~Pool() {
    for (const Process& process : mProcesses) {
        if (process.socket.get() < 0) continue;
        kill(process.pid, SIGKILL);
        while (waitpid(process.pid, nullptr, 0) < 0 && errno == EINTR) continue;
    }
}

// Goes on half a second at most between two looks: a program that was stopped, or could not write,
// did not hear its processes.
Pool::Clock::duration Pool::time() {
    const auto now = Clock::now();
    mTime += std::min<Clock::duration>(now - std::exchange(mLooked, now), 500ms);
    return mTime;
}

void Pool::start(Process& process) {
    std::erase_if(mKilled, [](pid_t each) { return waitpid(each, nullptr, WNOHANG) != 0; });
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) failToStart(errno);
    const pid_t parent = getpid();
    process.pid = fork();
    if (process.pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(1);
        keepOnly(sockets[1]);
        serve();
    }
    const int reason = errno;
    close(sockets[1]);
    process.socket = Descriptor(sockets[0]);
    process.received.clear();
    if (process.pid > 0) return;
    process.socket = Descriptor();
    failToStart(reason);
}

// In the process. What a terminal sends reaches all its processes; the first one decides.
void Pool::serve() const {
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGHUP, SIG_IGN);
    std::signal(SIGTERM, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    mRules.prepare();
    while (auto request = receiveRequest(kOwnSocket)) {
        std::string text;
        bool isFailure = false;
        try {
            text = mRules.answer(std::move(*request));
        } catch (const std::exception& error) {
            text = error.what();
            isFailure = true;
        }
        if (!sendAnswer(kOwnSocket, text, isFailure)) break;
    }
    _exit(0);
}

bool Pool::hasRoom() const {
    return std::ranges::any_of(mProcesses,
                               [](const Process& each) { return each.jobs.size() < kJobsAtATime; });
}

bool Pool::isIdle() const {
    return std::ranges::all_of(mProcesses, [](const Process& each) { return each.jobs.empty(); });
}

void Pool::give(uint64_t ticket, Request request) {
    place({ticket, std::move(request)});
}

// Processes that cannot be started are done without, but for the last. A request that cannot be
// sent because its process has died is sent again to the next.
void Pool::place(Job job) {
    const auto process = std::ranges::min_element(
            mProcesses, {}, [](const Process& each) { return each.jobs.size(); });
    try {
        if (process->socket.get() < 0) start(*process);
    } catch (const FileError&) {
        if (mProcesses.size() == 1) throw;
        mProcesses.erase(process);
        return place(std::move(job));
    }
    if (process->jobs.empty()) process->began = time();
    if (!sendRequest(process->socket.get(), job.request)) kill(process->pid, SIGKILL);
    process->jobs.push_back(std::move(job));
}

// Returns whether the process is still there.
bool Pool::receive(Process& process, std::vector<Answer>& answers) {
    std::array<char, 1 << 16> block;
    const ssize_t count = recv(process.socket.get(), block.data(), block.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return true;
    if (count <= 0) return false;
    std::string& received = process.received;
    received.append(block.data(), static_cast<size_t>(count));
    Head head;
    while (received.size() >= sizeof head) {
        std::memcpy(&head, received.data(), sizeof head);
        if (process.jobs.empty() || head.sizeBytes > kMostAnswerBytes) return false;
        if (received.size() - sizeof head < head.sizeBytes) break;
        Answer& answer = answers.emplace_back();
        answer.ticket = process.jobs.front().ticket;
        (head.isFailure != 0 ? answer.failure : answer.text) =
                received.substr(sizeof head, head.sizeBytes);
        received.erase(0, sizeof head + head.sizeBytes);
        process.jobs.pop_front();
        process.began = time();
    }
    return true;
}

// Empty when somebody else killed it, for which no file is to blame the first time.
std::string Pool::reasonOfEnd(Process& process) {
    int status = 0;
    kill(process.pid, SIGKILL);  // of no effect on one that is ending
    while (waitpid(process.pid, &status, 0) < 0 && errno == EINTR) continue;
    const bool isFirst = process.jobs.empty() || !process.jobs.front().isRepeated;
    return isKilled(status) && isFirst ? "" : howItEnded(status);
}

// What the process was at has failed, if there is a reason.
void Pool::lose(Process& process, std::string why, std::vector<Answer>& answers) {
    process.socket = Descriptor();
    std::deque<Job> jobs = std::exchange(process.jobs, {});
    if (jobs.empty()) return;
    if (why.empty()) {
        jobs.front().isRepeated = true;
    } else {
        answers.push_back({jobs.front().ticket, "", std::move(why)});
        jobs.pop_front();
    }
    std::ranges::move(jobs, std::back_inserter(mLeft));
}

bool Pool::isOverdue(const Process& process) {
    return mRules.timeout.count() > 0 && !process.jobs.empty() &&
           time() - process.began >= mRules.timeout;
}

std::chrono::milliseconds Pool::untilOverdue(std::chrono::milliseconds most) {
    if (mRules.timeout.count() == 0) return most;
    for (const Process& each : mProcesses) {
        if (each.jobs.empty()) continue;
        const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(each.began + mRules.timeout - time());
        most = std::clamp(left, 0ms, most);
    }
    return most;
}

std::vector<Answer> Pool::wait(std::chrono::milliseconds most, const sigset_t& mask) {
    std::vector<pollfd> states;
    for (const Process& each : mProcesses) states.push_back({each.socket.get(), POLLIN, 0});
    const auto wait = untilOverdue(most);
    const timespec patience{wait / 1s, wait % 1s / 1ms * 1'000'000};
    std::vector<Answer> answers;
    if (ppoll(states.data(), states.size(), &patience, &mask) < 0) return answers;
    for (size_t i = 0; i < states.size(); i++) {
        Process& process = mProcesses[i];
        if (process.socket.get() < 0) continue;
        if (states[i].revents != 0 && !receive(process, answers)) {
            lose(process, reasonOfEnd(process), answers);
        } else if (isOverdue(process)) {
            kill(process.pid, SIGKILL);
            mKilled.push_back(process.pid);  // when a disk does not answer, this takes its time
            lose(process, tookLongerThan(mRules.timeout), answers);
        }
    }
    for (Job& job : std::exchange(mLeft, {})) place(std::move(job));
    return answers;
}

}  // namespace inspect
