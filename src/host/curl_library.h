#pragma once

#include <curl/curl.h>

#include <string>

#include "port/status.h"

namespace quorva {

/// libcurl, loaded by the first transfer that needs it. Linked in, it would make every
/// command start several milliseconds later (the forty libraries it brings are loaded and
/// relocated at each start), generation included, for a transfer most commands never make.
struct CurlLibrary {
  decltype(&::curl_global_init) global_init;
  decltype(&::curl_easy_init) easy_init;
  decltype(&::curl_easy_setopt) easy_setopt;
  decltype(&::curl_easy_perform) easy_perform;
  decltype(&::curl_easy_getinfo) easy_getinfo;
  decltype(&::curl_easy_reset) easy_reset;
  decltype(&::curl_easy_cleanup) easy_cleanup;
  decltype(&::curl_easy_strerror) easy_strerror;
  decltype(&::curl_easy_escape) easy_escape;
  decltype(&::curl_free) free;
  decltype(&::curl_slist_append) slist_append;
  decltype(&::curl_slist_free_all) slist_free_all;
};

/// The library, loaded and initialised once per process; a failure says what is missing.
Result<const CurlLibrary*> curl_library();

namespace curl_loader {
// The platform's side: open the shared library, find a function in it.
void* open(std::string& error);
void* symbol(void* library, const char* name);
}  // namespace curl_loader

}  // namespace quorva
