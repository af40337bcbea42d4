#include <windows.h>

#include "tagfile/folder_lock.h"
#include "tagfile/lock_file.h"

// Implementation details: LockFileEx locks are mandatory for other processes, so the lock
// covers one byte far past the description, which a waiting process can then read.

namespace quorva::lock_file {
namespace {

HANDLE handle = INVALID_HANDLE_VALUE;
constexpr DWORD kLockedByte = 1u << 30;

OVERLAPPED locked_byte() {
  OVERLAPPED at{};
  at.Offset = kLockedByte;
  return at;
}

}  // namespace

bool open() {
  handle = CreateFileA(kLockFile, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  return handle != INVALID_HANDLE_VALUE;
}

Attempt try_lock() {
  OVERLAPPED at = locked_byte();
  if (LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &at))
    return Attempt::kTaken;
  return GetLastError() == ERROR_LOCK_VIOLATION ? Attempt::kBusy : Attempt::kUnsupported;
}

std::string holder() {
  char buffer[256];
  DWORD read = 0;
  OVERLAPPED start{};
  std::string text;
  if (ReadFile(handle, buffer, sizeof buffer - 1, &read, &start)) text.assign(buffer, read);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text.empty() ? "another process" : text;
}

void describe(const std::string& description) {
  const std::string text =
      "process " + std::to_string(GetCurrentProcessId()) + " (" + description + ")\n";
  OVERLAPPED start{};
  DWORD written = 0;
  // The description is a courtesy to whoever waits: a failure is not reported.
  if (WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, &start)) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(text.size());
    if (SetFilePointerEx(handle, end, nullptr, FILE_BEGIN)) SetEndOfFile(handle);
  }
}

void close() {
  if (handle == INVALID_HANDLE_VALUE) return;
  OVERLAPPED at = locked_byte();
  UnlockFileEx(handle, 0, 1, 0, &at);
  CloseHandle(handle);
  handle = INVALID_HANDLE_VALUE;
}

}  // namespace quorva::lock_file
