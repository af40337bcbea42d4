#include "engine/program_definition.h"

#include <algorithm>
#include <optional>

#include "tagfile/tag_file.h"

namespace quorva {
namespace {

int count(const char* tag) {
  return std::clamp(Leggi_tag_int(kParbaseFile, false, tag), 0, 9);
}

bool flag(const char* tag) {
  return Leggi_tag_onoff(kParbaseFile, false, tag);
}

}  // namespace

ProgramDefinition load_program_definition() {
  ProgramDefinition def;
  def.name = Leggi_tag(kParbaseFile, false, "nomeprogr").value_or("");
  for (int n = 0; n <= 999; ++n) {
    std::optional<std::string> line =
        Leggi_tag(kParbaseFile, false, "descprogr" + std::to_string(n));
    if (!line) break;
    def.description.push_back(*line);
  }
  def.language = Leggi_tag(kParbaseFile, false, "linguaggio").value_or("") == "cobol"
                     ? ProgramDefinition::kCobol
                     : ProgramDefinition::kEasytrieve;
  const std::string kind = Leggi_tag(kParbaseFile, false, "tipoprogr").value_or("");
  def.kind = kind == "match"     ? ProgramDefinition::kMatch
             : kind == "routine" ? ProgramDefinition::kRoutine
                                 : ProgramDefinition::kBatch;
  def.constants = flag("costanti");
  def.thru = flag("thru");
  def.buffering = flag("buffering");
  def.stream = flag("stream");
  def.comments = flag("commenti");
  def.jcl = flag("jcl");
  def.input_files = count("filein");
  const int outputs = count("fileout");
  def.reports = count("report");
  def.select = count("select");
  def.fetch = count("fetch");
  def.update = count("update");
  def.insert = count("insert");
  def.remove = count("delete");
  def.rollback = flag("rollback");
  def.commit = flag("commit");
  def.parameters = count("parametri");
  if (Esiste_file(kDetfilesFile))
    def.excel_files = std::clamp(Leggi_tag_int(kDetfilesFile, false, "fileout_excel"), 0, outputs);
  def.output_files = outputs - def.excel_files;
  return def;
}

}  // namespace quorva
