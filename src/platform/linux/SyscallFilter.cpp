#include "platform/linux/SyscallFilter.h"

#include <algorithm>

namespace norvo {

bool limit_for_good(__rlimit_resource resource, rlim_t value) {
  const rlimit both{.rlim_cur = value, .rlim_max = value};
  return setrlimit(resource, &both) == 0;
}

bool SyscallFilter::allow(std::initializer_list<int> calls) const {
  return std::all_of(calls.begin(), calls.end(), [this](int call) {
    return seccomp_rule_add(filter_.get(), SCMP_ACT_ALLOW, call, 0) == 0;
  });
}

bool SyscallFilter::allow_where(int call, const scmp_arg_cmp& condition) const {
  return seccomp_rule_add_array(filter_.get(), SCMP_ACT_ALLOW, call, 1, &condition) == 0;
}

bool SyscallFilter::refuse(int error, std::initializer_list<int> calls) const {
  const auto action = SCMP_ACT_ERRNO(static_cast<std::uint32_t>(error));
  return std::all_of(calls.begin(), calls.end(), [&](int call) {
    return seccomp_rule_add(filter_.get(), action, call, 0) == 0;
  });
}

bool SyscallFilter::refuse_where(int error, int call, const scmp_arg_cmp& condition) const {
  const auto action = SCMP_ACT_ERRNO(static_cast<std::uint32_t>(error));
  return seccomp_rule_add_array(filter_.get(), action, call, 1, &condition) == 0;
}

bool SyscallFilter::install() const {
  return seccomp_load(filter_.get()) == 0;
}

bool SyscallFilter::install_for_all_threads() const {
  return seccomp_attr_set(filter_.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0 && install();
}

}  // namespace norvo
