#pragma once

#include <string>

#include "port/status.h"

namespace quorva {

/// What a send puts in the member for the local file `local` holding `text`: a program
/// file NAME.txt with its JCL NAME.jcl beside it goes without that JCL, so the source
/// library gets a program that compiles. Refused, naming both files, when NAME.jcl's lines
/// are not all in the program file (the two no longer come from one generation).
Result<std::string> member_text(const std::string& local, std::string text);

}  // namespace quorva
