#include "platform/linux/Privileges.h"

#include <grp.h>
#include <sys/capability.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <memory>

namespace norvo {
namespace {

// The kernel's own identity for what belongs to nobody.
constexpr uid_t nobody = 65534;
constexpr gid_t nobodys_group = 65534;

using Capabilities = std::unique_ptr<std::remove_pointer_t<cap_t>, int (*)(void*)>;

void demand(bool holds) {
  if (!holds) _exit(1);
}

Capabilities capabilities(cap_t set) {
  demand(set != nullptr);
  return {set, cap_free};
}

void hide_from_other_processes() {
  demand(prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) == 0);
}

void forbid_new_rights() {
  for (cap_value_t cap = 0; CAP_IS_SUPPORTED(cap); ++cap) demand(cap_drop_bound(cap) == 0);
  demand(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0);
}

void take_identity(uid_t uid, gid_t gid) {
  demand(setresgid(gid, gid, gid) == 0);
  demand(setresuid(uid, uid, uid) == 0);
}

void prove_identity(uid_t uid, gid_t gid) {
  uid_t real = 0;
  uid_t effective = 0;
  uid_t saved = 0;
  demand(getresuid(&real, &effective, &saved) == 0);
  demand(real == uid && effective == uid && saved == uid);
  gid_t real_group = 0;
  gid_t effective_group = 0;
  gid_t saved_group = 0;
  demand(getresgid(&real_group, &effective_group, &saved_group) == 0);
  demand(real_group == gid && effective_group == gid && saved_group == gid);
  demand(setuid(0) != 0 && seteuid(0) != 0 && setresuid(0, 0, 0) != 0);
  demand(gid == 0 || setresgid(0, 0, 0) != 0);
}

void prove_capabilities(cap_t wanted) {
  demand(cap_compare(capabilities(cap_get_proc()).get(), wanted) == 0);
  for (cap_value_t cap = 0; CAP_IS_SUPPORTED(cap); ++cap) {
    demand(cap_get_bound(cap) == 0);
    demand(cap_get_ambient(cap) == 0);
  }
  demand(prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1);
}

void set_capabilities(cap_t wanted) {
  demand(cap_set_proc(wanted) == 0);
}

}  // namespace

void become_person(const Person& person) {
  demand(person.uid != 0 && geteuid() == 0);
  hide_from_other_processes();
  demand(initgroups(person.name.c_str(), person.gid) == 0);
  forbid_new_rights();
  take_identity(person.uid, person.gid);
  const Capabilities none = capabilities(cap_init());
  set_capabilities(none.get());
  hide_from_other_processes();
  prove_identity(person.uid, person.gid);
  prove_capabilities(none.get());
}

void become_reader_of_everything() {
  demand(geteuid() == 0);
  hide_from_other_processes();
  demand(setgroups(0, nullptr) == 0);
  forbid_new_rights();
  const Capabilities reader = capabilities(cap_init());
  constexpr cap_value_t reading = CAP_DAC_READ_SEARCH;
  demand(cap_set_flag(reader.get(), CAP_PERMITTED, 1, &reading, CAP_SET) == 0);
  demand(cap_set_flag(reader.get(), CAP_EFFECTIVE, 1, &reading, CAP_SET) == 0);
  // Without this, giving up root's identity gives up every capability with it.
  demand(prctl(PR_SET_KEEPCAPS, 1, 0, 0, 0) == 0);
  take_identity(nobody, nobodys_group);
  set_capabilities(reader.get());
  demand(prctl(PR_SET_KEEPCAPS, 0, 0, 0, 0) == 0);
  hide_from_other_processes();
  prove_identity(nobody, nobodys_group);
  prove_capabilities(reader.get());
}

}  // namespace norvo
