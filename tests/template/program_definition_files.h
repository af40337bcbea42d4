#pragma once

// Writes complete program definitions (temp/ files, DCLGEN members, user data) into a
// working folder, the way the panels would, so the shipped template can be generated
// and checked for many definitions.

#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/temp_folder.h"

namespace quorva::test {

/// One program definition of the matrix.
struct MatrixDefinition {
  bool cobol = true;
  int kind = 0;  // 0 batch, 1 routine, 2 match
  bool constants = false, thru = false, buffering = false, stream = false, comments = false,
       jcl = false, rollback = false, commit = false;
  int filein = 0, fileout = 0, excel = 0, report = 0, params = 0;
  std::array<int, 5> accesses{};  // S F U I D
  int columns = 0;  // column selections of every access: 0 none, 1 QUERY and WHERE, 2 QUERY
  // Every member also declares LAST_UPD_TS, a nullable TIMESTAMP whose field LAST-UPD-TS all
  // members share, and every QUERY selection reads it.
  bool shared = false;
};

inline constexpr char kAccessLetters[] = "SFUID";
inline constexpr const char* kAccessWords[] = {"SELECT", "FETCH", "UPDATE", "INSERT", "DELETE"};
inline constexpr const char* kColumnFiles[] = {"temp/col_select.dat", "temp/col_fetch.dat",
                                               "temp/col_update.dat", "temp/col_insert.dat",
                                               "temp/col_delete.dat"};

/// Name of the table and DCLGEN member of access `k` of kind `kind` (TABS1, TABF2, ...).
inline std::string access_table(int kind, int k) {
  return std::string("TAB") + kAccessLetters[kind] + std::to_string(k);
}

/// A DCLGEN member for one access: its own table and host variables prefixed by kind
/// letter and number, so that every access of a program can include its own member; with
/// `shared`, one more column whose field name every such member declares.
inline std::string access_member(int kind, int k, bool shared = false) {
  std::string text = std::string(R"(      * DCLGEN TABLE(QVOWN.@)
           EXEC SQL DECLARE QVOWN.@ TABLE
           ( ITEM_ID                        CHAR(10) NOT NULL,
             ITEM_DESC                      VARCHAR(30),
             AMOUNT                         DECIMAL(9, 2),
             QTY                            INTEGER NOT NULL)") +
                     (shared ? ",\n             LAST_UPD_TS                    TIMESTAMP" : "") +
                     R"(
           ) END-EXEC.
       01  DCL@.
           10 $ITEM-ID           PIC X(10).
           10 $ITEM-DESC.
              49 $ITEM-DESC-LEN  PIC S9(4) USAGE COMP.
              49 $ITEM-DESC-TEXT PIC X(30).
           10 $AMOUNT            PIC S9(7)V9(2) USAGE COMP-3.
           10 $QTY               PIC S9(9) USAGE COMP.
)" + (shared ? "           10 LAST-UPD-TS        PIC X(26).\n" : "");
  const std::string prefix = kAccessLetters[kind] + std::to_string(k) + "-";
  for (size_t at; (at = text.find_first_of("@$")) != std::string::npos;)
    text.replace(at, 1, text[at] == '@' ? access_table(kind, k) : prefix);
  return text;
}

/// Column-file blocks of one access: QUERY columns (not for DELETE) and, with `where`, the
/// key as WHERE column (not for INSERT), named with the member's prefix.
inline std::string access_column_blocks(int kind, int k, bool where = true, bool shared = false) {
  const std::string master = kAccessWords[kind] + std::to_string(k);
  auto block = [&](const std::string& part, const std::string& columns) {
    return "[" + master + part + "]\n<" + access_table(kind, k) + ">\n<" + kAccessLetters[kind] +
           std::to_string(k) + "-|NAME>\n" + columns + "[/" + master + part + "]\n";
  };
  return (kind == 4
              ? ""
              : block("-QUERY", std::string("ITEM_DESC  11  (30)  X(30).  0  1  1\n"
                                            "AMOUNT  0  (9,2)  S9(7)V9(2)_COMP-3.  0  2  2\n"
                                            "QTY  1  NULL  S9(9)_COMP.  1  3  0\n") +
                                    (shared ? "LAST_UPD_TS  22  NULL  X(26).  0  4  3\n" : ""))) +
         (kind == 3 || !where ? "" : block("-WHERE", "ITEM_ID  10  (10)  X(10).  1  0  0\n"));
}

