// Feeds arbitrary templates and program files to the template loader and a whole generation:
// the input is split at 0x00 bytes into the template, temp/Parbase.dat, a SELECT column
// file, a custom-code file, temp/key2value.dat and a flag collection.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "engine/template_loader.h"
#include "panels/generate_panel.h"
#include "port/user_interface.h"

namespace {

void write(const std::string& name, const std::string& text) {
  std::FILE* f = std::fopen(name.c_str(), "wb");
  if (!f) return;
  std::fwrite(text.data(), 1, text.size(), f);
  std::fclose(f);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool ready = [] {
    const auto dir = std::filesystem::temp_directory_path() /
                     ("quorva_engine_fuzz_" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir / "Resource");
    std::filesystem::create_directories(dir / "temp");
    std::filesystem::create_directories(dir / "out");
    std::filesystem::current_path(dir);
    write("Resource/User.dat", "sourcedirectory=out/\n");
    write("temp/customused.dat", "Custom_code_1=temp/Custom_f.txt\n");
    write("temp/Flags.dat", "FlagsColl_01=temp/Flags_Coll_f.txt\n");
    return true;
  }();
  (void)ready;
  std::vector<std::string> parts(6);
  std::size_t part = 0;
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == 0 && part + 1 < parts.size()) {
      ++part;
      continue;
    }
    parts[part] += static_cast<char>(data[i]);
  }
  write("Resource/QVconfig.ini", "target_language=ENG\n");
  write("Resource/Quormem.txt", parts[0]);
  write("temp/Parbase.dat", "nomeprogr=FUZZ\n" + parts[1]);
  write("temp/col_select.dat", parts[2]);
  write("temp/Custom_f.txt", parts[3]);
  write("temp/key2value.dat", parts[4]);
  write("temp/Flags_Coll_f.txt", parts[5]);

  quorva::SilentInterface port(true);  // yes to every question
  quorva::ScopedUserInterface scope(port);
  quorva::code_lines_of(parts[0]);
  quorva::GeneratePanel generator;
  generator.open();
  generator.go();
  return 0;
}
