#include "sigdb/FileTypeCheckList.h"

#include <algorithm>
#include <cassert>

#include "util/Diagnostics.h"
#include "util/LetterCase.h"

namespace norvo {
namespace {

void remove_type(SignatureTable& table, TextView extension) {
  constexpr auto stride = static_cast<std::ptrdiff_t>(SignatureRecord::stride);
  for (std::size_t r = 0; r < whole_records(table);) {
    if (SignatureRecord(table, r).extension() != extension) {
      ++r;
      continue;
    }
    const auto first = table.begin() + static_cast<std::ptrdiff_t>(r) * stride;
    table.erase(first, first + stride);
  }
}

}  // namespace

ModeTables tables_of_mode(const SignatureTables& tables, std::int32_t Recovery_MODE) {
  switch (Recovery_MODE) {
    case 1:
      return {tables.Video_Array, tables.Adv_Video_Array};
    case 2:
      return {tables.RawFile_Array, tables.Adv_RawFile_Array};
    default:
      assert(Recovery_MODE == 3);
      return {tables.Audio_Array, tables.Adv_Audio_Array};
  }
}

void FileTypeCheckList::build(const ModeTables& tables) {
  rows_.clear();
  add_types(tables.general, u"");
  add_types(tables.thorough, u"YES");
  std::stable_sort(rows_.begin(), rows_.end(), [](const auto& a, const auto& b) {
    return fold_case(a.Extension) < fold_case(b.Extension);
  });
}

void FileTypeCheckList::createExtensionListTableRecord(TextView Extension, bool State,
                                                       TextView Description, TextView Thoro) {
  rows_.push_back({.Extension = Text(Extension),
                   .Description = Text(Description),
                   .Thoro = Text(Thoro),
                   .State = State});
}

void FileTypeCheckList::Select_Unselect_Check(bool select_all) {
  for (FileTypeEntry& row : rows_) row.State = select_all;
}

void FileTypeCheckList::set_State(std::size_t row, bool State) {
  if (row >= rows_.size()) {
    report_violation(u"pRowIndex >= 0 && pRowIndex < [nsCheckedListDataObject count]");
    return;
  }
  rows_[row].State = State;
}

bool FileTypeCheckList::Check_For_One_Extension_Selection() const {
  return std::any_of(rows_.begin(), rows_.end(), [](const auto& row) { return row.State; });
}

bool FileTypeCheckList::all_selected() const {
  return std::all_of(rows_.begin(), rows_.end(), [](const auto& row) { return row.State; });
}

SelectedTables FileTypeCheckList::selected_tables(const ModeTables& tables) const {
  SelectedTables selected{tables.general, tables.thorough};
  for (const FileTypeEntry& row : rows_) {
    if (row.State) continue;
    remove_type(selected.CheckListHeader_Array, row.Extension);
    remove_type(selected.CheckListHeader_Adv_Array, row.Extension);
  }
  return selected;
}

bool FileTypeCheckList::has_extension(TextView Extension) const {
  return std::any_of(rows_.begin(), rows_.end(),
                     [&](const FileTypeEntry& row) { return row.Extension == Extension; });
}

void FileTypeCheckList::add_types(const SignatureTable& table, TextView Thoro) {
  for (std::size_t r = 0; r < whole_records(table); ++r) {
    const SignatureRecord record(table, r);
    if (has_extension(record.extension())) continue;
    createExtensionListTableRecord(record.extension(), true, record.description(), Thoro);
  }
}

}  // namespace norvo