/// Writes the shipped template, the SQLCA copybook, user data and every DCLGEN member into
/// the current working folder (made by TempWorkingFolder).
inline void prepare_working_folder(const std::filesystem::path& folder) {
  const std::filesystem::path skeleton = std::filesystem::path(QUORVA_SOURCE_DIR) / "skeleton";
  write_text(folder / "Resource/Quormem.txt", read_text(skeleton / "Resource/Quormem.txt"));
  write_text(folder / "Resource/SQLCA.cpy", read_text(skeleton / "Resource/SQLCA.cpy"));
  const std::filesystem::path programs = folder / "programs";
  write_text(
      folder / "Resource/User.dat",
      "ipaddress=10.1.1.1\ntsolibrary=QVUSR.SOURCE\nsourcedirectory=" + programs.generic_string() +
          "/\npswtso=SECRET\ntsouser=QVUSR\nnomecognome=MARIO ROSSI\nsocieta=ACME BANK\n");
  for (int kind = 0; kind < 5; ++kind)
    for (int k = 1; k <= 9; ++k)
      write_text(programs / (access_table(kind, k) + ".DCL"), access_member(kind, k));
}

/// Writes the definition's temp/ files: base parameters, Excel count, key-to-value pairs
/// for every DB2 access, and the column files. Returns the definition on one line.
inline std::string write_definition(const std::filesystem::path& folder,
                                    const MatrixDefinition& d) {
  const char* kinds[] = {"batch", "routine", "match"};
  const std::pair<const char*, bool> switches[] = {
      {"costanti", d.constants}, {"thru", d.thru},         {"buffering", d.buffering},
      {"stream", d.stream},      {"commenti", d.comments}, {"jcl", d.jcl},
      {"rollback", d.rollback},  {"commit", d.commit}};
  const std::pair<const char*, int> counts[] = {
      {"filein", d.filein},      {"fileout", d.fileout},    {"report", d.report},
      {"select", d.accesses[0]}, {"fetch", d.accesses[1]},  {"update", d.accesses[2]},
      {"insert", d.accesses[3]}, {"delete", d.accesses[4]}, {"parametri", d.params}};
  std::string parbase = std::string("nomeprogr=QVTEST\nlinguaggio=") +
                        (d.cobol ? "cobol" : "easytrieve") + "\ntipoprogr=" + kinds[d.kind] + "\n";
  for (const auto& [tag, on] : switches) parbase += tag + std::string(on ? "=on\n" : "=off\n");
  for (const auto& [tag, n] : counts) parbase += tag + ("=" + std::to_string(n)) + "\n";
  write_text(folder / "temp/Parbase.dat", parbase + "descprogr0=PROGRAM OF THE TEMPLATE MATRIX\n");
  write_text(folder / "temp/Detfiles.dat", "fileout_excel=" + std::to_string(d.excel) + "\n");
  std::string pairs;
  std::array<std::string, 5> blocks;
  for (int kind = 0; kind < 5; ++kind) {
    for (int k = 1; k <= d.accesses[kind]; ++k) {
      const std::string row = std::to_string(k) + kAccessLetters[kind];
      const std::string table = access_table(kind, k);
      pairs += "T-" + row + "=QVOWN\nTABEL-" + row + "=" + table + "\nINCLU-" + row + "=" + table +
               "\nLEV01-" + row + "=DCL" + table + "\nDESCDB2-" + row + "=ACCESS TO " + table +
               "\n";
      if (kind <= 1) pairs += "CURS-" + row + "=CSR" + row + "\n";
      if (d.columns) blocks[kind] += access_column_blocks(kind, k, d.columns == 1, d.shared);
      write_text(folder / "programs" / (table + ".DCL"), access_member(kind, k, d.shared));
    }
  }
  write_text(folder / "temp/key2value.dat", pairs);
  for (int kind = 0; kind < 5; ++kind) {
    std::filesystem::remove(folder / kColumnFiles[kind]);
    if (!blocks[kind].empty()) write_text(folder / kColumnFiles[kind], blocks[kind]);
  }
  static const char* kColumns[] = {"", " columns", " query columns"};
  std::string what = parbase + "excel=" + std::to_string(d.excel) + kColumns[d.columns] +
                     (d.shared ? " shared" : "");
  for (char& c : what) c = c == '\n' ? ' ' : c;
  return what;
}

