// The JPEG library's header, which does not include what it needs.
#pragma once

// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on
