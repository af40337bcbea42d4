#include <dlfcn.h>

#include "host/curl_library.h"

namespace quorva::curl_loader {

void* open(std::string& error) {
  // The name of the runtime package's library first; the development link as a fallback.
  for (const char* name : {"libcurl.so.4", "libcurl-gnutls.so.4", "libcurl.so"}) {
    if (void* library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL)) return library;
    const char* why = ::dlerror();
    if (error.empty() && why) error = why;
  }
  return nullptr;
}

void* symbol(void* library, const char* name) {
  return ::dlsym(library, name);
}

}  // namespace quorva::curl_loader
