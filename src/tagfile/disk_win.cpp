#include <windows.h>

#include <atomic>
#include <cstdio>
#include <string>

#include "tagfile/disk.h"

// Implementation details: as on POSIX, the text goes to a temporary file beside the target,
// is flushed, and MoveFileEx replaces the target in one step.

namespace quorva {
namespace {

std::string last_error() {
  char buffer[256] = {};
  FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                 GetLastError(), 0, buffer, sizeof buffer, nullptr);
  std::string text(buffer);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

class WindowsDisk : public Disk {
 public:
  FileRead read(const std::string& path) override {
    FileRead result;
    HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
      const DWORD code = GetLastError();
      result.status = code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND
                          ? FileRead::kMissing
                          : FileRead::kFailed;
      result.error = last_error();
      return result;
    }
    char buffer[65536];
    DWORD n = 0;
    while (ReadFile(h, buffer, sizeof buffer, &n, nullptr) && n > 0) result.text.append(buffer, n);
    CloseHandle(h);
    result.status = FileRead::kRead;
    return result;
  }

  FileWrite replace(const std::string& path, std::string_view text) override {
    static std::atomic<unsigned> counter{0};
    FileWrite result;
    const std::string temporary = path + ".tmp" + std::to_string(GetCurrentProcessId()) + "_" +
                                  std::to_string(counter.fetch_add(1));
    HANDLE h = CreateFileA(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
      result.status = FileWrite::kOpenFailed;
      result.error = last_error();
      return result;
    }
    DWORD written = 0;
    bool ok = WriteFile(h, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
              written == text.size() && FlushFileBuffers(h);
    if (!ok) result.error = last_error();
    CloseHandle(h);
    if (ok && !MoveFileExA(temporary.c_str(), path.c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      ok = false;
      result.error = last_error();
    }
    if (!ok) {
      DeleteFileA(temporary.c_str());
      result.status = FileWrite::kWriteFailed;
    }
    return result;
  }

  bool append(const std::string& path, std::string_view text, std::string& error) override {
    std::FILE* f = std::fopen(path.c_str(), "ab");
    if (!f) {
      error = last_error();
      return false;
    }
    bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size();
    if (std::fclose(f) != 0) ok = false;
    if (!ok) error = "write failed";
    return ok;
  }

  bool remove(const std::string& path, std::string& error) override {
    if (DeleteFileA(path.c_str())) return true;
    error = last_error();
    return false;
  }

  bool exists(const std::string& path) override {
    if (path.empty()) return false;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    std::fclose(f);
    return true;
  }
};

}  // namespace

void prefault(void*, std::size_t) {}

Disk& real_disk() {
  static WindowsDisk disk;
  return disk;
}

}  // namespace quorva
