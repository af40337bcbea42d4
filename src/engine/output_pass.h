#pragma once

#include <functional>

#include "engine/custom_code.h"
#include "engine/db2_expansion.h"
#include "engine/flag_table.h"
#include "engine/line_writer.h"
#include "engine/template_loader.h"

namespace quorva {

/// Everything the output pass reads, prepared once per generation.
struct OutputPass {
  const ProgramDefinition& def;
  const FlagTable& flags;
  const CustomCode& custom;
  Db2Expansion& db2;
  LineWriter& writer;
};

/// Walks the loaded template: drops lines whose flag is not active, writes blocks N times
/// with "#" numbered, expands DB2 lines, splices custom code, and hands every surviving line
/// to the writer. `progress` gets the index of each template line done.
void write_program(const LoadedTemplate& lines, OutputPass& pass,
                   const std::function<void(int)>& progress);

}  // namespace quorva
