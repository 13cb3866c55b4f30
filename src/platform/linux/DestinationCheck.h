// Which block devices a file system lies on, told by the kernel's device tree.
#pragma once

#include <filesystem>
#include <string>

namespace norvo {

// Whether the block device numbered `holder` ("8:17") is the device `device` ("8:16"), one of its
// partitions, or a mapping that lies on it. `tree` is the folder that stands for /sys/dev/block.
bool is_on_block_device(const std::filesystem::path& tree, const std::string& holder,
                        const std::string& device);

}  // namespace norvo
