// pty_stream.cpp -- the indenting, line-breaking output stream.
#include "foundations/pty_stream.h"
#include "foundations/errors.h"

#include <cstdlib>
#include <cstring>
#include <memory>

static FILE* open_path(const char* path) {
  if (strcmp(path, "stdout") == 0) return stdout;
  if (strcmp(path, "stderr") == 0) return stderr;
  FILE* f = fopen(path, "w");
  if (!f) {
    fprintf(stderr, "can't open file '%s'\n", path);
    FatalExit();
  }
  return f;
}

PtyStream::PtyStream(const char* p, int w, const char* ind)
    : stream(open_path(p)), path(p), width(w) {
  set_indent(ind);
}

PtyStream::PtyStream(FILE* f, int w, const char* ind) : stream(f), path(nullptr), width(w) {
  set_indent(ind);
}

PtyStream::PtyStream(int w, const char* ind) : PtyStream(stdout, w, ind) {}

PtyStream::~PtyStream() {
  fflush(stream);
  if (stream != stdout && stream != stderr) fclose(stream);
}

void PtyStream::set_indent(const char* text) { strcpy(indent, text ? text : "   "); }

PtyStream* PtyStream::of_stdout() {
  static PtyStream* shared = new PtyStream(stdout, 80, nullptr);
  return shared;
}

PtyStream* PtyStream::of_stderr() {
  static PtyStream* shared = new PtyStream(stderr, 80, nullptr);
  return shared;
}

void PtyStream::untab() {
  if (level == 0) {
    fputs("PtyStream::untab : unbalanced untab\n", stderr);
    return;
  }
  level--;
}

void PtyStream::cr() {
  fputc('\n', stream);
  fflush(stream);
  for (int i = 0; i < level; i++) fputs(indent, stream);
  column = level * static_cast<int>(strlen(indent));
}

void PtyStream::lf() {
  fputc('\n', stream);
  fflush(stream);
  column = 0;
}

void PtyStream::place(const char* piece, int n) {
  column += n;
  if (column >= width) {
    fputc('\n', stream);
    fflush(stream);
    column = n;
  }
  fwrite(piece, 1, n, stream);
}

void PtyStream::put(int n) {
  char buffer[32];
  place(buffer, snprintf(buffer, sizeof buffer, "%d", n));
}

void PtyStream::put(float x) {
  char buffer[512];
  place(buffer, snprintf(buffer, sizeof buffer, "%f", static_cast<double>(x)));
}

void PtyStream::put(const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  vput(fmt, ap);
  va_end(ap);
}

void PtyStream::vput(const char* fmt, va_list ap) {
  // A script is written a few words at a time: a text that fits is
  // formatted on the stack, not in a buffer asked of the allocator.
  char local[512];
  std::unique_ptr<char[]> heap;
  char* text = local;
  va_list again;
  va_copy(again, ap);
  int needed = vsnprintf(local, sizeof local, fmt, ap);
  if (needed >= static_cast<int>(sizeof local)) {
    heap.reset(new char[needed + 1]);
    text = heap.get();
    vsnprintf(text, needed + 1, fmt, again);
  }
  va_end(again);
  if (needed < 0) return;

  // Each piece ends at a '\n', a '\f' or the end of the text (which may
  // hold a '\0' of a %c; the text's own '\0' stops every scan at its end).
  const char* piece = text;
  const char* end = piece + needed;
  for (;;) {
    const char* stop = piece + strcspn(piece, "\n\f");
    while (stop < end && *stop == '\0') stop += 1 + strcspn(stop + 1, "\n\f");
    place(piece, static_cast<int>(stop - piece));
    if (stop == end) return;
    if (*stop == '\n') cr(); else lf();
    piece = stop + 1;
  }
}

void PtyStream::put(TmpPtyStream* t) {
  FILE* from = t->file();
  fflush(from);
  rewind(from);
  for (int c; (c = fgetc(from)) != EOF;) {
    if (c == '\n') cr();
    else if (c == '\f') lf();
    else fputc(c, stream);
  }
}

static FILE* open_temporary() {
  FILE* f = tmpfile();
  if (!f) {
    fputs("can't open temporary file\n", stderr);
    FatalExit();
  }
  return f;
}

TmpPtyStream::TmpPtyStream(int w, const char* ind) : PtyStream(open_temporary(), w, ind) {}
