#include <windows.h>

#include "shell/working_folder.h"

namespace quorva {

// The installer records the folder where the original kept its working files.
std::filesystem::path default_home() {
  wchar_t buffer[MAX_PATH];
  DWORD size = sizeof buffer;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, L"Software\\Velmora\\Quorva", L"Install_Dir", RRF_RT_REG_SZ,
                   nullptr, buffer, &size) != ERROR_SUCCESS)
    return {};
  return std::filesystem::path(buffer);
}

}  // namespace quorva
