// Markdown documents as the pages of one book: sizes, pictures, page numbers, page breaks.
//
// One thread, with a QGuiApplication.
#pragma once

#include <QStringList>
#include <QTextDocument>
#include <memory>

namespace norvo::help {

struct Paper {
  QPaintDevice* device;  // outlives the document
  QSizeF text_area;      // in dots of the device
  double resolution;     // dots of the device per inch
};

// The documents one behind the other. Each one's title begins a page, and so does a heading
// "Contents", whose list gets page numbers. A link to a heading or to one of the other documents
// names the page; any other link to a file is plain text. Pictures are looked for beside the first
// document and are never larger than the text. Null when a file cannot be read.
std::unique_ptr<QTextDocument> make_help_document(const QStringList& files, const Paper& paper);

}  // namespace norvo::help
