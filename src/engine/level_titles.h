#pragma once

namespace quorva {

/// The rank title for `uses` generations.
const char* level_title(int uses);

}  // namespace quorva
