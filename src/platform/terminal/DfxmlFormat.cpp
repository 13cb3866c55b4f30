#include "platform/terminal/DfxmlFormat.h"

#include <pugixml.hpp>
#include <sstream>

#include "engine/Device.h"

namespace norvo {
namespace {

// The element that the document consists of is never in memory as a whole, so its tags are texts.
constexpr const char* start_of_document =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<dfxml xmlns=\"http://www.forensicswiki.org/wiki/Category:Digital_Forensics_XML\"\n"
    "       xmlns:dc=\"http://purl.org/dc/elements/1.1/\"\n"
    "       xmlns:norvo=\"https://norvo.example/report\" version=\"1.2.0\">\n";
constexpr const char* end_of_document = "</dfxml>\n";

void add(pugi::xml_node parent, const char* name, const std::string& value) {
  parent.append_child(name).text().set(reportable(value).c_str());
}

void add_attribute(pugi::xml_node node, const char* name, std::uint64_t value) {
  node.append_attribute(name).set_value(static_cast<unsigned long long>(value));
}

// The document's children, each on lines of its own, one step to the right.
std::string children_of(const pugi::xml_document& document) {
  std::ostringstream out;
  for (const pugi::xml_node child : document) {
    child.print(out, "  ", pugi::format_indent, pugi::encoding_utf8, 1);
  }
  return out.str();
}

void add_creator(pugi::xml_node document, const ReportFacts& facts) {
  pugi::xml_node creator = document.append_child("creator");
  add(creator, "program", "norvo-recover");
  add(creator, "version", facts.program_version);
  add(creator.append_child("build_environment"), "compiler", facts.compiler);
  pugi::xml_node execution = creator.append_child("execution_environment");
  add(execution, "os_sysname", facts.os_sysname);
  add(execution, "os_release", facts.os_release);
  add(execution, "os_version", facts.os_version);
  add(execution, "host", facts.host);
  add(execution, "arch", facts.arch);
  add(execution, "command_line", facts.command_line);
  add(execution, "uid", facts.uid);
  add(execution, "username", facts.username);
  add(execution, "start_time", facts.start_time);
}

void add_source(pugi::xml_node document, const ReportFacts& facts) {
  pugi::xml_node source = document.append_child("source");
  add(source, "image_filename", facts.image_filename);
  add(source, "image_size", std::to_string(facts.sectors << sector_shift));
  add(source, "device_sectorsize", std::to_string(sector_size));
  add(source, "device_sectors", std::to_string(facts.sectors));
}

void add_runs(pugi::xml_node file, const FileEvidence& evidence) {
  pugi::xml_node runs = file.append_child("byte_runs");
  for (const ByteRun& run : evidence.runs) {
    pugi::xml_node node = runs.append_child("byte_run");
    add_attribute(node, "offset", run.offset);
    if (run.img_offset) add_attribute(node, "img_offset", *run.img_offset);
    add_attribute(node, "len", run.length);
  }
}

void add_unread(pugi::xml_node file, const FileEvidence& evidence) {
  for (const ByteRun& run : evidence.runs) {
    if (run.img_offset) continue;
    pugi::xml_node node = file.append_child("norvo:unread");
    add_attribute(node, "offset", run.offset);
    add_attribute(node, "len", run.length);
    if (run.repeats) add_attribute(node, "repeats", *run.repeats);
  }
}

}  // namespace

std::string DfxmlFormat::beginning() const {
  pugi::xml_document document;
  add(document.append_child("metadata"), "dc:type", "Carve Report");
  add_creator(document.root(), facts_);
  add_source(document.root(), facts_);
  return start_of_document + children_of(document);
}

std::string DfxmlFormat::file(const ReportedFile& file) const {
  pugi::xml_document document;
  pugi::xml_node node = document.append_child("fileobject");
  add(node, "filename", file.filename);
  add(node, "filesize", std::to_string(file.size));
  if (file.evidence) {
    add_runs(node, *file.evidence);
    pugi::xml_node digest = node.append_child("hashdigest");
    digest.append_attribute("type").set_value("sha256");
    digest.text().set(file.evidence->sha256.c_str());
  }
  add(node, "norvo:search", pass_name(file.pass));
  if (file.evidence) add_unread(node, *file.evidence);
  return children_of(document);
}

std::string DfxmlFormat::ending() const {
  return end_of_document;
}

}  // namespace norvo
