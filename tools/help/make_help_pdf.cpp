// Prints documents into a PDF: make_help_pdf HELP.pdf DOCUMENT.md...
//
// A tool of the build. Pictures are looked for beside the first document.
#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QHashSeed>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <cstdio>

#include "HelpDocument.h"

namespace {

using namespace Qt::StringLiterals;

constexpr int resolution = 300;  // dots per inch
constexpr double side = 24;      // margins in millimetres
constexpr double head = 20;
constexpr double foot = 24;
constexpr double number_points = 8;

void print(QTextDocument& document, QPdfWriter& writer, const QString& title) {
  QPainter painter(&writer);
  painter.setRenderHint(QPainter::LosslessImageRendering);  // also smaller, for pictures of windows
  const QSizeF page = document.pageSize();
  QFont small = document.defaultFont();
  small.setPointSizeF(number_points);
  const double below = 9 / 25.4 * resolution;
  for (int number = 0; number < document.pageCount(); ++number) {
    if (number > 0) writer.newPage();
    painter.save();
    painter.translate(0, -number * page.height());
    // What begins the next page is drawn there, its upper edge included.
    const QRectF part(0, number * page.height(), page.width(), page.height() - 2);
    document.drawContents(&painter, part);
    painter.restore();
    painter.setFont(small);
    painter.setPen(QColor(0x5c, 0x61, 0x66));
    const QRectF line(0, page.height() + below / 2, page.width(), below);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, title);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QString::number(number + 1));
  }
}

// The same guide gives the same file: the moment of printing is blanked out, as the places of all
// that follows are written into the file.
QByteArray without_date(QByteArray pdf) {
  const qsizetype begin = pdf.indexOf("/CreationDate (");
  const qsizetype end = pdf.indexOf(')', begin);
  if (begin >= 0 && end >= 0) {
    const qsizetype length = end + 1 - begin;
    pdf.replace(begin, length, QByteArray(length, ' '));
  }
  return pdf;
}

bool save(const QString& path, const QByteArray& content) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The order of the fonts in the file follows the order of a table.
  QHashSeed::setDeterministicGlobalSeed();
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() < 3) {
    std::fputs("Usage: make_help_pdf HELP.pdf DOCUMENT.md...\n", stderr);
    return 2;
  }
  const QString title = u"Norvo Recovery: user's guide"_s;
  QBuffer printed;
  printed.open(QIODevice::WriteOnly);
  QPdfWriter writer(&printed);
  writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                   QMarginsF(side, head, side, foot), QPageLayout::Millimeter));
  writer.setResolution(resolution);
  writer.setTitle(title);
  const auto document = norvo::help::make_help_document(
      arguments.mid(2), {.device = &writer,
                         .text_area = QSizeF(writer.width(), writer.height()),
                         .resolution = resolution});
  if (!document) {
    std::fputs("A document cannot be read\n", stderr);
    return 2;
  }
  print(*document, writer, title);
  if (!save(arguments[1], without_date(printed.data()))) {
    std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return 1;
  }
  return 0;
}
