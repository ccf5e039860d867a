// Processes that answer requests, so that none of what they meet ends more than its own request.

#pragma once

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "inspect/base/Descriptor.h"
#include "inspect/collection/Channel.h"

namespace inspect {

struct PoolRules {
    size_t workers = 1;
    std::chrono::milliseconds timeout{};  // for one request; 0 = none
    // Runs in each process first, then for each request; what it throws is a failure.
    std::function<void()> prepare;
    std::function<std::string(Request request)> answer;
};

struct Answer {
    uint64_t ticket;
    std::string text;
    std::string failure;  // not empty: why there is no text
};

class Pool {
public:
    explicit Pool(PoolRules rules);
    ~Pool();
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    bool hasRoom() const;
    bool isIdle() const;

    // There is room. Throws a FileError when not even one process can be started.
    void give(uint64_t ticket, Request request);

    // What has come, after no longer than this; signals outside of the mask end the wait.
    std::vector<Answer> wait(std::chrono::milliseconds most, const sigset_t& mask);

private:
    using Clock = std::chrono::steady_clock;
    struct Job {
        uint64_t ticket;
        Request request;
        bool isRepeated = false;
    };
    struct Process {
        pid_t pid = 0;
        Descriptor socket;
        std::deque<Job> jobs;   // the first is at work since
        Clock::duration began;  //
        std::string received;   // up to an answer that is not whole
    };

    Clock::duration time();
    void start(Process& process);
    [[noreturn]] void serve() const;
    void place(Job job);
    bool receive(Process& process, std::vector<Answer>& answers);
    std::string reasonOfEnd(Process& process);
    void lose(Process& process, std::string why, std::vector<Answer>& answers);
    std::chrono::milliseconds untilOverdue(std::chrono::milliseconds most);
    bool isOverdue(const Process& process);

    PoolRules mRules;
    std::vector<Process> mProcesses;
    std::vector<pid_t> mKilled;  // and not waited for
    std::vector<Job> mLeft;      // of processes that are lost
    Clock::time_point mLooked = Clock::now();
    Clock::duration mTime{};
};

}  // namespace inspect
