#include "sigdb/SignatureCheck.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "sigdb/SignatureFormat.h"
#include "util/Numbers.h"
#include "util/Text.h"

namespace norvo {
namespace {

struct Field : SignatureField {
  std::size_t line;
};

using RecordFields = std::vector<Field>;

bool all_of(TextView text, TextView allowed) {
  return std::all_of(text.begin(), text.end(),
                     [&](char16_t c) { return allowed.find(c) != TextView::npos; });
}

bool is_number(TextView text) {
  return !text.empty() && all_of(text, u"0123456789");
}

class Checker {
 public:
  void add_field(Field field) {
    if (record_.size() == fields_per_record) record_.clear();
    check_value(field);
    record_.push_back(std::move(field));
    if (record_.size() == fields_per_record) check_record();
  }

  std::vector<SignatureFault> finish() {
    if (!record_.empty() && record_.size() < fields_per_record) {
      report(record_.front().line, "the last record is incomplete: it has " +
                                       std::to_string(record_.size()) + " of 6 field lines");
    }
    std::stable_sort(faults_.begin(), faults_.end(),
                     [](const auto& a, const auto& b) { return a.line < b.line; });
    return std::move(faults_);
  }

  void report(std::size_t line, std::string fault) { faults_.push_back({line, std::move(fault)}); }

 private:
  void check_value(const Field& field) {
    const bool stop_allowed =
        record_.empty() && field.value.starts_with(u'.') && field.value.find(u'.', 1) == Text::npos;
    if (field.value.find(u'.') != Text::npos && !stop_allowed) {
      report(field.line, "a full stop cuts the value to what follows it");
    }
    if (field.is_header && field.value.size() < 2) {
      report(field.line, "the header value has fewer than two characters");
    }
  }

  void check_record() {
    if (record_[0].value.empty() || record_[0].value == u".")
      report(record_[0].line, "the extension is empty");
    if (record_[0].value.find(u'/') != Text::npos) {
      report(record_[0].line, "the extension holds a slash");
    }
    if (!is_number(record_[1].value) || integer64_value(record_[1].value) == 0) {
      report(record_[1].line, "the maximum size is not a positive number");
    }
    check_header(record_[2]);
    check_position(record_[3]);
    for (std::size_t k = 0; k < fields_per_record; ++k) {
      if (k != 2 && record_[k].is_header) {
        report(record_[k].line, "a \"Header :\" line stands where another field is expected");
      }
    }
  }

  void check_header(const Field& field) {
    if (!field.is_header) {
      report(field.line, "the third field line does not begin with exactly \"Header :\"");
    }
    if (field.value.size() % 2 != 0) report(field.line, "the header has an odd number of digits");
    if (!all_of(field.value, u"0123456789ABCDEFabcdef")) {
      report(field.line, "the header holds a character that is no hexadecimal digit");
    }
  }

  void check_position(const Field& field) {
    if (field.value == u"nn") return;
    if (!is_number(field.value)) {
      report(field.line, "the header position is neither \"nn\" nor a number");
      return;
    }
    const std::int64_t position = integer64_value(field.value);
    if (position < 1 || position > last_header_position) {
      report(field.line, "a header at this position is never found (1 to 507 are)");
    }
  }

  RecordFields record_;
  std::vector<SignatureFault> faults_;
};

}  // namespace

std::vector<SignatureFault> check_signature_file(std::string_view content) {
  Checker checker;
  std::size_t line_number = 0;
  for (std::size_t from = 0; from <= content.size();) {
    const std::size_t end = std::min(content.find('\n', from), content.size());
    const std::string_view bytes = content.substr(from, end - from);
    from = end + 1;
    ++line_number;

    const std::optional<Text> line = text_from_utf8(bytes);
    if (!line) {
      checker.report(line_number, "not UTF-8: the whole file is ignored");
      continue;
    }
    std::optional<SignatureField> field = signature_field(*line);
    if (field) checker.add_field({std::move(*field), line_number});
  }
  return checker.finish();
}

}  // namespace norvo
