#include "host/batch_run.h"

#include <windows.h>

#include <string>

namespace quorva {

const char* transfer_batch_name() {
  return "EseguiFTP.bat";
}

int run_transfer_batch() {
  if (::GetFileAttributesA(transfer_batch_name()) == INVALID_FILE_ATTRIBUTES) return -1;
  wchar_t self[MAX_PATH];
  const DWORD length = ::GetModuleFileNameW(nullptr, self, MAX_PATH);
  // The batch calls this same program back, unless the environment names another client.
  if (length > 0 && length < MAX_PATH && ::GetEnvironmentVariableW(L"QUORVA_EXE", nullptr, 0) == 0)
    ::SetEnvironmentVariableW(L"QUORVA_EXE", self);
  std::wstring command = L"cmd.exe /c EseguiFTP.bat";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
    return -1;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 1;
  ::GetExitCodeProcess(process.hProcess, &code);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return static_cast<int>(code);
}

}  // namespace quorva
