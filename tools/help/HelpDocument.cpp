#include "HelpDocument.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>
#include <algorithm>
#include <vector>

#include "PageBreaks.h"

namespace norvo::help {
namespace {

using namespace Qt::StringLiterals;

constexpr double text_points = 10.5;
constexpr double listing_points = 9;
constexpr double title_points = 22;
constexpr double heading_points = 14;
constexpr double small_heading_points = 11.5;
constexpr int window_pixels = 1080;    // width of a picture of the whole window
constexpr double window_width = 0.70;  // of the text
constexpr int most_rounds = 10;
constexpr double line_height_percent = 135;
// The lengths of formats are meant for a screen and are scaled to the printer.
constexpr double screen_inch = 96;
constexpr double points(double points) {
  return points * screen_inch / 72;
}

const QColor accent(0x0b, 0x6b, 0x74);
const QColor quiet(0x5c, 0x61, 0x66);
const QColor listing_ground(0xf2, 0xf4, 0xf4);

bool is_picture(const QTextBlock& block) {
  return block.text() == QString(QChar::ObjectReplacementCharacter);
}

// As the readers of Markdown make it: "What to do?" is reached as #what-to-do.
QString anchor_of(const QString& heading) {
  QString anchor = heading.toLower();
  anchor.remove(
      QRegularExpression(u"[^\\w\\- ]"_s, QRegularExpression::UseUnicodePropertiesOption));
  return anchor.replace(u' ', u'-');
}

struct Link {
  int position;
  int length;
  QString address;
};

std::vector<Link> links_of(const QTextDocument& document) {
  std::vector<Link> links;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
      const QTextFragment fragment = piece.fragment();
      if (!fragment.charFormat().isAnchor() || fragment.charFormat().isImageFormat()) continue;
      links.push_back({fragment.position(), fragment.length(), fragment.charFormat().anchorHref()});
    }
  }
  return links;
}

class Book {
 public:
  Book(const QStringList& files, const Paper& paper) : files_(files), paper_(paper) {}

  std::unique_ptr<QTextDocument> print() {
    if (!read()) return nullptr;
    for (QTextBlock block = document_->begin(); block.isValid(); block = block.next()) {
      set_sizes(block);
    }
    set_tables();
    place_pictures();
    // Room for the numbers first, as they decide where the pages end.
    std::vector<Reference> references = prepare_links();
    document_->setPageSize(paper_.text_area);
    // A number that is shorter than its room can move a line, and that line a page.
    for (int round = 0; round < most_rounds; ++round) {
      settle_page_breaks(*document_);
      if (!fill_in(references)) break;
    }
    lay_out_anew(*document_);
    return std::move(document_);
  }

 private:
  struct Reference {
    QTextCursor number;  // behind it
    int length;
    int target;  // number of the block
  };

  double text_width() const { return paper_.text_area.width() * screen_inch / paper_.resolution; }

  bool read() {
    QStringList texts;
    for (const QString& name : files_) {
      QFile file(name);
      if (!file.open(QIODevice::ReadOnly)) return false;
      texts.append(QString::fromUtf8(file.readAll()));
    }
    document_ = std::make_unique<QTextDocument>();
    document_->documentLayout()->setPaintDevice(paper_.device);
    document_->setDefaultFont(QFont(u"DejaVu Sans"_s, -1));
    QFont font = document_->defaultFont();
    font.setPointSizeF(text_points);
    document_->setDefaultFont(font);
    document_->setIndentWidth(points(14));
    document_->setBaseUrl(QUrl::fromLocalFile(QFileInfo(files_.first()).absolutePath() + u'/'));
    document_->setMarkdown(texts.join(u"\n\n"_s));
    QTextFrameFormat frame = document_->rootFrame()->frameFormat();
    frame.setMargin(0);
    document_->rootFrame()->setFrameFormat(frame);
    return true;
  }

