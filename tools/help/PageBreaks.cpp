#include "PageBreaks.h"

#include <QAbstractTextDocumentLayout>
#include <QTextCursor>
#include <QTextLayout>
#include <QTextTable>
#include <algorithm>

namespace norvo::help {
namespace {

constexpr int short_text = 5;          // lines that stay together
constexpr int least_lines = 2;         // of a longer text, on the page where it begins
constexpr double largest_group = 0.8;  // of a page
constexpr int most_moves = 200;

double line_top(const QTextBlock& block, int line) {
  // Asks for the place first, which lays the block out.
  const QRectF place = block.document()->documentLayout()->blockBoundingRect(block);
  const QTextLayout& layout = *block.layout();
  if (line >= layout.lineCount()) return place.top();
  return place.top() + layout.lineAt(line).y() - layout.lineAt(0).y();
}

int page_at(const QTextDocument& document, double height) {
  return static_cast<int>(height / document.pageSize().height());
}

bool in_table(const QTextBlock& block) {
  return QTextCursor(block).currentTable() != nullptr;
}

bool is_heading(const QTextBlock& block) {
  return block.blockFormat().headingLevel() > 0;
}

// A text behind which a heading follows, or nothing: alone, it would begin a page.
bool ends_section(const QTextBlock& block) {
  return !in_table(block) && (!block.next().isValid() || is_heading(block.next()));
}

// Blocks that are one thing, or of which the first announces the next or the second only ends it.
bool keeps_with_next(const QTextBlock& block) {
  const QTextBlock next = block.next();
  if (!next.isValid()) return false;
  if (in_table(block)) return in_table(next);
  if (is_heading(block) || block.text().endsWith(u':') || ends_section(next)) return true;
  return is_listing(block) && is_listing(next);
}

// The end of what has to stand on the page on which the group begins.
double kept_bottom(const QTextBlock& block) {
  const int lines = block.layout()->lineCount();
  const int line = lines <= short_text ? std::max(0, lines - 1) : least_lines - 1;
  const double height = lines > 0 ? block.layout()->lineAt(line).height() : 0;
  return line_top(block, line) + height - 1;
}

void begin_page(const QTextBlock& block) {
  QTextCursor cursor(block);
  QTextBlockFormat format = block.blockFormat();
  format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  format.setTopMargin(0);
  cursor.setBlockFormat(format);
}

// Moves the first group that is parted; false when there is none.
bool move_one(QTextDocument& document) {
  for (QTextBlock first = document.begin(); first.isValid();) {
    QTextBlock last = first;
    while (keeps_with_next(last)) last = last.next();
    const double top = line_top(first, 0);
    const double bottom = kept_bottom(last);
    const bool parted = page_at(document, top) != page_at(document, bottom);
    const bool fits = bottom - top < largest_group * document.pageSize().height();
    const bool moved = first.blockFormat().pageBreakPolicy() != QTextFormat::PageBreak_Auto;
    if (parted && fits && !moved && !in_table(first)) {
      begin_page(first);
      lay_out_anew(document);
      return true;
    }
    first = last.next();
  }
  return false;
}

}  // namespace

bool is_listing(const QTextBlock& block) {
  const QTextBlockFormat format = block.blockFormat();
  return format.nonBreakableLines() || format.hasProperty(QTextFormat::BlockCodeLanguage);
}

void lay_out_anew(QTextDocument& document) {
  document.markContentsDirty(0, document.characterCount());
}

void settle_page_breaks(QTextDocument& document) {
  lay_out_anew(document);
  for (int round = 0; round < most_moves && move_one(document); ++round) {
  }
}

int page_of(const QTextBlock& block) {
  return page_at(*block.document(), line_top(block, 0));
}

}  // namespace norvo::help
