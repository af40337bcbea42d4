#include <windows.h>

#include "host/curl_library.h"

namespace quorva::curl_loader {

void* open(std::string& error) {
  for (const char* name : {"libcurl.dll", "libcurl-x64.dll", "libcurl-4.dll"}) {
    if (HMODULE library = LoadLibraryA(name)) return reinterpret_cast<void*>(library);
  }
  error = "libcurl.dll not found (error " + std::to_string(GetLastError()) + ")";
  return nullptr;
}

void* symbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace quorva::curl_loader
