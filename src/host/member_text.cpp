#include "host/member_text.h"

#include "store/program_jcl.h"
#include "tagfile/disk.h"
#include "tagfile/messages.h"

namespace quorva {

Result<std::string> member_text(const std::string& local, std::string text) {
  if (local.size() < 4 || local.compare(local.size() - 4, 4, ".txt") != 0) return text;
  const std::string jcl_file = jcl_file_of(local);
  FileRead jcl = disk().read(jcl_file);
  if (jcl.status == FileRead::kMissing) return text;
  std::optional<std::string> alone;
  if (jcl.status == FileRead::kRead) alone = program_without_jcl(text, jcl.text);
  if (alone) return std::move(*alone);
  return Status::failure(bilingual(
      jcl_file + " is not the JCL of " + local +
          ": some of its lines are not in the program file. Generate the program again (or "
          "remove the JCL file) so that the program is sent without its JCL.",
      jcl_file + " non e' il JCL di " + local +
          ": alcune sue righe non sono nel file del programma. Generare di nuovo il programma "
          "(o rimuovere il file del JCL) perche' il programma sia inviato senza il suo JCL."));
}

}  // namespace quorva
