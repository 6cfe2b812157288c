// rp_exe.h -- the abstract reactive program that the simulator drives.
// An implementation owns every name, type name and value location it hands
// out; callers read and write values only through those locations. The order
// of the virtual operations is fixed: it is the layout of the virtual table.
#ifndef ECEXE_RP_EXE_H
#define ECEXE_RP_EXE_H

// Status of an output, a local or an assertion after an instant.
enum RPStatus {
  RP_DEFINED = 0,    // has a value (an assertion: holds)
  RP_ABSENT = 1,     // not present at this instant, or no item computes it
  RP_NIL = 2,        // the value is undefined
  RP_DIVBYZERO = 3,  // a division or modulo by zero took place
  RP_FALSE = 4       // an assertion evaluated to false
};

// A reactive program. Indices are 0-based and not checked. A location is the
// storage of a variable's current value: bool and int as a 32-bit int (bool
// 0 or 1), real as a double, an extern value as one pointer-sized word; a null
// location means the value can be neither read nor written.
//
// The operations that an implementation does not override keep the defaults
// below; the fatal ones write their text to standard error and exit(1).
class RPExe {
 public:
  virtual ~RPExe();

  // The program (main node) name. Fatal by default.
  virtual const char* name();
  virtual int nb_inputs();
  virtual const char* input_ident(int i);
  // "bool", "int", "real", or the name of an extern type.
  virtual const char* input_type(int i);
  virtual int nb_outputs();
  virtual const char* output_ident(int i);
  virtual const char* output_type(int i);
  virtual void* input_loc(int i);
  virtual void* output_loc(int i);
  // One whole instant: 0 when the outputs are valid; anything else means the
  // step failed. Fatal by default.
  virtual int step();
  // An RPStatus. Fatal by default.
  virtual int output_status(int i);
  // Back to the first instant. Fatal by default.
  virtual void reset_history();
  // 0 by default.
  virtual int nb_assertions();
  // An RPStatus. Fatal by default.
  virtual int assert_status(int i);
  // 0 by default; then local_ident, local_type and local_loc give null and
  // local_status gives RP_NIL.
  virtual int nb_locals();
  virtual const char* local_ident(int i);
  virtual const char* local_type(int i);
  virtual void* local_loc(int i);
  virtual int local_status(int i);
  // True when init_step / eval_outputs / end_step may drive an instant
  // instead of step(). False by default.
  virtual int allows_eval_outputs();
  // Computes the outputs and assertions of the opened instant; the number
  // of them whose status is a problem. Fatal by default.
  virtual int eval_outputs();
  // Opens an instant. Fatal by default ("not available for this instance").
  virtual void init_step();
  // Commits the memories of the instant. Fatal by default.
  virtual void end_step();

 private:
  // Writes `text` to standard error as it is and ends the process.
  [[noreturn]] static void Error(const char* text);
};

#endif
