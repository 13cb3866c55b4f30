#include "platform/player/PlayerSandbox.h"

#include <errno.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/fsverity.h>
#include <linux/landlock.h>
#include <linux/sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <initializer_list>

#include "platform/linux/SyscallFilter.h"
#include "util/UniqueFd.h"

namespace norvo {
namespace {

constexpr std::uint64_t reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
// All that the first version of the interface knows.
constexpr std::uint64_t all_file_rights = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1;

bool set_limits() {
  constexpr rlim_t memory = rlim_t{6} << 30U;  // of address space, which threads reserve freely
  constexpr rlim_t cpu_seconds = rlim_t{4} * 3600;
  constexpr rlim_t descriptors = 256;
  return limit_for_good(RLIMIT_AS, memory) && limit_for_good(RLIMIT_CPU, cpu_seconds) &&
         limit_for_good(RLIMIT_CORE, 0) && limit_for_good(RLIMIT_NOFILE, descriptors);
}

// A folder that is not there needs no rule.
void allow_below(int rules, const char* folder, std::uint64_t rights) {
  const UniqueFd parent(open(folder, O_PATH | O_CLOEXEC));
  if (!parent) return;
  const landlock_path_beneath_attr rule{.allowed_access = rights, .parent_fd = parent.get()};
  syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

// True as well where the kernel has no such thing.
bool restrict_files() {
  const landlock_ruleset_attr handled{.handled_access_fs = all_file_rights};
  const UniqueFd rules(
      static_cast<int>(syscall(SYS_landlock_create_ruleset, &handled, sizeof handled, 0)));
  if (!rules) return errno == ENOSYS || errno == EOPNOTSUPP;
  for (const char* const folder :
       {"/usr", "/lib", "/lib64", "/etc", "/proc/self", "/sys/devices"}) {
    allow_below(rules.get(), folder, reading);
  }
  allow_below(rules.get(), "/dev/snd",
              reading | LANDLOCK_ACCESS_FS_WRITE_FILE);  // sound without a server
  return syscall(SYS_landlock_restrict_self, rules.get(), 0) == 0;
}

// Calls that are newer than the headers; they have these numbers on every processor.
constexpr int fchmodat2_call = 452;
constexpr int setxattrat_call = 463;
constexpr int removexattrat_call = 466;
constexpr int file_setattr_call = 469;

// The kernel looks at the lower half of such an argument only, so the filter must not look at more.
bool refuse_requests(const SyscallFilter& filter, int call,
                     std::initializer_list<std::uint32_t> requests) {
  for (const std::uint32_t request : requests) {
    const scmp_arg_cmp asked{1, SCMP_CMP_MASKED_EQ, 0xFFFFFFFF, request};
    if (!filter.refuse_where(EACCES, call, asked)) return false;
  }
  return true;
}

bool refuse_programs(const SyscallFilter& filter) {
  return filter.refuse(EACCES,
                       {SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(fork), SCMP_SYS(vfork)}) &&
         filter.refuse_where(EACCES, SCMP_SYS(clone), {0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0}) &&
         // Its flags lie in memory, where a filter cannot look: threads are started by clone.
         filter.refuse(ENOSYS, {SCMP_SYS(clone3)});
}

bool refuse_system(const SyscallFilter& filter) {
  return filter.refuse(
      EACCES,
      {SCMP_SYS(mount), SCMP_SYS(umount2), SCMP_SYS(pivot_root), SCMP_SYS(chroot), SCMP_SYS(setns),
       SCMP_SYS(unshare), SCMP_SYS(bpf), SCMP_SYS(keyctl), SCMP_SYS(add_key), SCMP_SYS(request_key),
       SCMP_SYS(perf_event_open), SCMP_SYS(userfaultfd), SCMP_SYS(io_uring_setup)});
}

// Memory, limits and rank of other processes, and what processes share by a number. A thread of its
// own that wants another rank does without.
bool refuse_other_processes(const SyscallFilter& filter) {
  return filter.refuse(EACCES, {SCMP_SYS(ptrace),
                                SCMP_SYS(process_vm_readv),
                                SCMP_SYS(process_vm_writev),
                                SCMP_SYS(process_madvise),
                                SCMP_SYS(process_mrelease),
                                SCMP_SYS(pidfd_getfd),
                                SCMP_SYS(pidfd_open),
                                SCMP_SYS(kcmp),
                                SCMP_SYS(migrate_pages),
                                SCMP_SYS(move_pages),
                                SCMP_SYS(setpriority),
                                SCMP_SYS(ioprio_set),
                                SCMP_SYS(sched_setaffinity),
                                SCMP_SYS(sched_setscheduler),
                                SCMP_SYS(sched_setparam),
                                SCMP_SYS(sched_setattr),
                                SCMP_SYS(shmget),
                                SCMP_SYS(shmat),
                                SCMP_SYS(shmctl),
                                SCMP_SYS(msgget),
                                SCMP_SYS(msgsnd),
                                SCMP_SYS(msgrcv),
                                SCMP_SYS(msgctl),
                                SCMP_SYS(semget),
                                SCMP_SYS(semop),
                                SCMP_SYS(semtimedop),
                                SCMP_SYS(semctl),
                                SCMP_SYS(mq_open),
                                SCMP_SYS(mq_unlink)}) &&
         filter.refuse_where(EACCES, SCMP_SYS(prlimit64), {0, SCMP_CMP_NE, 0, 0});
}

// To others; by way of a descriptor, too, whose owner the kernel sends a signal of one's choice.
bool refuse_signals(const SyscallFilter& filter) {
  const scmp_arg_cmp to_others{0, SCMP_CMP_NE, static_cast<scmp_datum_t>(getpid()), 0};
  return filter.refuse(EACCES, {SCMP_SYS(kill), SCMP_SYS(tkill), SCMP_SYS(rt_sigqueueinfo),
                                SCMP_SYS(pidfd_send_signal)}) &&
         filter.refuse_where(EACCES, SCMP_SYS(tgkill), to_others) &&
         filter.refuse_where(EACCES, SCMP_SYS(rt_tgsigqueueinfo), to_others) &&
         refuse_requests(filter, SCMP_SYS(fcntl), {F_SETOWN, F_SETOWN_EX, F_SETSIG}) &&
         refuse_requests(filter, SCMP_SYS(ioctl), {FIOSETOWN, SIOCSPGRP});
}

// What can be changed of a file without a descriptor for writing: through the movie's own, which is
// for reading, as well.
bool refuse_changes_of_files(const SyscallFilter& filter) {
  return filter.refuse(EACCES,
                       {SCMP_SYS(chmod),        SCMP_SYS(fchmod),      SCMP_SYS(fchmodat),
                        fchmodat2_call,         SCMP_SYS(chown),       SCMP_SYS(fchown),
                        SCMP_SYS(lchown),       SCMP_SYS(fchownat),    SCMP_SYS(truncate),
                        SCMP_SYS(setxattr),     SCMP_SYS(fsetxattr),   SCMP_SYS(lsetxattr),
                        setxattrat_call,        SCMP_SYS(removexattr), SCMP_SYS(fremovexattr),
                        SCMP_SYS(lremovexattr), removexattrat_call,    SCMP_SYS(utime),
                        SCMP_SYS(utimes),       SCMP_SYS(futimesat),   SCMP_SYS(utimensat),
                        file_setattr_call}) &&
         refuse_requests(filter, SCMP_SYS(ioctl),
                         {static_cast<std::uint32_t>(FS_IOC_SETFLAGS),
                          static_cast<std::uint32_t>(FS_IOC32_SETFLAGS),
                          static_cast<std::uint32_t>(FS_IOC_FSSETXATTR),
                          static_cast<std::uint32_t>(FS_IOC_ENABLE_VERITY), TIOCSTI});
}

// The libraries need too many calls for a list of the allowed ones; these are the ones that would
// lead out of the process.
bool install_filter() {
  const SyscallFilter filter(SCMP_ACT_ALLOW);
  return filter && refuse_programs(filter) && refuse_system(filter) &&
         refuse_other_processes(filter) && refuse_signals(filter) &&
         refuse_changes_of_files(filter) &&
         filter.refuse_where(EACCES, SCMP_SYS(socket), {0, SCMP_CMP_NE, AF_UNIX, 0}) &&
         filter.install();
}

}  // namespace

bool give_up_player_rights() {
  return prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         set_limits() && restrict_files() && install_filter();
}

// A pair of sockets of one's own can send to any other by its name.
bool give_up_new_connections() {
  const SyscallFilter filter(SCMP_ACT_ALLOW);
  return filter &&
         filter.refuse(EACCES,
                       {SCMP_SYS(socket), SCMP_SYS(socketpair), SCMP_SYS(connect), SCMP_SYS(bind),
                        SCMP_SYS(listen), SCMP_SYS(accept), SCMP_SYS(accept4)}) &&
         filter.install_for_all_threads();
}

}  // namespace norvo
