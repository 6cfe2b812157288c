// value_text.h -- the texts of flow values in scenarios and traces. A value
// is written exactly as the window shows it in OutputVars: bool and int in
// decimal, reals in Tcl's own layout of the shortest text that reads back
// as the same double. Readers accept what spreadsheets and scripts write.
#ifndef TRACE_VALUE_TEXT_H
#define TRACE_VALUE_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>

// The types a scenario or a trace carries, told from a program's type name.
enum class FlowType {
  Bool,    // "bool": a 32-bit int, 0 or 1
  Int,     // "int": a 32-bit int
  Real,    // "real" or "double": a 64-bit double
  Float,   // "float": a 32-bit float, shown widened to double
  Extern   // any other name: an abstract value no text can give
};

FlowType flow_type(const char* type_name);
// "bool", "int", "real" or "extern", for messages.
const char* flow_type_word(FlowType type);

// One value, whatever its type: bool and int in `i`, real and float in `d`
// (a float widened).
union FlowValue {
  int32_t i;
  double d;
};

// The longest text format_value writes, its terminating NUL included.
constexpr int kValueTextMax = 32;

// Writes the text of `v` at `out` (which has room for kValueTextMax bytes)
// and returns the end of the text; nothing is terminated.
char* format_value(FlowType type, FlowValue v, char* out);
// The text of a flow's cell in a trace: its value when `status` is
// RP_DEFINED, "nil" or "divbyzero", nothing when it is absent. Same room
// and result as format_value.
char* format_cell(FlowType type, FlowValue v, int status, char* out);
// A double as Tcl_PrintDouble writes it with tcl_precision 0: "1.0",
// "0.1", "1e-5", "1.2345678901234568e+17", "Inf", "-Inf", "NaN".
char* format_real(double v, char* out);

// Reads a cell of the given type into `v`; false when the text is not one.
// Bools: 0, 1, true, false, t, f. Ints: decimal with an optional sign,
// within 32 bits. Reals: as strtod reads a number (with nothing after it).
bool parse_value(FlowType type, std::string_view text, FlowValue* v);

// `text` quoted for a message: cut to 40 characters ("..." after), control
// characters shown as '?', so that a line of junk gives a readable message.
std::string quoted(std::string_view text);
// "'<text>' is not an int" (a bool, a real): what a refused cell is not.
std::string not_a(FlowType type, std::string_view text);

// Loads the value at a program location, or stores one there.
FlowValue load_value(FlowType type, const void* loc);
void store_value(FlowType type, FlowValue v, void* loc);

#endif
