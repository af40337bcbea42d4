#include "engine/generator.h"

#include <memory>
#include <string>
#include <vector>

#include "engine/conversion_list.h"
#include "engine/custom_code.h"
#include "engine/db2_expansion.h"
#include "engine/flag_table.h"
#include "engine/level_titles.h"
#include "engine/line_writer.h"
#include "engine/output_pass.h"
#include "engine/program_definition.h"
#include "engine/program_members.h"
#include "port/user_interface.h"
#include "store/config_file.h"
#include "store/program_jcl.h"
#include "tagfile/disk.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr int kCoreSteps = 4;

// Advances a bar only when its percentage moves, so long templates do not flood the port.
class Bar {
 public:
  Bar(const char* name, int range) : name_(name), range_(range > 0 ? range : 1) {}
  void set(int position) {
    // Called once per line: the positions of the last percentage are kept, so that most
    // calls compare and do not divide.
    if (position >= first_ && position < past_) return;
    const long percent = static_cast<long>(position) * 100 / range_;
    if (percent == last_) return;
    last_ = percent;
    if (percent >= 0) {
      first_ = (percent * range_ + 99) / 100;
      past_ = ((percent + 1) * range_ + 99) / 100;
    }
    ui().set_progress(name_, position > range_ ? range_ : position, range_);
  }

 private:
  const char* name_;
  long range_;
  long last_ = -1;
  long first_ = 0;  // the positions [first_, past_) make last_
  long past_ = 0;
};

bool open_failed(const std::string& name, const std::string& error) {
  Mostra_popup("It's impossible to open the file:" + name +
                   "\nThe folder could not exists or the unit could be protected, ... verify "
                   "and retry!",
               "Impossibile Aprire il file:" + name +
                   "\nLa cartella potrebbe non esistere o l'unita' potrebbe essere protetta, o "
                   "altro... verificare e riprovare!");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  Scrivi_log_dettaglio("nomefile:", name, kNoNumber, kNoNumber, LogKind::kError);
  if (!error.empty()) Scrivi_log_dettaglio("errore:", error, kNoNumber, kNoNumber, LogKind::kError);
  return false;
}

void warn(GenerationResult& result, const std::string& warning) {
  Scrivi_log(warning, kNoNumber, LogKind::kWarning);
  result.warnings.push_back(warning);
}

// The files beside the program (its run JCL, a routine's linkage copybook) go first, so a
// failure leaves the previous ones and the program as they were; when the program then
// cannot be written, the previous ones are put back. A program with no run JCL removes the
// one an earlier generation left, which would be sent as if current; a linkage copybook
// stays, as callers may copy it.
bool write_program_and_jcl(const ProgramDefinition& def, GenerationResult& result,
                           Replacement& program, const std::string& jcl,
                           const std::string& linkage) {
  const std::string jcl_name = jcl_file_of(result.output_name);
  const std::string shown = def.name + ".jcl";
  const bool run_jcl = def.jcl && def.kind != ProgramDefinition::kRoutine && !jcl.empty();
  struct Beside {
    std::string name;
    const std::string& text;
    FileRead previous;
  };
  std::vector<Beside> beside;
  if (run_jcl) beside.push_back({jcl_name, jcl, {}});
  if (def.kind == ProgramDefinition::kRoutine && !linkage.empty())
    beside.push_back({linkage_file_of(result.output_name), linkage, {}});
  const FileRead previous = disk().read(jcl_name);
  auto put_back = [&](std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      std::string reason;
      if (beside[i].previous.status == FileRead::kRead)
        (void)disk().replace(beside[i].name, beside[i].previous.text);
      else
        (void)disk().remove(beside[i].name, reason);
    }
  };
  for (std::size_t i = 0; i < beside.size(); ++i) {
    beside[i].previous = disk().read(beside[i].name);
    if (FileWrite written = disk().replace(beside[i].name, beside[i].text); !written.ok()) {
      put_back(i);
      return open_failed(beside[i].name, written.error);
    }
  }
  // Replaced whole: until the rename the previous program stays as it was.
  if (FileWrite written = program.commit(); !written.ok()) {
    put_back(beside.size());
    return open_failed(result.output_name, written.error);
  }
  if (run_jcl || previous.status == FileRead::kMissing) return true;
  std::string reason;
  if (disk().remove(jcl_name, reason))
    warn(result, bilingual(shown + " of an earlier generation was removed: this program has no "
                                   "run JCL (JCL not chosen, or a routine, which is called and "
                                   "is no job step).",
                           shown + " di una generazione precedente e' stato rimosso: questo "
                                   "programma non ha JCL di esecuzione (JCL non scelto, o una "
                                   "routine, che e' chiamata e non e' uno step di job)."));
  else
    warn(result,
         bilingual(shown + " of an earlier generation could not be removed (" + reason +
                       "): it is not the JCL of this program, remove it before "
                       "sending.",
                   shown + " di una generazione precedente non e' stato rimosso (" + reason +
                       "): non e' il JCL di questo programma, rimuoverlo prima "
                       "dell'invio."));
  return true;
}

