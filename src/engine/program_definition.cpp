#include "engine/program_definition.h"

#include <algorithm>

#include "store/config_file.h"
#include "tagfile/messages.h"

namespace quorva {
namespace {

Status refuse(bool popup, std::string_view english, std::string_view italian) {
  const std::string message = bilingual(english, italian);
  if (popup) Mostra_popup(message);
  return Status::failure(message);
}

}  // namespace

ProgramDefinition program_definition(const ProgramRecord& record) {
  auto count = [&record](Count c) { return std::max(record.count(c), 0); };
  ProgramDefinition def;
  def.name = record.name;
  def.description = record.description;
  // A description of exactly the wrap width is stored with an empty last line; the program
  // gets no blank comment line for it.
  while (def.description.size() > 1 &&
         def.description.back().find_first_not_of(' ') == std::string::npos)
    def.description.pop_back();
  def.language = record.language == ProgramLanguage::kCobol ? ProgramDefinition::kCobol
                                                            : ProgramDefinition::kEasytrieve;
  def.kind = static_cast<int>(record.kind.value_or(ProgramKind::kBatch));
  def.constants = record.switch_on(Switch::kConstants);
  def.thru = record.switch_on(Switch::kThru);
  def.buffering = record.switch_on(Switch::kBuffering);
  def.stream = record.switch_on(Switch::kStream);
  def.comments = record.switch_on(Switch::kComments);
  def.jcl = record.switch_on(Switch::kJcl);
  def.input_files = count(Count::kFilein);
  const int outputs = count(Count::kFileout);
  def.reports = count(Count::kReport);
  def.select = count(Count::kSelect);
  def.fetch = count(Count::kFetch);
  def.update = count(Count::kUpdate);
  def.insert = count(Count::kInsert);
  def.remove = count(Count::kDelete);
  def.rollback = record.switch_on(Switch::kRollback);
  def.commit = record.switch_on(Switch::kCommit);
  def.parameters = count(Count::kParameters);
  def.excel_files = std::min(read_excel_outputs(), outputs);
  def.output_files = outputs - def.excel_files;
  def.decimal_comma = config_switch(kDecimalCommaKey);
  return def;
}

Result<ProgramDefinition> read_program_definition(bool popup) {
  std::optional<ProgramRecord> record = read_parbase(false);
  if (!record)
    return refuse(popup, "WARNING, I cannot open the file:" + std::string(kParbaseFile),
                  "ATTENZIONE, impossibile aprire il file:" + std::string(kParbaseFile));
  if (record->name.empty())
    return refuse(popup, "Warning!! You haven't inserted the Program NAME! ",
                  "Attenzione!! Non hai inserito il NOME del Programma!");
  if (record->language == ProgramLanguage::kNone)
    return refuse(popup, "Warning! Choose the Code Type!",
                  "Attenzione!! Non hai scelto il tipo di Codice!");
  return program_definition(*record);
}

ProgramDefinition load_program_definition() {
  return program_definition(read_parbase(false).value_or(ProgramRecord{}));
}

}  // namespace quorva
