#include <errno.h>
#include <linux/sched.h>
#include <malloc.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/decoder/Sandbox.h"
#include "platform/linux/SyscallFilter.h"

namespace norvo {
namespace {

bool set_limits(const SandboxLimits& limits) {
  // One descriptor arrives with each file.
  constexpr rlim_t descriptors = 8;
  return limit_for_good(RLIMIT_AS, limits.memory) &&
         limit_for_good(RLIMIT_CPU, limits.cpu_seconds) && limit_for_good(RLIMIT_CORE, 0) &&
         limit_for_good(RLIMIT_FSIZE, 0) && limit_for_good(RLIMIT_NOFILE, descriptors);
}

// What the libraries need to compute on memory and threads.
bool allow_computing(const SyscallFilter& filter) {
  return filter.allow({SCMP_SYS(read),
                       SCMP_SYS(pread64),
                       SCMP_SYS(lseek),
                       SCMP_SYS(close),
                       SCMP_SYS(fstat),
                       SCMP_SYS(munmap),
                       SCMP_SYS(mremap),
                       SCMP_SYS(madvise),
                       SCMP_SYS(brk),
                       SCMP_SYS(futex),
                       SCMP_SYS(exit),
                       SCMP_SYS(exit_group),
                       SCMP_SYS(rt_sigreturn),
                       SCMP_SYS(rt_sigprocmask),
                       SCMP_SYS(rt_sigaction),
                       SCMP_SYS(getrandom),
                       SCMP_SYS(clock_gettime),
                       SCMP_SYS(gettid),
                       SCMP_SYS(getpid),
                       SCMP_SYS(sched_yield),
                       SCMP_SYS(sched_getaffinity),
                       SCMP_SYS(set_robust_list),
                       SCMP_SYS(rseq),
                       SCMP_SYS(sysinfo),
                       SCMP_SYS(eventfd2),
                       SCMP_SYS(poll),
                       SCMP_SYS(ppoll)});
}

// Calls that are harmless with some arguments only.
bool allow_with_arguments(const SyscallFilter& filter) {
  const auto no_code = [](unsigned argument) {
    return scmp_arg_cmp{argument, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0};
  };
  return filter.allow_where(SCMP_SYS(mmap), no_code(2)) &&
         filter.allow_where(SCMP_SYS(mprotect), no_code(2)) &&
         filter.allow_where(SCMP_SYS(write), {0, SCMP_CMP_LE, STDERR_FILENO, 0}) &&
         filter.allow_where(SCMP_SYS(recvmsg), {0, SCMP_CMP_EQ, STDIN_FILENO, 0}) &&
         filter.allow_where(SCMP_SYS(clone), {0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD}) &&
         filter.allow_where(SCMP_SYS(prctl), {0, SCMP_CMP_EQ, PR_SET_NAME, 0});
}

// Libraries try these and go on without; clone3 hides its flags from a filter, so that threads must
// be started by clone.
bool refuse_the_tried(const SyscallFilter& filter) {
  return filter.refuse(EACCES, {SCMP_SYS(openat), SCMP_SYS(open), SCMP_SYS(newfstatat),
                                SCMP_SYS(statx), SCMP_SYS(access), SCMP_SYS(readlink),
                                SCMP_SYS(ioctl), SCMP_SYS(prlimit64)}) &&
         filter.refuse(ENOSYS, {SCMP_SYS(clone3)});
}

bool install_filter() {
  const SyscallFilter filter(SCMP_ACT_KILL_PROCESS);
  return filter && allow_computing(filter) && allow_with_arguments(filter) &&
         refuse_the_tried(filter) && filter.install();
}

}  // namespace

void close_other_descriptors() {
  syscall(SYS_close_range, STDERR_FILENO + 1U, ~0U, 0U);
}

bool give_up_rights(const SandboxLimits& limits) {
  close_other_descriptors();
  // Every thread's own heap would reserve address space, which the limit counts: on a machine with
  // many cores nothing would be left.
  const bool one_heap = mallopt(M_ARENA_MAX, 1) == 1;  // NOLINT(concurrency-mt-unsafe)
  return one_heap && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 &&
         prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && set_limits(limits) && install_filter();
}

}  // namespace norvo
