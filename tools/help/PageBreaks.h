// Where the pages of a document end: no heading without what it heads, no short text cut in two, no
// last text of a section alone on the next page.
#pragma once

#include <QTextBlock>
#include <QTextDocument>

namespace norvo::help {

// Moves what belongs together to the next page where it would be parted. The document has a page
// size.
void settle_page_breaks(QTextDocument& document);

// After changes: laying out only what has changed leaves blocks behind it in places that no longer
// hold.
void lay_out_anew(QTextDocument& document);

// Whether the block is a line of a listing.
bool is_listing(const QTextBlock& block);

// The page, counted from 0, on which the first line of the block stands.
int page_of(const QTextBlock& block);

}  // namespace norvo::help
