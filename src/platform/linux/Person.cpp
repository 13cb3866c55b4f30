#include "platform/linux/Person.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <limits>
#include <vector>

namespace norvo {
namespace {

constexpr std::size_t largest_entry = 1 << 20;

std::string text_or_empty(const char* text) {
  return text != nullptr ? text : "";
}

Person person_of(const passwd& entry) {
  Person person{.uid = entry.pw_uid,
                .gid = entry.pw_gid,
                .name = text_or_empty(entry.pw_name),
                .home = text_or_empty(entry.pw_dir),
                .shell = text_or_empty(entry.pw_shell)};
  if (!person.home.starts_with('/')) person.home = "/";
  if (person.shell.empty()) person.shell = "/bin/sh";
  return person;
}

}  // namespace

std::optional<std::string> who_asked(const std::optional<std::string>& PKEXEC_UID,
                                     const std::optional<std::string>& SUDO_UID) {
  if (PKEXEC_UID) return PKEXEC_UID;
  return SUDO_UID == "0" ? std::nullopt : SUDO_UID;
}

std::optional<uid_t> person_number(std::string_view text) {
  // from_chars takes a minus sign and zeros ahead of the number.
  if (text.empty() || text.front() < '1' || text.front() > '9') return {};
  uid_t uid = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, uid);
  // The highest number means "leave it as it is" to the calls that change an identity.
  if (error != std::errc() || stop != end || uid == std::numeric_limits<uid_t>::max()) return {};
  return uid;
}

std::optional<Person> person_with_number(uid_t uid) {
  for (std::size_t size = 1024; size <= largest_entry; size *= 4) {
    std::vector<char> texts(size);
    passwd entry{};
    passwd* found = nullptr;
    const int error = getpwuid_r(uid, &entry, texts.data(), texts.size(), &found);
    if (error == ERANGE) continue;
    if (error != 0 || found == nullptr || entry.pw_uid != uid) return {};
    return person_of(entry);
  }
  return {};
}

}  // namespace norvo
