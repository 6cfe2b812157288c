// observer.cpp -- conditions written in ec, compiled as observer programs.
// The condition is scanned here first, so that what the user typed is
// judged in the user's terms (columns, names of the program); only a
// condition made of ec's tokens and the program's names reaches the
// compiler, from a file in memory that no other process can see or name.
#include "trace/observer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <vector>

#include "ecexe/rp_ec_exe.h"
#include "ecexe/rp_exe.h"
#include "foundations/errors.h"
#include "foundations/symbol_table.h"

namespace {

// The name of the condition's output: no ec program's own names end so.
const char kHolds[] = "run_until_holds__";

struct Token {
  std::string text;
  int column;  // from 1
};

// Operators of other languages that users type, and the ec word for each
// ('&' alone is ec's "exactly one of": `&(a, b, c)`).
const struct {
  const char* typed;
  const char* ec;
} kForeignOperators[] = {
    {"&&", "and"}, {"||", "or"}, {"==", "="}, {"!=", "<>"}, {"|", "or"}, {"!", "not"},
};

const char* const kKeywords[] = {"and",  "assert", "bool", "const", "current", "div",     "else", "function",
                                 "false", "if",    "int",  "let",   "mod",     "node",    "not",  "or",
                                 "nor",  "pre",    "real", "returns", "tel",   "type",    "then", "true",
                                 "var",  "when",   "xor",  "extern", "unsafe"};

bool is_keyword(const std::string& word) {
  for (const char* k : kKeywords)
    if (word == k) return true;
  return false;
}

std::string at(int column) { return "column " + std::to_string(column) + ": "; }

// Cuts `condition` into the tokens of ec, leaving out blanks and comments
// ("-- ..." to the end of the line, "(* ... *)"). False with `error` set at
// the first character that no ec token starts with.
class Scanner {
 public:
  explicit Scanner(const std::string& c) : text(c) {}

  bool scan(std::vector<Token>* tokens, std::string* error) {
    while (skip_blanks_and_comments(error)) {
      if (k == text.size()) return true;
      Token token = {"", static_cast<int>(k) + 1};
      if (!next(&token.text, error)) return false;
      tokens->push_back(token);
    }
    return false;
  }

 private:
  bool starts(const char* s) const { return text.compare(k, strlen(s), s) == 0; }
  char peek(size_t ahead = 0) const { return k + ahead < text.size() ? text[k + ahead] : '\0'; }

  bool skip_blanks_and_comments(std::string* error) {
    for (;;) {
      while (k < text.size() && isspace(static_cast<unsigned char>(text[k]))) k++;
      if (starts("--")) {
        while (k < text.size() && text[k] != '\n') k++;
      } else if (starts("(*")) {
        size_t end = text.find("*)", k + 2);
        if (end == std::string::npos) {
          *error = at(static_cast<int>(k) + 1) + "the comment '(*' is not closed by '*)'";
          return false;
        }
        k = end + 2;
      } else {
        return true;
      }
    }
  }

  // number -> digits [ '.' digits ] [ ('e'|'E') ['+'|'-'] digits ]
  bool number(std::string* token, std::string* error) {
    size_t start = k;
    auto digits = [this] {
      while (isdigit(static_cast<unsigned char>(peek()))) k++;
    };
    digits();
    if (peek() == '.') {
      k++;
      digits();
    }
    if (peek() == 'e' || peek() == 'E') {
      k++;
      if (peek() == '+' || peek() == '-') k++;
      if (!isdigit(static_cast<unsigned char>(peek()))) {
        *error = at(static_cast<int>(start) + 1) + "'" + text.substr(start, k - start) +
                 "' is not a number: an exponent needs digits";
        return false;
      }
      digits();
    }
    *token = text.substr(start, k - start);
    return true;
  }

  bool next(std::string* token, std::string* error) {
    unsigned char c = static_cast<unsigned char>(peek());
    if (isdigit(c)) return number(token, error);
    if (isalpha(c) || c == '_') {
      size_t start = k;
      while (isalnum(static_cast<unsigned char>(peek())) || peek() == '_') k++;
      *token = text.substr(start, k - start);
      return true;
    }
    for (const auto& foreign : kForeignOperators)
      if (starts(foreign.typed)) {
        *error = at(static_cast<int>(k) + 1) + "'" + foreign.typed + "' is not an operator of ec: write '" +
                 foreign.ec + "'";
        return false;
      }
    for (const char* pair : {"->", ">=", "=>", "<=", "<>", "**"})
      if (starts(pair)) {
        *token = pair;
        k += 2;
        return true;
      }
    if (c != 0 && strchr("#%)+,./:;(*-<=>", c)) {
      *token = std::string(1, static_cast<char>(c));
      k++;
      return true;
    }
    std::string shown = c < 0x20 || c >= 0x7f ? "this character" : "'" + std::string(1, static_cast<char>(c)) + "'";
    *error = at(static_cast<int>(k) + 1) + shown + " cannot appear in a condition";
    return false;
  }

