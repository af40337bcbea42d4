#pragma once

// Writes complete program definitions (temp/ files, DCLGEN members, user data) into a
// working folder, the way the panels would, so the shipped template can be generated
// and checked for many definitions.

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
  bool columns = false;           // column selections for every access

  std::string describe() const {
    std::string text = cobol ? "cobol" : "easytrieve";
    text += kind == 0 ? " batch" : kind == 1 ? " routine" : " match";
    const std::pair<const char*, bool> flags[] = {
        {"constants", constants}, {"thru", thru},         {"buffering", buffering},
        {"stream", stream},       {"comments", comments}, {"jcl", jcl},
        {"rollback", rollback},   {"commit", commit},     {"columns", columns}};
    for (const auto& [name, on] : flags)
      if (on) text += std::string(" ") + name;
    text += " in=" + std::to_string(filein) + " out=" + std::to_string(fileout) +
            " excel=" + std::to_string(excel) + " rep=" + std::to_string(report) +
            " parm=" + std::to_string(params) + " sfuid=";
    for (int n : accesses) text += std::to_string(n);
    return text;
  }
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
/// letter and number, so that every access of a program can include its own member.
inline std::string access_member(int kind, int k) {
  const std::string table = access_table(kind, k);
  const std::string p = std::string(1, kAccessLetters[kind]) + std::to_string(k) + "-";
  return "      * DCLGEN TABLE(QVOWN." + table +
         ")\n"
         "           EXEC SQL DECLARE QVOWN." +
         table +
         " TABLE\n"
         "           ( ITEM_ID                        CHAR(10) NOT NULL,\n"
         "             ITEM_DESC                      VARCHAR(30),\n"
         "             AMOUNT                         DECIMAL(9, 2),\n"
         "             QTY                            INTEGER NOT NULL\n"
         "           ) END-EXEC.\n"
         "       01  DCL" +
         table +
         ".\n"
         "           10 " +
         p +
         "ITEM-ID           PIC X(10).\n"
         "           10 " +
         p +
         "ITEM-DESC.\n"
         "              49 " +
         p +
         "ITEM-DESC-LEN  PIC S9(4) USAGE COMP.\n"
         "              49 " +
         p +
         "ITEM-DESC-TEXT PIC X(30).\n"
         "           10 " +
         p +
         "AMOUNT            PIC S9(7)V9(2) USAGE COMP-3.\n"
         "           10 " +
         p + "QTY               PIC S9(9) USAGE COMP.\n";
}

/// Column-file blocks of one access: QUERY columns (not for DELETE) and the key as WHERE
/// column (not for INSERT), named with the member's prefix.
inline std::string access_column_blocks(int kind, int k) {
  const std::string master = kAccessWords[kind] + std::to_string(k);
  const std::string head = "<" + access_table(kind, k) + ">\n<" +
                           std::string(1, kAccessLetters[kind]) + std::to_string(k) + "-|NAME>\n";
  std::string text;
  if (kind != 4)
    text += "[" + master + "-QUERY]\n" + head +
            "ITEM_DESC  11  (30)  X(30).  0  1  1\n"
            "AMOUNT  0  (9,2)  S9(7)V9(2)_COMP-3.  0  2  2\n"
            "QTY  1  NULL  S9(9)_COMP.  1  3  0\n"
            "[/" +
            master + "-QUERY]\n";
  if (kind != 3)
    text += "[" + master + "-WHERE]\n" + head + "ITEM_ID  10  (10)  X(10).  1  0  0\n[/" + master +
            "-WHERE]\n";
  return text;
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
          "/\npswtso=SECRET\ntsouser=QVUSR\nnomecognome=MARIO ROSSI\n"
          "societa=ACME BANK\n");
  for (int kind = 0; kind < 5; ++kind)
    for (int k = 1; k <= 9; ++k)
      write_text(programs / (access_table(kind, k) + ".DCL"), access_member(kind, k));
}

