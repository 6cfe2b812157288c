// replace_file.h -- writing a user's file so that it is never lost nor left
// half written: the new text goes to a temporary file made exclusively
// beside it (a name no one can guess or have made before), which is renamed
// over the target only once it is whole. Until then the target keeps its
// former contents; a failure or an abandon removes the temporary file.
#ifndef FOUNDATIONS_REPLACE_FILE_H
#define FOUNDATIONS_REPLACE_FILE_H

#include <cstdio>
#include <string>

enum class ReplaceResult {
  kWritten,     // there was no file, or one with the same text
  kKeptOld,     // written; the former file, which differed, is now "<path>~"
  kCannotOpen,  // no temporary file could be made beside `path`: nothing changed
  kCannotWrite  // writing, keeping the former file or renaming failed: nothing changed
};

// A file being replaced. A target that exists and is not a regular file
// (/dev/null, a terminal, a pipe) cannot be renamed over: it is written
// directly. A symbolic link is followed: the file it names is replaced.
class FileReplacement {
 public:
  FileReplacement() = default;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  // Abandons the replacement unless it was committed.
  ~FileReplacement();

  // Opens the stream that will become `path`: false, with errno set, when
  // it cannot be made. The new file takes the former one's permissions, or
  // the usual ones for a new file.
  bool open(const std::string& path);
  // Writes to `shared` (standard output), which commit() flushes but leaves
  // open.
  void open_shared(FILE* shared);
  // The stream to write to, null before open().
  FILE* file() const { return stream; }
  // Flushes and closes the stream, then puts the file in place; with
  // `keep_old`, a former file whose text differs is kept as "<path>~" (a
  // former "<path>~" is replaced). kCannotWrite, with errno set, when any
  // of it failed: the target is then as it was.
  ReplaceResult commit(bool keep_old);
  // Closes the stream and removes the temporary file: the target stays as
  // it was (a device written directly keeps what it was given).
  void abandon();

 private:
  FILE* stream = nullptr;
  std::string target;    // the file replaced, links resolved
  std::string temporary;  // empty when the target is written directly
  bool existed = false;
  bool shared = false;  // the stream is not ours to close
};

// Makes `text` the contents of `path` through a FileReplacement, keeping a
// former file that differs as "<path>~". Whatever fails, `path` holds either
// its former text or the whole new one, and no temporary file is left.
ReplaceResult replace_file(const std::string& path, const std::string& text);

#endif