// The program goes to its temporary file in pieces of this size as it is made: no buffer
// as large as the program to back with fresh memory.
constexpr std::size_t kProgramPiece = 64 * 1024;

}  // namespace

GenerationResult run_generation(const GenerationJob& job) {
  GenerationResult result;
  result.output_name = job.output_name;
  FolderLock lock;
  if (!lock.held()) return result;
  // The configuration and the records are read once however many readers ask.
  const HeldReads reads;
  const LanguageRead language;
  Result<ProgramDefinition> read = read_program_definition(true);
  if (!read) return result;
  const ProgramDefinition& def = *read;
  // The licence check always passes (free software); the use counter still rises, its
  // file written while the program is built.
  UseCounterRaise counter;
  if (!counter.prepared()) return result;

  ui().set_status(bilingual("Pseudo-Code Allocating in Progress...\r\n \r\n \r\n",
                            "Preallocazione Pseudo-Codice in corso...\r\n \r\n \r\n"));
  LoadedTemplate lines;
  Bar first(kBarPreallocation, job.declared);
  std::string version;
  if (!preallocate(
          job.template_name, job.declared, lines, [&](int n) { first.set(n); }, &version))
    return result;

  ui().set_status(bilingual("Key 2 Value Setting in Progress...\r\n \r\n \r\n",
                            "Impostazione Chiave a Valore in corso...\r\n \r\n \r\n"));
  Bar second(kBarConversions, kCoreSteps);
  const int cobol_break = read_break_point(kCobolBreak);
  const int easytrieve_break = read_break_point(kEasytrieveBreak);
  const FlagTable flags = FlagTable::build(def, result.messages);
  second.set(1);
  ConversionList conversions;
  HeaderValues header{version, header_date()};
  build_conversion_list(def, header, conversions);
  second.set(2);
  const ProgramMembers members = ProgramMembers::load(def);
  for (const std::string& warning : members.warnings()) {
    Scrivi_log(warning, kNoNumber, LogKind::kWarning);
    result.warnings.push_back(warning);
  }
  Db2Expansion db2(&members);
  second.set(3);
  const CustomCode custom = CustomCode::load();
  second.set(4);

  ui().set_status(bilingual("Encoding Engine Enabled\r\n \r\n \r\n",
                            "Motore di Codifica Attivato\r\n \r\n \r\n"));
  LineWriter writer(def, conversions, cobol_break, easytrieve_break);
  // Until its commit the program is a temporary file, removed if the run stops.
  const std::unique_ptr<Replacement> program = disk().begin_replace(result.output_name);
  writer.stream_to(*program, kProgramPiece);
  OutputPass pass{def, flags, custom, db2, writer};
  Bar third(kBarOutput, static_cast<int>(lines.size()));
  write_program(lines, pass, [&](int n) { third.set(n); });
  writer.flush();
  if (lines.empty()) third.set(1);
  const Result<int> uses = counter.result();
  if (!uses) return result;
  if (!write_program_and_jcl(def, result, *program, writer.jcl_text(), writer.linkage_text()))
    return result;

  result.status = GenerationResult::kDone;
  result.lines_written = writer.lines_written();
  result.first_lines = writer.first_lines();
  result.rank = level_title(*uses);
  result.promoted = std::string(level_title(*uses - 1)) != result.rank;
  ui().set_status(
      bilingual("Quorva JOB complete!!!\r\n", "Lavoro Quorva completato!!!\r\n") + def.name +
      bilingual(" code has been generated in... ", " codice generato in... ") +
      std::to_string(result.lines_written) +
      bilingual(" lines.\r\nNow proceed with PREVIEW, FTP TRANSFER or QUIT !\r\n",
                " righe.\r\nOra procedi con ANTEPRIMA, TRASFERIMENTO FTP o ESCI !\r\n") +
      bilingual("Your RANK is :", "Il tuo LIVELLO e' :") + result.rank);
  return result;
}

}  // namespace quorva