/// Writes the definition's temp/ files: base parameters, Excel count, key-to-value pairs
/// for every DB2 access, and the column files.
inline void write_definition(const std::filesystem::path& folder, const MatrixDefinition& d) {
  auto onoff = [](bool on) { return on ? "on" : "off"; };
  const char* kinds[] = {"batch", "routine", "match"};
  std::string parbase =
      "nomeprogr=QVTEST\nlinguaggio=" + std::string(d.cobol ? "cobol" : "easytrieve") +
      "\ntipoprogr=" + kinds[d.kind] + "\ncostanti=" + onoff(d.constants) +
      "\nthru=" + onoff(d.thru) + "\nbuffering=" + onoff(d.buffering) +
      "\nstream=" + onoff(d.stream) + "\ncommenti=" + onoff(d.comments) + "\njcl=" + onoff(d.jcl) +
      "\nfilein=" + std::to_string(d.filein) + "\nfileout=" + std::to_string(d.fileout) +
      "\nreport=" + std::to_string(d.report);
  for (int kind = 0; kind < 5; ++kind) {
    std::string word = kAccessWords[kind];
    for (char& c : word) c = static_cast<char>(c - 'A' + 'a');
    parbase += "\n" + word + "=" + std::to_string(d.accesses[kind]);
  }
  parbase += std::string("\nrollback=") + onoff(d.rollback) + "\ncommit=" + onoff(d.commit) +
             "\nparametri=" + std::to_string(d.params) +
             "\ndescprogr0=PROGRAM OF THE TEMPLATE MATRIX\n";
  write_text(folder / "temp/Parbase.dat", parbase);
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
      if (d.columns) blocks[kind] += access_column_blocks(kind, k);
    }
  }
  write_text(folder / "temp/key2value.dat", pairs);
  for (int kind = 0; kind < 5; ++kind) {
    std::filesystem::remove(folder / kColumnFiles[kind]);
    if (!blocks[kind].empty()) write_text(folder / kColumnFiles[kind], blocks[kind]);
  }
}

/// A definition made legal the way the panels would: routines are COBOL, THRU is COBOL,
/// reports are Easytrieve, a match reads two files, Excel outputs are among the outputs.
inline MatrixDefinition legal(MatrixDefinition d) {
  if (!d.cobol) {
    if (d.kind == 1) d.kind = 0;
    d.thru = false;
  } else {
    d.report = 0;
  }
  if (d.kind == 2 && d.filein < 2) d.filein = 2;
  if (d.excel > d.fileout) d.excel = d.fileout;
  return d;
}

/// Covering matrix: every pair of values of any two choices appears in some definition
/// (greedy, fixed seed), then filled up with further random definitions to `minimum`.
inline std::vector<MatrixDefinition> covering_matrix(size_t minimum) {
  const std::vector<std::vector<int>> domains = {
      {0, 1},       {0, 1, 2},    {0, 1},       {0, 1},       {0, 1},       {0, 1},
      {0, 1},       {0, 1},       {0, 1},       {0, 1},       {0, 1, 2, 9}, {0, 1, 2, 9},
      {0, 1, 2},    {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1, 2, 9},
      {0, 1, 2, 9}, {0, 1, 2, 9}, {0, 1}};
  auto make = [](const std::vector<int>& v) {
    MatrixDefinition d;
    d.cobol = v[0] == 0;
    d.kind = v[1];
    d.constants = v[2], d.thru = v[3], d.buffering = v[4], d.stream = v[5];
    d.comments = v[6], d.jcl = v[7], d.rollback = v[8], d.commit = v[9];
    d.filein = v[10], d.fileout = v[11], d.excel = v[12], d.report = v[13];
    for (int i = 0; i < 5; ++i) d.accesses[i] = v[14 + i];
    d.params = v[19];
    d.columns = v[20];
    return legal(d);
  };
  auto values = [](const MatrixDefinition& d) {
    std::vector<int> v = {d.cobol ? 0 : 1, d.kind,     d.constants, d.thru,     d.buffering,
                          d.stream,        d.comments, d.jcl,       d.rollback, d.commit,
                          d.filein,        d.fileout,  d.excel,     d.report};
    for (int n : d.accesses) v.push_back(n);
    v.push_back(d.params);
    v.push_back(d.columns);
    return v;
  };
  using Pair = std::array<int, 4>;
  auto pairs_of = [&](const MatrixDefinition& d) {
    std::vector<Pair> pairs;
    const std::vector<int> v = values(d);
    for (size_t a = 0; a < v.size(); ++a)
      for (size_t b = a + 1; b < v.size(); ++b)
        pairs.push_back({static_cast<int>(a), v[a], static_cast<int>(b), v[b]});
    return pairs;
  };
  std::mt19937 random(20261121);
  auto pick = [&] {
    std::vector<int> v;
    for (const auto& domain : domains)
      v.push_back(domain[std::uniform_int_distribution<size_t>(0, domain.size() - 1)(random)]);
    return make(v);
  };
  // The feasible pairs: those some legal definition shows.
  std::set<Pair> uncovered;
  for (int i = 0; i < 20000; ++i)
    for (const Pair& p : pairs_of(pick())) uncovered.insert(p);
  std::vector<MatrixDefinition> matrix;
  while (!uncovered.empty() || matrix.size() < minimum) {
    MatrixDefinition best = pick();
    size_t best_gain = 0;
    for (int candidate = 0; candidate < 60 && !uncovered.empty(); ++candidate) {
      MatrixDefinition d = pick();
      size_t gain = 0;
      for (const Pair& p : pairs_of(d)) gain += uncovered.count(p);
      if (gain > best_gain) best = d, best_gain = gain;
    }
    for (const Pair& p : pairs_of(best)) uncovered.erase(p);
    matrix.push_back(best);
  }
  return matrix;
}

}  // namespace quorva::test
