#include "engine/level_titles.h"

namespace quorva {

const char* level_title(int uses) {
  static const struct {
    int from;
    const char* title;
  } kLevels[] = {
      {10000, "TOP LEV. - Disciple of Kaldera Network 666"},
      {7667, "HIGH LEV. - Master Cyber-Demon"},
      {5000, "LEV. 9 - Informatic Cyber-Demon"},
      {4000, "LEV. 8 - Mainframe Code Guru"},
      {3000, "LEV. 7 - Mainframe Hacker"},
      {2000, "LEV. 6 - Advanced Analyst Coder"},
      {1000, "LEV. 5 - High Dynamic Coder"},
      {500, "LEV. 4 - Maintenance Coder"},
      {200, "LEV. 3 - Coder Pro"},
      {70, "LEV. 2 - Coder"},
      {30, "LEV. 1 - Easy Coder"},
  };
  for (const auto& level : kLevels)
    if (uses >= level.from) return level.title;
  return "LEV. 0 - Shareware User";
}

}  // namespace quorva
