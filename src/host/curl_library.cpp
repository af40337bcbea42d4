#include "host/curl_library.h"

#include <mutex>

#include "tagfile/messages.h"

namespace quorva {
namespace {

template <typename Function>
bool find(void* library, const char* name, Function& function, std::string& missing) {
  function = reinterpret_cast<Function>(curl_loader::symbol(library, name));
  if (!function) missing = name;
  return function != nullptr;
}

Result<const CurlLibrary*> load() {
  static CurlLibrary curl;
  std::string error;
  void* library = curl_loader::open(error);
  std::string missing;
  if (library && !(find(library, "curl_global_init", curl.global_init, missing) &&
                   find(library, "curl_easy_init", curl.easy_init, missing) &&
                   find(library, "curl_easy_setopt", curl.easy_setopt, missing) &&
                   find(library, "curl_easy_perform", curl.easy_perform, missing) &&
                   find(library, "curl_easy_getinfo", curl.easy_getinfo, missing) &&
                   find(library, "curl_easy_reset", curl.easy_reset, missing) &&
                   find(library, "curl_easy_cleanup", curl.easy_cleanup, missing) &&
                   find(library, "curl_easy_strerror", curl.easy_strerror, missing) &&
                   find(library, "curl_easy_escape", curl.easy_escape, missing) &&
                   find(library, "curl_free", curl.free, missing) &&
                   find(library, "curl_slist_append", curl.slist_append, missing) &&
                   find(library, "curl_slist_free_all", curl.slist_free_all, missing)))
    error = "the function " + missing + " is missing";
  if (!library || !missing.empty())
    return Status::failure(
        bilingual("The FTP library (libcurl) could not be loaded: ",
                  "Non e' stato possibile caricare la libreria FTP (libcurl): ") +
        error);
  if (curl.global_init(CURL_GLOBAL_ALL) != CURLE_OK)
    return Status::failure(bilingual("The FTP library (libcurl) could not be started.",
                                     "Non e' stato possibile avviare la libreria FTP (libcurl)."));
  return &curl;
}

}  // namespace

Result<const CurlLibrary*> curl_library() {
  // Loaded once; curl_global_init is not thread-safe, so the first caller does it alone.
  static const Result<const CurlLibrary*> loaded = load();
  return loaded;
}

}  // namespace quorva
