// Who asked for the elevated copy.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvo {

struct Person {
  uid_t uid = 0;
  gid_t gid = 0;
  std::string name;
  std::string home;
  std::string shell;

  bool operator==(const Person&) const = default;
};

// The text of the number of who asked for the elevated copy, from what pkexec and sudo say; nothing
// when that is nobody. Root, who may use sudo as well, is nobody behind root.
std::optional<std::string> who_asked(const std::optional<std::string>& PKEXEC_UID,
                                     const std::optional<std::string>& SUDO_UID);

// The number of a person: plain decimal digits. Nothing for anything else, for 0 (root is nobody
// to become) and for numbers that no account can have.
std::optional<uid_t> person_number(std::string_view text);

// The account with this number. Nothing when the system knows none. A home that is no absolute path
// counts as "/", a missing shell as /bin/sh.
std::optional<Person> person_with_number(uid_t uid);

}  // namespace norvo