  // What Markdown does not say.
  void set_sizes(const QTextBlock& block) {
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    format.setLineHeight(line_height_percent, QTextBlockFormat::ProportionalHeight);
    format.setTopMargin(0);
    const bool list_goes_on = block.textList() != nullptr && block.next().textList() != nullptr;
    format.setBottomMargin(points(list_goes_on ? 3 : 7));
    if (cursor.currentTable() != nullptr) format.setBottomMargin(0);
    if (format.headingLevel() > 0) set_heading(cursor, format);
    if (is_listing(block)) set_listing(cursor, format);
    if (is_picture(block)) {
      format.setAlignment(Qt::AlignHCenter);
      format.setLineHeight(0, QTextBlockFormat::SingleHeight);
      format.setTopMargin(points(4));
      format.setBottomMargin(points(12));
    }
    cursor.setBlockFormat(format);
  }

  static QTextCursor select(const QTextBlock& block) {
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    return cursor;
  }

  void set_heading(const QTextCursor& cursor, QTextBlockFormat& format) {
    const int level = format.headingLevel();
    const double size = level == 1   ? title_points
                        : level == 2 ? heading_points
                                     : small_heading_points;
    format.setTopMargin(points(level == 1 ? 0 : 16));
    format.setBottomMargin(points(level == 1 ? 14 : 6));
    format.setLineHeight(110, QTextBlockFormat::ProportionalHeight);
    const bool begins_page =
        (level == 1 && cursor.position() > 0) || cursor.block().text() == u"Contents"_s;
    if (begins_page) {
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      format.setTopMargin(0);
    }
    QTextCharFormat letters;
    letters.setFontPointSize(size);
    letters.setFontWeight(QFont::Bold);
    letters.setForeground(accent);
    select(cursor.block()).setCharFormat(letters);
  }

  void set_listing(const QTextCursor& cursor, QTextBlockFormat& format) {
    const QTextBlock next = cursor.block().next();
    const bool last = !next.isValid() || !is_listing(next);
    format.setBottomMargin(last ? points(8) : 0);
    format.setLeftMargin(points(8));
    format.setLineHeight(0, QTextBlockFormat::SingleHeight);
    format.setBackground(listing_ground);
    QTextCharFormat letters;
    letters.setFontFamilies({u"DejaVu Sans Mono"_s});
    letters.setFontPointSize(listing_points);
    select(cursor.block()).mergeCharFormat(letters);
  }

  void set_tables() {
    for (QTextFrame* frame : document_->rootFrame()->childFrames()) {
      auto* table = qobject_cast<QTextTable*>(frame);
      if (table == nullptr) continue;
      QTextTableFormat format = table->format();
      format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
      format.setBorderCollapse(true);
      format.setBorder(points(0.5));
      format.setBorderBrush(QColor(0xc8, 0xcc, 0xcc));
      format.setCellPadding(points(4));
      format.setCellSpacing(0);
      format.setBottomMargin(points(10));
      table->setFormat(format);
    }
  }

  void place_pictures() {
    for (QTextBlock block = document_->begin(); block.isValid(); block = block.next()) {
      if (!is_picture(block)) continue;
      QTextImageFormat format = block.begin().fragment().charFormat().toImageFormat();
      QImage picture(document_->baseUrl().resolved(QUrl(format.name())).toLocalFile());
      if (picture.isNull()) qFatal("The picture %s is missing", qUtf8Printable(format.name()));
      picture = picture.convertToFormat(QImage::Format_RGB32);
      QPainter painter(&picture);
      painter.setPen(QColor(0xb8, 0xbe, 0xbe));
      painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
      painter.end();
      const QString name = u"picture:"_s + format.name();
      document_->addResource(QTextDocument::ImageResource, QUrl(name), picture);
      const double width =
          text_width() * std::min(1.0, window_width * picture.width() / window_pixels);
      format.setName(name);
      format.setWidth(width);
      format.setHeight(width * picture.height() / picture.width());
      QTextCursor cursor(block);
      cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
      cursor.setCharFormat(format);
    }
  }

