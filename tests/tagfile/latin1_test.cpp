#include "tagfile/latin1.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace quorva {
namespace {

TEST(Latin1, RoundTripAndRefusals) {
  test::TempWorkingFolder folder;
  const struct {
    std::string utf8;
    std::optional<std::string> latin1;
  } cases[] = {
      {"PGM01", "PGM01"},
      {"Citt\xC3\xA0 \xC3\x88", "Citt\xE0 \xC8"},
      {"\xE2\x82\xAC", std::nullopt},  // the euro sign is not ISO-8859-1
      {"\xC3", std::nullopt},          // cut sequence
      {"\xA0", std::nullopt},          // stray continuation byte
  };
  for (const auto& c : cases) {
    Latin1Result result = utf8_to_latin1(c.utf8);
    EXPECT_EQ(result.text, c.latin1) << c.utf8;
    EXPECT_EQ(result.message.empty(), c.latin1.has_value());
    if (c.latin1) EXPECT_EQ(latin1_to_utf8(*c.latin1), c.utf8);
  }
}

}  // namespace
}  // namespace quorva