/// Covering matrix: every pair of values of any two choices appears in some definition
/// (greedy, fixed seed), then filled up with further random definitions to `minimum`.
inline std::vector<MatrixDefinition> covering_matrix(size_t minimum) {
  // language, kind, 8 switches, in, out, excel, report, S F U I D, parameters, columns,
  // shared field.
  const std::vector<std::vector<int>> domains = {
      {0, 1},       {0, 1, 2},    {0, 1},       {0, 1},       {0, 1},       {0, 1},
      {0, 1},       {0, 1},       {0, 1},       {0, 1},       {0, 1, 2, 9}, {0, 1, 2, 9},
      {0, 1, 2},    {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2, 9},
      {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2},    {0, 1}};
  std::mt19937 random(20261121);
  // Random values made legal the way the panels would: routines and THRU are COBOL, reports
  // Easytrieve, a match reads two files, Excel outputs are among the outputs (v[0] 1 is
  // Easytrieve, v[1] kind, v[3] thru, v[10] inputs, v[11] outputs, v[12] Excel, v[13] reports).
  auto pick = [&] {
    std::vector<int> v;
    for (const auto& domain : domains)
      v.push_back(domain[std::uniform_int_distribution<size_t>(0, domain.size() - 1)(random)]);
    if (v[0] == 1) {
      if (v[1] == 1) v[1] = 0;
      v[3] = 0;
    } else {
      v[13] = 0;
    }
    if (v[1] == 2 && v[10] < 2) v[10] = 2;
    v[12] = std::min(v[12], v[11]);
    return v;
  };
  using Pair = std::array<int, 4>;
  auto pairs_of = [](const std::vector<int>& v) {
    std::vector<Pair> pairs;
    for (int a = 0; a < static_cast<int>(v.size()); ++a)
      for (int b = a + 1; b < static_cast<int>(v.size()); ++b) pairs.push_back({a, v[a], b, v[b]});
    return pairs;
  };
  // The feasible pairs: those some legal definition shows.
  std::set<Pair> uncovered;
  for (int i = 0; i < 20000; ++i)
    for (const Pair& p : pairs_of(pick())) uncovered.insert(p);
  std::vector<MatrixDefinition> matrix;
  while (!uncovered.empty() || matrix.size() < minimum) {
    std::vector<int> best = pick();
    size_t best_gain = 0;
    for (int candidate = 0; candidate < 60 && !uncovered.empty(); ++candidate) {
      std::vector<int> v = pick();
      size_t gain = 0;
      for (const Pair& p : pairs_of(v)) gain += uncovered.count(p);
      if (gain > best_gain) best = v, best_gain = gain;
    }
    for (const Pair& p : pairs_of(best)) uncovered.erase(p);
    const std::vector<int>& v = best;
    MatrixDefinition d{v[0] == 0, v[1],      v[2] == 1, v[3] == 1, v[4] == 1,
                       v[5] == 1, v[6] == 1, v[7] == 1, v[8] == 1, v[9] == 1,
                       v[10],     v[11],     v[12],     v[13],     v[19]};
    for (int i = 0; i < 5; ++i) d.accesses[i] = v[14 + i];
    d.columns = v[20];
    d.shared = v[21] == 1;
    matrix.push_back(d);
  }
  return matrix;
}

}  // namespace quorva::test
