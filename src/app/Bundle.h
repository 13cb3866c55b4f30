// Where a bundle's executable lies: rules on path texts. Nothing here looks at a file, and nothing
// fails. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace norvo {

// The part after the last slash; slashes at the end do not count. "/" for a path of slashes only.
std::string last_path_component(std::string_view path);

// `path` and `component` with exactly one slash between them and none at the end.
std::string append_path_component(std::string_view path, std::string_view component);

// `path` without the last full stop of its last component and what follows it. A full stop that
// begins the component begins no extension.
std::string delete_path_extension(std::string_view path);

// The bundle that an executable in `executable_folder` belongs to: the folder above
// "Contents/MacOS", or the executable's own folder when it does not lie in a bundle.
std::string main_bundle_path(std::string_view executable_folder);

// The bundle's name below its "Contents/MacOS/", still with the extension:
// "/Applications/Some App.app" gives "/Applications/Some App.app/Contents/MacOS/Some App.app".
// Without its extension this is the executable that is relaunched. What the bundle itself declares
// is not looked at, so a bundle under another name has no executable there.
std::string named_executable(std::string_view bundle_path);

}  // namespace norvo
