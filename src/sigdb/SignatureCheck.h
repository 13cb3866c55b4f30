// What is wrong with a signature file, told to its author. The loader itself never complains.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace norvo {

struct SignatureFault {
  std::size_t line;   // from 1
  std::string fault;  // one English sentence without a full stop

  bool operator==(const SignatureFault&) const = default;
};

// The faults of a file's content, in the order of their lines. Any bytes are accepted. Any thread.
std::vector<SignatureFault> check_signature_file(std::string_view content);

}  // namespace norvo