  // The block that a link leads to; -1 when it leads out of the book.
  int target_of(const QString& address) const {
    const QString anchor = address.section(u'#', 1);
    const QString file = address.section(u'#', 0, 0);
    int document = -1;
    for (QTextBlock block = document_->begin(); block.isValid(); block = block.next()) {
      const int level = block.blockFormat().headingLevel();
      if (level == 1) ++document;
      if (level == 0) continue;
      if (anchor.isEmpty() && level == 1 && QFileInfo(files_.at(document)).fileName() == file) {
        return block.blockNumber();
      }
      if (!anchor.isEmpty() && anchor_of(block.text()) == anchor) return block.blockNumber();
    }
    return -1;
  }

  // An entry of the contents is nothing but a link in a list.
  static bool is_entry(const QTextBlock& block, const Link& link) {
    return block.textList() != nullptr && link.length == block.text().size();
  }

  // Takes the links back to plain text, with a place for the page's number behind those that stay.
  std::vector<Reference> prepare_links() {
    std::vector<Reference> references;
    int added = 0;
    for (const Link& link : links_of(*document_)) {
      if (link.address.contains(u"://"_s) || link.address.startsWith(u"mailto:"_s)) continue;
      QTextCursor cursor(document_.get());
      cursor.setPosition(link.position + added);
      cursor.setPosition(link.position + added + link.length, QTextCursor::KeepAnchor);
      QTextCharFormat letters = cursor.charFormat();
      const int target = target_of(link.address);
      if (target < 0 && link.address.startsWith(u'#')) {
        qFatal("No heading for %s", qUtf8Printable(link.address));
      }
      for (const int property :
           {QTextFormat::IsAnchor, QTextFormat::AnchorHref, QTextFormat::AnchorName,
            QTextFormat::TextUnderlineStyle, QTextFormat::ForegroundBrush}) {
        letters.clearProperty(property);
      }
      letters.setFontUnderline(false);
      cursor.setCharFormat(letters);
      if (target < 0) continue;
      cursor.setPosition(link.position + added + link.length);
      const bool entry = is_entry(cursor.block(), link);
      if (entry) align_entry(cursor);
      const QString before = entry ? u"\t"_s : u" (page "_s;
      letters.setForeground(entry ? accent : quiet);
      cursor.insertText(before + u"00"_s + (entry ? QString() : u")"_s), letters);
      added = cursor.position() - link.position - link.length;
      cursor.movePosition(QTextCursor::Left, QTextCursor::MoveAnchor, entry ? 0 : 1);
      references.push_back({.number = cursor, .length = 2, .target = target});
    }
    return references;
  }

  void align_entry(QTextCursor& cursor) {
    QTextBlockFormat format = cursor.blockFormat();
    const double width = text_width() - 2 * document_->indentWidth();
    format.setTabPositions({QTextOption::Tab(width, QTextOption::RightTab)});
    cursor.setBlockFormat(format);
  }

  // Writes the pages on which the targets stand now. False when all of them were there.
  bool fill_in(std::vector<Reference>& references) {
    std::vector<QString> pages;
    pages.reserve(references.size());
    for (const Reference& reference : references) {
      const int page = page_of(document_->findBlockByNumber(reference.target)) + 1;
      pages.push_back(QString::number(page));
    }
    bool changed = false;
    for (std::size_t i = 0; i < references.size(); ++i) {
      auto& [number, length, target] = references[i];
      number.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, length);
      changed = changed || number.selectedText() != pages[i];
      number.insertText(pages[i], number.charFormat());
      length = static_cast<int>(pages[i].size());
    }
    return changed;
  }

  QStringList files_;
  Paper paper_;
  std::unique_ptr<QTextDocument> document_;
};

}  // namespace

std::unique_ptr<QTextDocument> make_help_document(const QStringList& files, const Paper& paper) {
  return Book(files, paper).print();
}

}  // namespace norvo::help
