// What the notice after a search says: where the files are, or that there are none. Any thread.
#pragma once

#include <filesystem>

#include "util/Text.h"
#include "wizard/WizardState.h"

namespace norvo {

struct SavedNotice {
  Text text;
  Text place;   // one line: the folder with the files, or the search that has saved none
  Text advice;  // what to do next
};

// After a search with these settings: `saved` says whether it has saved a file from its beginning
// to its end, `results` is the folder for them. True however the search has ended: by itself,
// stopped, or unable to save.
SavedNotice saved_notice(const SearchSettings& settings, bool saved,
                         const std::filesystem::path& results);

}  // namespace norvo
