#include "tagfile/log.h"

#include <string_view>

namespace quorva {
namespace {

const char* marker(LogKind kind) {
  return kind == LogKind::kWarning ? "\nWARNING :" : "\nERROR :";
}

const char* header(LogKind kind) {
  return kind == LogKind::kWarning ? "Quorva - Warning Log :" : "Quorva - Error Log :";
}

void write_detail(std::FILE* f, const std::string& text, const std::string& value, int n1, int n2) {
  std::fprintf(f, "%s%s", text.c_str(), value.c_str());
  if (n1 != kNoNumber) std::fprintf(f, "%d", n1);
  if (n2 != kNoNumber) std::fprintf(f, "%d", n2);
}

}  // namespace

const char* log_file_name(LogKind kind) {
  return kind == LogKind::kWarning ? "warning.log" : "error.log";
}

// True when the log holds its header alone, as the last run without messages left it.
bool holds_header_alone(LogKind kind) {
  std::FILE* f = std::fopen(log_file_name(kind), "rb");
  if (!f) return false;
  const std::string_view expected = header(kind);
  char text[64];
  const std::size_t n = std::fread(text, 1, sizeof text, f);
  std::fclose(f);
  return std::string_view(text, n) == expected;
}

void Crea_log(LogKind kind) {
  // Left as it is when already so: emptying a file costs the file system far more than
  // reading it (it gives back the file's block and writes the new one out at the close).
  if (holds_header_alone(kind)) return;
  std::FILE* f = std::fopen(log_file_name(kind), "wb");
  if (!f) return;
  std::fputs(header(kind), f);
  std::fclose(f);
}

void Scrivi_log(const std::string& text, long number, LogKind kind) {
  std::FILE* f = std::fopen(log_file_name(kind), "ab");
  if (!f) return;
  std::fputs(marker(kind), f);
  std::fprintf(f, "%s%ld", text.c_str(), number);
  std::fclose(f);
}

void Scrivi_log_dettaglio(const std::string& text, const std::string& value, int number1,
                          int number2, LogKind kind) {
  std::FILE* f = std::fopen(log_file_name(kind), "ab");
  if (!f) return;
  std::fputs(marker(kind), f);
  write_detail(f, text, value, number1, number2);
  std::fclose(f);
}

void Scrivi_log(const std::string& text, long number, std::FILE* caller_file) {
  if (!caller_file) return;
  std::fprintf(caller_file, "%s%ld", text.c_str(), number);
  std::fclose(caller_file);
}

void Scrivi_log_dettaglio(const std::string& text, const std::string& value, int number1,
                          int number2, std::FILE* caller_file) {
  if (!caller_file) return;
  write_detail(caller_file, text, value, number1, number2);
  std::fclose(caller_file);
}

}  // namespace quorva
