// csv_rows.cpp -- reading scenario-style CSV files line by line.
#include "trace/csv_rows.h"

#include <sys/stat.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "trace/value_text.h"

CsvRows::CsvRows(const char* p) : path(p), display(strcmp(p, "-") == 0 ? "<stdin>" : p) {}

CsvRows::~CsvRows() {
  if (file && owned) fclose(file);
  free(buffer);
}

// A stream that cannot be read twice (standard input, a pipe, a process
// substitution) is read once, into an anonymous temporary file.
bool CsvRows::open(std::string* error) {
  FILE* source = path == "-" ? stdin : fopen(path.c_str(), "r");
  if (!source) {
    *error = "cannot read '" + path + "': " + strerror(errno);
    return false;
  }
  struct stat st;
  if (source != stdin && fstat(fileno(source), &st) == 0 && S_ISREG(st.st_mode)) {
    file = source;
    owned = true;
    return true;
  }
  bool copied = copy_once(source, error);
  if (source != stdin) fclose(source);
  return copied;
}

bool CsvRows::copy_once(FILE* source, std::string* error) {
  file = tmpfile();
  if (!file) {
    *error = "cannot read " + quoted(display) + ": no room for a copy: " + strerror(errno);
    return false;
  }
  owned = true;
  char chunk[1 << 16];
  size_t n;
  while ((n = fread(chunk, 1, sizeof chunk, source)) > 0) {
    if (fwrite(chunk, 1, n, file) != n) {
      *error = "cannot read " + quoted(display) + ": no room for a copy: " + strerror(errno);
      return false;
    }
  }
  if (ferror(source)) {
    *error = "cannot read " + quoted(display) + ": " + strerror(errno);
    return false;
  }
  rewind();
  return true;
}

void CsvRows::rewind() {
  ::rewind(file);
  line_number = 0;
}

std::string CsvRows::where(int column) const {
  if (line_number == 0) return display + ": ";
  std::string text = display + ":" + std::to_string(line_number) + ":";
  if (column > 0) text += std::to_string(column) + ":";
  return text + " ";
}

CsvRows::Line CsvRows::bad(int column, const std::string& message) {
  fault = where(column) + message;
  return Bad;
}

static bool blank(char c) { return c == ' ' || c == '\t'; }

// Cuts the line in `buffer` into cells, unquoting in place (an unquoted
// text is never longer than its quoted form).
bool CsvRows::split() {
  cell_views.clear();
  char* p = buffer;
  for (;;) {
    while (blank(*p)) p++;
    char* start = p;
    char* end;
    if (*p == '"') {
      char* out = start;
      p++;
      for (;;) {
        if (*p == '\0') {
          cell_views.push_back({});
          bad(static_cast<int>(cell_views.size()), "a quoted cell is not closed on its line");
          return false;
        }
        if (*p == '"' && p[1] != '"') break;
        if (*p == '"') p++;
        *out++ = *p++;
      }
      end = out;
      p++;
      while (blank(*p)) p++;
      if (*p != ',' && *p != '\0') {
        cell_views.push_back({});
        bad(static_cast<int>(cell_views.size()), "text after the closing quote of a cell");
        return false;
      }
    } else {
      while (*p != ',' && *p != '\0') p++;
      end = p;
      while (end > start && blank(end[-1])) end--;
    }
    cell_views.emplace_back(start, end - start);
    if (*p == '\0') return true;
    p++;
  }
}

// The line is a directive when its first cell is one and every other cell
// is empty.
CsvRows::Line CsvRows::directive() {
  for (size_t k = 1; k < cell_views.size(); k++)
    if (!cell_views[k].empty()) return Row;
  std::string_view first = cell_views[0];
  if (first == "reset") return Reset;
  if (first.substr(0, 6) != "repeat" || (first.size() > 6 && !blank(first[6]))) return Row;
  std::string_view rest = first.substr(6);
  while (!rest.empty() && blank(rest[0])) rest.remove_prefix(1);
  if (rest.empty()) return bad(1, "'repeat' needs a count of instants");
  char* stop;
  std::string digits(rest);
  errno = 0;
  long n = strtol(digits.c_str(), &stop, 10);
  if (*stop != '\0' || n < 0 || errno == ERANGE || !isdigit(static_cast<unsigned char>(digits[0])))
    return bad(1, quoted(digits) + " is not a count of instants");
  // So that no sum of counts can overflow.
  if (n > kMaxRepeat) return bad(1, "'repeat' counts at most " + std::to_string(kMaxRepeat) + " instants");
  repeat_count = n;
  return Repeat;
}

CsvRows::Line CsvRows::next() {
  for (;;) {
    ssize_t n = getline(&buffer, &capacity, file);
    if (n < 0) return End;
    line_number++;
    if (static_cast<size_t>(n) != strlen(buffer)) return bad(0, "the line holds a NUL character");
    while (n > 0 && (buffer[n - 1] == '\n' || buffer[n - 1] == '\r')) buffer[--n] = '\0';
    const char* p = buffer;
    while (blank(*p)) p++;
    if (*p == '\0' || *p == '#') continue;
    if (!split()) return Bad;
    return directive();
  }
}

bool CsvRows::header(const char* naming, std::string* error) {
  Line line = next();
  if (line == Row) return true;
  if (line == Bad) *error = fault;
  else if (line == End) *error = where() + "no header row naming " + naming;
  else *error = where() + "the first row must name " + naming;
  return false;
}

bool CsvRows::fits(size_t columns, std::string* error) const {
  for (size_t c = columns; c < cell_views.size(); c++)
    if (!cell_views[c].empty()) {
      *error = where(static_cast<int>(c) + 1) + "a cell beyond the " + std::to_string(columns) +
               " columns of the header";
      return false;
    }
  return true;
}
