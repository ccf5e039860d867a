#include "inspect/collection/Sandbox.h"

#include <seccomp.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <span>

namespace inspect {
namespace {

// Who asks for what is refused hears so and goes on, as libraries do without what they would like.
constexpr uint32_t kRefused = SCMP_ACT_ERRNO(EPERM);

constexpr int kReaching[] = {
        SCMP_SYS(socket),           SCMP_SYS(execve),
        SCMP_SYS(execveat),         SCMP_SYS(ptrace),
        SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev),
        SCMP_SYS(pidfd_getfd),      SCMP_SYS(bpf),
        SCMP_SYS(io_uring_setup),  // which does what is refused here, unseen
};

constexpr int kHarmless[] = {
        // what is open
        SCMP_SYS(read), SCMP_SYS(pread64), SCMP_SYS(lseek), SCMP_SYS(_llseek), SCMP_SYS(recvmsg),
        SCMP_SYS(write), SCMP_SYS(close), SCMP_SYS(poll), SCMP_SYS(ppoll),
        // memory
        SCMP_SYS(brk), SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(madvise), SCMP_SYS(futex),
        // itself
        SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn),
        SCMP_SYS(sigreturn), SCMP_SYS(restart_syscall), SCMP_SYS(exit), SCMP_SYS(exit_group),
        SCMP_SYS(getpid), SCMP_SYS(gettid),
        // the machine
        SCMP_SYS(clock_gettime), SCMP_SYS(gettimeofday), SCMP_SYS(time), SCMP_SYS(getrandom),
        SCMP_SYS(sysinfo), SCMP_SYS(sched_getaffinity), SCMP_SYS(sched_yield)};

// Memory, as long as it is not to hold code.
constexpr int kMapping[] = {SCMP_SYS(mmap), SCMP_SYS(mmap2), SCMP_SYS(mprotect)};

struct Release {
    void operator()(scmp_filter_ctx filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, Release>;

bool addAll(const Filter& filter, uint32_t action, std::span<const int> calls) {
    return filter != nullptr && std::ranges::all_of(calls, [&](int call) {
               return seccomp_rule_add(filter.get(), action, call, 0) == 0;
           });
}

}  // namespace

bool forbidOutsideWorld() {
    if (kIsSanitized) return false;
    const Filter filter(seccomp_init(SCMP_ACT_ALLOW));
    return addAll(filter, kRefused, kReaching) && seccomp_load(filter.get()) == 0;
}

bool forbidAllButOpenFiles() {
    if (kIsSanitized) return false;
    const Filter filter(seccomp_init(kRefused));
    if (!addAll(filter, SCMP_ACT_ALLOW, kHarmless)) return false;
    constexpr scmp_arg_cmp isNoCode{
            .arg = 2, .op = SCMP_CMP_MASKED_EQ, .datum_a = PROT_EXEC, .datum_b = 0};
    for (const int call : kMapping) {
        if (seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 1, isNoCode) != 0) return false;
    }
    // As abort() does.
    const scmp_arg_cmp isOwn{.arg = 0,
                             .op = SCMP_CMP_EQ,
                             .datum_a = static_cast<scmp_datum_t>(getpid()),
                             .datum_b = 0};
    return seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, SCMP_SYS(tgkill), 1, isOwn) == 0 &&
           seccomp_load(filter.get()) == 0;
}

}  // namespace inspect
