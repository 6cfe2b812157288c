// observer.cpp -- conditions written in ec, compiled as observer programs.
#include "trace/observer.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "ecexe/rp_ec_exe.h"
#include "ecexe/rp_exe.h"
#include "foundations/errors.h"
#include "foundations/symbol_table.h"

namespace {

// The name of the condition's output: no ec program's own names end so.
const char kHolds[] = "run_until_holds__";

// The condition's words, one to a line from line 4 of the observer, so that
// the line of a syntax error tells the word: their columns in the condition.
std::string spread(const std::string& condition, std::vector<int>* columns) {
  std::string text;
  size_t k = 0;
  while (k < condition.size()) {
    while (k < condition.size() && isspace(static_cast<unsigned char>(condition[k]))) k++;
    if (k == condition.size()) break;
    columns->push_back(static_cast<int>(k) + 1);
    while (k < condition.size() && !isspace(static_cast<unsigned char>(condition[k]))) text += condition[k++];
    text += '\n';
  }
  return text;
}

// Runs `load` with the standard output and error in a temporary file, and
// the process kept where it would end; the texts it wrote.
template <typename F>
std::string captured(F load, bool* loaded) {
  fflush(stdout);
  fflush(stderr);
  FILE* sink = tmpfile();
  int saved_out = dup(1), saved_err = dup(2);
  dup2(fileno(sink), 1);
  dup2(fileno(sink), 2);
  // A fault in the condition must not end the window.
  if (!survive_process_end([&] { *loaded = load(); })) *loaded = false;
  fflush(stdout);
  fflush(stderr);
  dup2(saved_out, 1);
  dup2(saved_err, 2);
  close(saved_out);
  close(saved_err);
  std::string text;
  rewind(sink);
  for (int c; (c = fgetc(sink)) != EOF;) text += static_cast<char>(c);
  fclose(sink);
  return text;
}

// What the front end said about the observer, in terms of the condition.
// A syntax error names the line after its token (the lexer has read the
// line's end): with a word to a line from line 4, that tells the word. A
// checker's message quotes the condition's equation: what follows is kept.
std::string explain(const std::string& messages, const std::string& condition, const std::vector<int>& columns) {
  // An int literal beyond 32 bits names its line, which tells the word.
  if (const char* at = strstr(messages.c_str(), ": the integer ")) {
    int word = atoi(strrchr(std::string(messages.c_str(), at).c_str(), ':') + 1) - 4;
    std::string literal(at + 14, strcspn(at + 14, " "));
    if (word >= 0 && word < static_cast<int>(columns.size()))
      return "the integer " + literal + " at column " +
             std::to_string(condition.find(literal, columns[word] - 1) + 1) + " of the condition is beyond 32 bits";
  }
  if (const char* at = strstr(messages.c_str(), "syntax error")) {
    const char* line = strstr(at, "line ");
    int word = line ? atoi(line + 5) - 5 : -1;
    if (word >= 0 && word < static_cast<int>(columns.size()))
      return "syntax error at column " + std::to_string(columns[word]) + " of the condition";
    return word == static_cast<int>(columns.size()) ? "syntax error: the condition ends too soon"
                                                    : "syntax error in the condition";
  }
  std::string detail;
  for (size_t start = 0; start < messages.size();) {
    size_t end = messages.find('\n', start);
    if (end == std::string::npos) end = messages.size();
    std::string one = messages.substr(start, end - start);
    if (one.find_first_not_of(" \t") != std::string::npos && one.find("Error :") == std::string::npos) detail = one;
    start = end + 1;
  }
  size_t equation = detail.find(std::string(kHolds) + "' = ");
  if (equation != std::string::npos) return "in the condition " + detail.substr(equation + strlen(kHolds) + 4);
  return "in the condition: " + detail;
}

}  // namespace

bool Observer::build(const ProgramFlows& observed, const std::string& condition, std::string* error) {
  std::vector<int> columns;
  std::string source = "node run_until(";
  bool first = true;
  for (const std::vector<Flow>* list : {&observed.inputs, &observed.outputs, &observed.locals})
    for (const Flow& f : *list) {
      if (f.type == FlowType::Extern) continue;
      source += (first ? "" : "; ") + std::string(f.name) + ": " + flow_type_word(f.type);
      first = false;
    }
  source += std::string(") returns (") + kHolds + ": bool);\nlet\n" + kHolds + " =\n" +
            spread(condition, &columns) + ";\ntel.\n";
  if (columns.empty()) {
    *error = "the condition is empty";
    return false;
  }
  std::string path = "/tmp/tavik_until_" + std::to_string(getpid()) + ".ec";
  FILE* f = fopen(path.c_str(), "w");
  if (!f) {
    *error = "cannot write the condition's program '" + path + "'";
    return false;
  }
  fputs(source.c_str(), f);
  fclose(f);
  RPEcExe* candidate = new RPEcExe;
  bool loaded = false;
  std::string messages =
      captured([&] { return candidate->init(path.c_str(), new SymbolTable(1000, 5041)) == 0; }, &loaded);
  unlink(path.c_str());
  if (loaded) {
    flows = &observed;
    program = candidate;
    return true;
  }
  *error = explain(messages, condition, columns);
  return false;
}

bool Observer::holds(const InstantRecord& r) {
  size_t k = 0;
  auto feed = [&](const Flow& f, FlowValue v) {
    if (f.type != FlowType::Extern) store_value(f.type, v, program->input_loc(static_cast<int>(k++)));
  };
  for (const Flow& f : flows->inputs) feed(f, r.inputs[f.index]);
  for (const Flow& f : flows->outputs) feed(f, r.outputs[f.index]);
  for (size_t i = 0; i < flows->locals.size(); i++) feed(flows->locals[i], r.locals[i]);
  program->init_step();
  program->eval_outputs();
  bool result = program->output_status(0) == RP_DEFINED && *static_cast<int*>(program->output_loc(0)) != 0;
  program->end_step();
  return result;
}
