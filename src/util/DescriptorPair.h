// Two descriptors that are connected with each other and that no child inherits.
//
// Not every system makes a pair that is born so: between making it and marking it another thread
// could start a child, which would keep an end open as long as it lives, and who waits for that end
// to close would wait as long. Both steps hold one lock here, which start_child() takes as well.
//
// Any thread.
#pragma once

#include <mutex>

#include "util/UniqueFd.h"

namespace norvo {

struct DescriptorPair {
  UniqueFd first;
  UniqueFd second;

  explicit operator bool() const { return bool(first); }
};

// `first` is read from, `second` written to. Empty, with the reason in errno, when there is none.
DescriptorPair make_pipe();

// A byte stream in both directions, which every system has. Failures as for make_pipe().
DescriptorPair make_socket_pair();

// No pair is half made while this is held.
[[nodiscard]] std::unique_lock<std::mutex> hold_descriptor_pairs();

}  // namespace norvo
