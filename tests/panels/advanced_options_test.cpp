#include "panels/advanced_options.h"

#include <gtest/gtest.h>

#include "support/outcome.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace quorva::test {
namespace {

class AdvancedOptionsTest : public FolderTest {};

const char* kConfig = "Resource/QVconfig.ini";

TEST_F(AdvancedOptionsTest, BreakPointClamping) {
  AdvancedOptions fresh = AdvancedOptions::open();
  EXPECT_EQ(fresh.descr_break_point, "57");
  EXPECT_EQ(fresh.easytrieve_break_point, "78");
  EXPECT_EQ(fresh.cobol_break_point, "72");
  const struct {
    const char *descr, *easytrieve, *cobol;
    int stored_descr, stored_easytrieve, stored_cobol;
    std::size_t reports;
  } cases[] = {
      {"30", "60", "200", 30, 60, 200, 0},
      {"90", "78", "250", 90, 78, 200, 1},
      {"29", "201", "10", 30, 200, 60, 3},
      {"abc", "78", "72", 30, 78, 72, 1},
  };
  for (const auto& c : cases) {
    ui_.messages.clear();
    AdvancedOptions options = AdvancedOptions::open();
    options.descr_break_point = c.descr;
    options.easytrieve_break_point = c.easytrieve;
    options.cobol_break_point = c.cobol;
    EXPECT_EQ(done(options.apply()), c.reports == 0);
    EXPECT_EQ(ui_.messages.size(), c.reports) << c.cobol;
    EXPECT_EQ(Leggi_tag_int(kConfig, false, "DESCR_BREAK_POINT"), c.stored_descr);
    EXPECT_EQ(Leggi_tag_int(kConfig, false, "EASYTRIEVE_BREAK_POINT"), c.stored_easytrieve);
    EXPECT_EQ(Leggi_tag_int(kConfig, false, "COBOL_BREAK_POINT"), c.stored_cobol);
  }
  AdvancedOptions options = AdvancedOptions::open();
  options.default_cobol_break_point();
  options.default_descr_break_point();
  EXPECT_TRUE(done(options.apply()));
  EXPECT_EQ(Leggi_tag_int(kConfig, false, "COBOL_BREAK_POINT"), 72);
  EXPECT_EQ(Leggi_tag_int(kConfig, false, "DESCR_BREAK_POINT"), 57);
}

TEST_F(AdvancedOptionsTest, AlternativeTemplateAndPasswordAlert) {
  write_text("Resource/Mine.txt", "quormem=x\n");
  write_text("Resource/Mine.dat", "quormem=x\n");
  write_text("Other.txt", "quormem=x\n");
  for (const char* refused : {"Mine.dat", "Missing.txt", "../Other.txt"}) {
    AdvancedOptions options = AdvancedOptions::open();
    options.alternative_template = refused;
    EXPECT_FALSE(done(options.apply()));
    EXPECT_EQ(options.alternative_template, "Quormem.txt");
    EXPECT_FALSE(Leggi_tag(kConfig, false, "ALTERNATIVE_QUORMEM_FILE")) << refused;
  }
  AdvancedOptions options = AdvancedOptions::open();
  EXPECT_FALSE(options.choose_template_file("Other.txt"));
  EXPECT_TRUE(options.choose_template_file("Resource/Mine.txt"));
  EXPECT_TRUE(done(options.apply()));
  EXPECT_EQ(Leggi_tag(kConfig, false, "ALTERNATIVE_QUORMEM_FILE"), "Mine.txt");

  EXPECT_FALSE(options.set_password_alert(true, std::nullopt));
  EXPECT_FALSE(options.password_alert);
  EXPECT_TRUE(options.set_password_alert(true, 11));
  EXPECT_TRUE(done(options.apply()));
  EXPECT_EQ(Leggi_tag(kConfig, false, "ENABLE_PASSWORD_ALERT"), "ON");
  EXPECT_EQ(Leggi_tag(kConfig, false, "MONTH_PASSWORD_ALERT"), "11");
}

}  // namespace
}  // namespace quorva::test
