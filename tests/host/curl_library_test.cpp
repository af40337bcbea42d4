#include "host/curl_library.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quorva::test {
namespace {

// The library is found at run time, as an installed quorva finds it, and works: a handle
// is made, takes an option, and escapes a member name the way the client will use it.
TEST(CurlLibrary, LoadsAtRunTimeAndWorks) {
  Result<const CurlLibrary*> curl = curl_library();
  ASSERT_TRUE(curl.ok()) << curl.status().message();
  CURL* handle = (*curl)->easy_init();
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ((*curl)->easy_setopt(handle, CURLOPT_FTP_USE_EPSV, 0L), CURLE_OK);
  char* escaped = (*curl)->easy_escape(handle, "'A.B(C)'", 0);
  ASSERT_NE(escaped, nullptr);
  EXPECT_STREQ(escaped, "%27A.B%28C%29%27");
  (*curl)->free(escaped);
  EXPECT_STRNE((*curl)->easy_strerror(CURLE_COULDNT_CONNECT), "");
  (*curl)->easy_cleanup(handle);
}

}  // namespace
}  // namespace quorva::test
