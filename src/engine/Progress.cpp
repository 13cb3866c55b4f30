#include "engine/Progress.h"

namespace norvo {

Text sector_label(std::uint64_t index, std::uint64_t start, std::uint64_t end,
                  std::uint64_t total) {
  const std::uint64_t percent = (index - start) * 100 / total;
  return u"Sectors " + decimal(index) + u" of " + decimal(end) + u"   ( Completed " +
         decimal(percent) + u"% )";
}

void show_sector_label(const ScanState& state, ScanOperations& operations) {
  const std::uint64_t total = state.total_sector;
  if (total == 0) return;
  operations.perform(operation::SetSectorLabel{
      sector_label(state.for_index, state.start_sector, state.end_sector, total)});
}

void timerTickSetLabel(const ScanState& state, ScanOperations& operations) {
  const std::uint64_t index = state.for_index;
  if (state.total_sector == 0 || index > state.end_sector) return;
  show_sector_label(state, operations);
  operations.perform(operation::SetModeLabel{state.Curr_Running_Mode_Info.get()});
  operations.perform(operation::SetProgressValue{static_cast<double>(index - state.start_sector)});
}

}  // namespace norvo