  const std::string& text;
  size_t k = 0;
};

// Every name of the condition must be a flow the observer is given.
bool check_names(const ProgramFlows& flows, const std::set<std::string>& declared, const std::vector<Token>& tokens,
                 std::string* error) {
  for (const Token& t : tokens) {
    if (!(isalpha(static_cast<unsigned char>(t.text[0])) || t.text[0] == '_') || is_keyword(t.text) ||
        declared.count(t.text))
      continue;
    FlowKind kind;
    int position;
    if (!flows.find(t.text, &kind, &position)) {
      *error = at(t.column) + flows.unknown(t.text);
    } else if (kind == FlowKind::Local && position < 0 && flows.locals.empty()) {
      *error = at(t.column) + "'" + t.text + "' is a local, and the locals of " + flows.program_name() +
               " are not recorded (it has " + std::to_string(flows.program->nb_locals()) +
               "): a condition can name its inputs and outputs";
    } else {
      *error = at(t.column) + "'" + t.text + "' has an abstract type, which a condition cannot use";
    }
    return false;
  }
  return true;
}

// A file in memory, holding `text`: its name for the loader, or "" (errno
// set) when none can be made.
std::string memory_file(const std::string& text, int* fd) {
  *fd = memfd_create("tavik-condition", MFD_CLOEXEC);
  if (*fd < 0) return "";
  size_t done = 0;
  while (done < text.size()) {
    ssize_t n = write(*fd, text.data() + done, text.size() - done);
    if (n <= 0) return "";
    done += static_cast<size_t>(n);
  }
  return "/proc/self/fd/" + std::to_string(*fd);
}

// Runs `load` with the standard output and error in a file in memory, and
// the process kept where it would end; the texts it wrote.
template <typename F>
std::string captured(F load, bool* loaded) {
  fflush(stdout);
  fflush(stderr);
  int sink = memfd_create("tavik-messages", MFD_CLOEXEC);
  if (sink < 0) {
    *loaded = false;
    return std::string("no room for the compiler's messages: ") + strerror(errno);
  }
  int saved_out = dup(1), saved_err = dup(2);
  dup2(sink, 1);
  dup2(sink, 2);
  // A fault in the condition must not end the window.
  if (!survive_process_end([&] { *loaded = load(); })) *loaded = false;
  fflush(stdout);
  fflush(stderr);
  dup2(saved_out, 1);
  dup2(saved_err, 2);
  close(saved_out);
  close(saved_err);
  std::string text;
  lseek(sink, 0, SEEK_SET);
  char buffer[4096];
  for (ssize_t n; (n = read(sink, buffer, sizeof buffer)) > 0;) text.append(buffer, static_cast<size_t>(n));
  close(sink);
  return text;
}

// The parser's report ("syntax error - at line N", "memory exhausted - at
// line N") names the line after its token, the lexer having read the end of
// the token's line: with a token to a line from line 4, that tells the token.
bool parser_report(const std::string& messages, const std::vector<Token>& tokens, std::string* error) {
  bool deep = messages.find("memory exhausted") != std::string::npos;
  if (!deep && messages.find("syntax error") == std::string::npos) return false;
  size_t line = messages.find("at line ");
  int index = line == std::string::npos ? -1 : atoi(messages.c_str() + line + 8) - 5;
  int count = static_cast<int>(tokens.size());
  if (index >= 0 && index < count) {
    const Token& t = tokens[index];
    *error = at(t.column) + (deep ? "the condition is nested too deeply here"
                                  : "'" + t.text + "' cannot come here" +
                                        (index == 0 ? ", at the start of the condition"
                                                    : ", after '" + tokens[index - 1].text + "'"));
  } else if (index == count && !deep) {
    const Token& last = tokens.back();
    *error = at(last.column + static_cast<int>(last.text.size())) + "the condition ends too soon, after '" +
             last.text + "'";
  } else {
    *error = deep ? "the condition is nested too deeply" : "the condition is not an expression of ec";
  }
  return true;
}

// The loader refuses an int literal beyond 32 bits with "<file>:<line>: the
// integer ...": with a token to a line from line 4, the line tells it.
bool literal_report(const std::string& messages, const std::vector<Token>& tokens, std::string* error) {
  size_t found = messages.find(": the integer ");
  size_t colon = found == std::string::npos || found == 0 ? std::string::npos : messages.rfind(':', found - 1);
  if (colon == std::string::npos) return false;
  int index = atoi(messages.c_str() + colon + 1) - 4;
  if (index < 0 || index >= static_cast<int>(tokens.size())) return false;
  size_t end = messages.find('\n', found);
  *error = at(tokens[index].column) + messages.substr(found + 2, end == std::string::npos ? end : end - found - 2);
  return true;
}

// What the compiler said about the observer, in terms of the condition. A
// checker's message quotes the condition's equation: what follows is kept.
std::string explain(const std::string& messages, const std::vector<Token>& tokens) {
  std::string error;
  if (parser_report(messages, tokens, &error) || literal_report(messages, tokens, &error)) return error;
  std::string detail;
  for (size_t start = 0; start < messages.size();) {
    size_t end = messages.find('\n', start);
    if (end == std::string::npos) end = messages.size();
    std::string one = messages.substr(start, end - start);
    if (one.find_first_not_of(" \t") != std::string::npos && one.find("Error :") == std::string::npos) detail = one;
    start = end + 1;
  }
  size_t equation = detail.find(std::string(kHolds) + "' = ");
  if (equation != std::string::npos) detail = detail.substr(equation + strlen(kHolds) + 4);
  // The checker names the condition's output where the condition's type
  // or clock is not that of a condition.
  std::string output = "'" + std::string(kHolds) + "' is ";
  for (size_t k; (k = detail.find(output)) != std::string::npos;)
    detail.replace(k, output.size(), "a condition must be ");
  if (detail.find(kHolds) != std::string::npos || detail.find("/proc/") != std::string::npos)
    return "the condition cannot be compiled";
  return (equation != std::string::npos ? "in the condition " : "in the condition: ") + detail;
}

// The compiled observers by their program's text: a program, once loaded,
// lives as long as the process, so a condition run again is not loaded
// again. A failure is kept as its message.
struct Compiled {
  RPEcExe* program;
  std::string error;
};
std::map<std::string, Compiled>& compiled() {
  static std::map<std::string, Compiled>* all = new std::map<std::string, Compiled>;
  return *all;
}

Compiled compile(const std::string& source, const std::vector<Token>& tokens) {
  int fd = -1;
  std::string path = memory_file(source, &fd);
  if (path.empty()) {
    if (fd >= 0) close(fd);
    return {nullptr, std::string("no room to compile the condition: ") + strerror(errno)};
  }
  RPEcExe* candidate = new RPEcExe;
  bool loaded = false;
  std::string messages =
      captured([&] { return candidate->init(path.c_str(), new SymbolTable(1000, 5041)) == 0; }, &loaded);
  close(fd);
  if (loaded) return {candidate, ""};
  return {nullptr, explain(messages, tokens)};
}

}  // namespace

bool Observer::build(const ProgramFlows& observed, const std::string& condition, std::string* error) {
  std::vector<Token> tokens;
  if (!Scanner(condition).scan(&tokens, error)) return false;
  if (tokens.empty()) {
    *error = "the condition is empty";
    return false;
  }
  std::set<std::string> declared;
  std::string source = "node run_until(";
  for (const std::vector<Flow>* list : {&observed.inputs, &observed.outputs, &observed.locals})
    for (const Flow& f : *list) {
      if (f.type == FlowType::Extern) continue;
      source += (declared.empty() ? "" : "; ") + std::string(f.name) + ": " + flow_type_word(f.type);
      declared.insert(f.name);
    }
  if (!check_names(observed, declared, tokens, error)) return false;
  source += std::string(") returns (") + kHolds + ": bool);\nlet\n" + kHolds + " =\n";
  for (const Token& t : tokens) source += t.text + "\n";
  source += ";\ntel.\n";
  auto found = compiled().find(source);
  if (found == compiled().end()) found = compiled().emplace(source, compile(source, tokens)).first;
  if (!found->second.program) {
    *error = found->second.error;
    return false;
  }
  flows = &observed;
  program = found->second.program;
  program->reset_history();
  return true;
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
