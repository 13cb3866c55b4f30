// What the kernel lets a process do, made of rules and set for good. One thread, before the others
// start, unless it is said.
#pragma once

#include <seccomp.h>
#include <sys/resource.h>

#include <cstdint>
#include <initializer_list>
#include <memory>

namespace norvo {

// Sets the limit of `resource` for the calling process, which cannot raise it again. False when the
// system refuses.
bool limit_for_good(__rlimit_resource resource, rlim_t value);

// A filter of system calls. Each rule returns false when it cannot be had: a filter that lacks one
// must not be installed. A call of another architecture ends at least the thread that makes it.
class SyscallFilter {
 public:
  // `otherwise` is what happens to a call without a rule: SCMP_ACT_ALLOW, SCMP_ACT_KILL_PROCESS.
  explicit SyscallFilter(std::uint32_t otherwise) : filter_(seccomp_init(otherwise)) {}

  explicit operator bool() const { return filter_ != nullptr; }

  bool allow(std::initializer_list<int> calls) const;
  bool allow_where(int call, const scmp_arg_cmp& condition) const;

  // The call fails with `error`.
  bool refuse(int error, std::initializer_list<int> calls) const;
  bool refuse_where(int error, int call, const scmp_arg_cmp& condition) const;

  // For the calling thread and those that it starts. False when the kernel refuses it.
  bool install() const;

  // For every thread of the process; any thread.
  bool install_for_all_threads() const;

 private:
  struct Release {
    void operator()(void* filter) const { seccomp_release(filter); }
  };
  std::unique_ptr<void, Release> filter_;
};

}  // namespace norvo
