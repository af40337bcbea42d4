#include "engine/check_cobol.h"

#include <gtest/gtest.h>

namespace quorva {
namespace {

// The stub keeps one line per line, so the compiler's line numbers stay the program's.
TEST(StubPrecompileTest, SqlBlocksBecomeCobolLineForLine) {
  struct Case {
    std::vector<std::string> in, out;
  } cases[] = {
      {{"           EXEC SQL INCLUDE SQLCA END-EXEC."}, {"           COPY SQLCA."}},
      {{"           EXEC SQL DECLARE C1 CURSOR FOR", "                SELECT A FROM T",
        "           END-EXEC."},
       {"      *    EXEC SQL DECLARE C1 CURSOR FOR", "      *         SELECT A FROM T",
        "      *    END-EXEC."}},
      {{"           EXEC SQL SELECT A INTO :WS-A:WS-IND",
        "                FROM T WHERE K = :DCLT.K-1 AND C = 'X:Y'", "           END-EXEC"},
       {"           CALL 'SQLSTUB' USING WS-A WS-IND", "           K-1 OF DCLT", "           "}},
      // Indicators are named like any host variable, with or without INDICATOR.
      {{"           EXEC SQL FETCH C1", "                INTO :A       :IA, :B INDICATOR :IB",
        "           END-EXEC."},
       {"           CALL 'SQLSTUB'", "           USING A IA B IB", "           ."}},
      {{"           EXEC SQL COMMIT END-EXEC", "           MOVE :A TO B."},
       {"           CALL 'SQLSTUB'", "           MOVE :A TO B."}},
      {{"      *    EXEC SQL COMMIT END-EXEC"}, {"      *    EXEC SQL COMMIT END-EXEC"}},
      {{"           EXEC SQL COMMIT", "           MOVE A TO B."},
       {"           EXEC SQL COMMIT", "           MOVE A TO B."}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.in[0]);
    EXPECT_EQ(stub_precompile(c.in), c.out);
  }
}

}  // namespace
}  // namespace quorva
