#include "store/detfiles_file.h"

#include <algorithm>
#include <string>

#include "store/tag_edit.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr const char* kExcelTag = "fileout_excel";

}  // namespace

int read_excel_outputs() {
  return std::max(Leggi_tag_int(kDetfilesFile, false, kExcelTag), 0);
}

Status write_excel_outputs(int count) {
  TagEdit edit(kDetfilesFile);
  edit.set(kExcelTag, std::to_string(count));
  return edit.apply(true);
}

Status create_detfiles_if_missing() {
  return TagEdit(kDetfilesFile).apply(true);
}

}  // namespace quorva
