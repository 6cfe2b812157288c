// pty_stream.h -- the output stream of every printer in the system.
// It tracks an indentation level and the current column: '\n' in a text
// starts a line indented at the level, '\f' a line at column 0, and a piece
// that would reach the width is moved whole to a fresh, unindented line.
#ifndef FOUNDATIONS_PTY_STREAM_H
#define FOUNDATIONS_PTY_STREAM_H

#include <cstdarg>
#include <cstdio>

#include "foundations/errors.h"

class TmpPtyStream;

class PtyStream {
 public:
  // "stdout" and "stderr" name the standard streams; any other path is
  // opened for writing, and a failure ends the process. A null indent
  // means three spaces; it is copied and must stay under 20 characters.
  PtyStream(const char* path, int width, const char* indent);
  PtyStream(FILE* f, int width, const char* indent);
  PtyStream(int width, const char* indent);
  PtyStream(const PtyStream&) = delete;
  PtyStream& operator=(const PtyStream&) = delete;
  // Forces the output out; closes the stream unless it is stdout or stderr.
  virtual ~PtyStream();

  // Shared streams on standard output and error: width 80, never deleted.
  static PtyStream* of_stdout();
  static PtyStream* of_stderr();

  void tab() { level++; }
  void untab();
  void cr();
  void lf();
  void put(int n);
  void put(float x);
  void put(const char* fmt, ...) TAVIK_PRINTF(2, 3);
  void vput(const char* fmt, va_list ap);
  // Copies t's whole text, re-indented at this stream's level, unwrapped.
  void put(TmpPtyStream* t);
  void flush() { fflush(stream); }

  FILE* file() const { return stream; }
  int get_level() const { return level; }
  int get_column() const { return column; }

 protected:
  void set_indent(const char* text);
  // Writes one piece, breaking the line first if it would reach the width.
  void place(const char* piece, int n);

  FILE* stream;
  const char* path;
  char indent[20];
  int level = 0;
  int column = 0;
  int width;
};

// A PtyStream on an anonymous temporary file, for a text that is built
// first and copied into another stream later.
class TmpPtyStream : public PtyStream {
 public:
  TmpPtyStream(int width, const char* indent);
};

#endif
