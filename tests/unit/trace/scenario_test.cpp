// scenario_test.cpp -- scenario files: the faults a reader must name, with
// their place, and the instants a checked file gives.
#include "trace/scenario.h"

#include <gtest/gtest.h>

#include <string>

#include "ecexe/rp_ec_exe.h"
#include "foundations/symbol_table.h"
#include "test_support.h"

namespace {

using testsupport::kept;
using testsupport::write_temp;

RPExe* program() {
  static RPEcExe* p = nullptr;
  if (!p) {
    p = kept(new RPEcExe);
    std::string ec = write_temp(
        "node p(b: bool; n: int; x: real) returns (y: real; m: int);\n"
        "var k: int;\nlet\n  k = n + 1;\n  m = k;\n  y = if b then x else 0.0;\ntel.\n",
        ".ec");
    EXPECT_EQ(p->init(ec.c_str(), kept(new SymbolTable(1000, 5041))), 0);
  }
  return p;
}

// The fault of `text` read as a scenario of the program, with the file's
// name cut down to "s.csv"; "" when it has none.
std::string fault_of(const std::string& text) {
  ProgramFlows flows(program(), false);
  std::string path = write_temp(text, ".csv");
  ScenarioReader reader(flows, path.c_str());
  std::string error;
  if (reader.check(&error)) return "";
  size_t at = error.find(path);
  return at == std::string::npos ? error : error.replace(at, path.size(), "s.csv");
}

TEST(ScenarioTest, FaultsAreNamedWithTheirPlace) {
  struct Row {
    const char* text;
    const char* fault;
  };
  const Row rows[] = {
      {"", "s.csv: no header row naming the inputs"},
      {"# only a comment\nreset\n", "s.csv:2: the first row must name the inputs"},
      {"b,n\n1,2\n", "s.csv:1: input 'x' has no column"},
      {"b,n,x,n\n", "s.csv:1:4: input 'n' is named twice (columns 2 and 4)"},
      {"b,n,x,z\n", "s.csv:1:4: 'z' is not an input, output or local of p"},
      {"b,n,x\n1,2,0.5\n\n# c\n1,x,0.5\n", "s.csv:5:2: 'x' is not an int"},
      {"b,n,x\n2,2,0.5\n", "s.csv:2:1: '2' is not a bool"},
      {"b,n,x\n1,2,0,5\n", "s.csv:2:4: a cell beyond the 3 columns of the header"},
      {"b,n,x\n1,,0.5\n", "s.csv:2:2: no value for 'n' at the first instant"},
      {"b,n,x\n1,2\n", "s.csv:2:3: no value for 'x' at the first instant"},
      {"b,n,x\nrepeat 3\n", "s.csv:2:1: 'repeat' with no instant before it"},
      {"b,n,x\n1,2,3\nrepeat -1\n", "s.csv:3:1: '-1' is not a count of instants"},
      {"b,n,x\n1,2,3\nrepeat\n", "s.csv:3:1: 'repeat' needs a count of instants"},
      {"b,n,x\n1,\"2,3\n", "s.csv:2:2: a quoted cell is not closed on its line"},
      {"b,n,x\n1,\"2\"3,4\n", "s.csv:2:2: text after the closing quote of a cell"},
      {"b,n,x,y,m,k,step,problems\n1,2,3\n", ""},
  };
  for (const Row& r : rows) EXPECT_EQ(fault_of(r.text), r.fault) << r.text;
}

// Events with the values of `n` at each instant: "n=2 n=2 R n=5".
std::string events_of(const std::string& text) {
  ProgramFlows flows(program(), false);
  std::string path = write_temp(text, ".csv");
  ScenarioReader reader(flows, path.c_str());
  std::string error, seen;
  EXPECT_TRUE(reader.check(&error)) << error;
  for (ScenarioReader::Event e; (e = reader.next()) != ScenarioReader::End;) {
    if (e == ScenarioReader::Reset) seen += "R ";
    else seen += "n=" + std::to_string(reader.values()[1].i) + (reader.values()[0].i ? "b " : " ");
  }
  return seen + std::to_string(reader.nb_instants());
}

TEST(ScenarioTest, EmptyCellsRepeatsAndResetsKeepTheLastValues) {
  EXPECT_EQ(events_of("x, n ,b\r\n0.5,2,true\r\nrepeat 2,,\n\"\",,0\nreset,,\n,\"5\",\nrepeat 0\n"),
            "n=2b n=2b n=2b n=2 R n=5 5");
}

}  // namespace
