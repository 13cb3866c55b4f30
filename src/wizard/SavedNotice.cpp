#include "wizard/SavedNotice.h"

#include "wizard/SearchTypes.h"

namespace norvo {
namespace {

Text searched(const SearchSettings& settings) {
  const bool range = settings.sector_range && !settings.entire_disk;
  Text text(search_type(settings.Recovery_MODE).title_suffix);
  text += range ? u", sectors " + settings.start_slider_val + u" to " + settings.end_slider_val +
                      u" of "
                : u", entire disk ";
  return text + settings.disk_identifier;
}

}  // namespace

SavedNotice saved_notice(const SearchSettings& settings, bool saved,
                         const std::filesystem::path& results) {
  if (saved) {
    return {.text = u"What was found and saved lies in this folder:",
            .place = displayable(text_from_utf8_lossy(results.native())),
            .advice =
                u"Open some of the files to see whether they are complete. Is something "
                u"missing? A search with other settings may find it, and we are glad to "
                u"help."};
  }
  return {.text = u"This search has saved no complete file:",
          .place = displayable(searched(settings)),
          .advice =
              u"Nothing was found, or it could not be saved. A search with other settings "
              u"may find more, and we are glad to help."};
}

}  // namespace norvo
