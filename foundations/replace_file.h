// replace_file.h -- writing a user's file so that it is never lost: the new
// text goes to a temporary file beside it, which is renamed over the old
// one only once it is whole; an old file with other contents is kept as
// "<path>~".
#ifndef FOUNDATIONS_REPLACE_FILE_H
#define FOUNDATIONS_REPLACE_FILE_H

#include <string>

enum class ReplaceResult {
  kWritten,     // there was no file, or one with the same text
  kKeptOld,     // written; the former file, which differed, is now "<path>~"
  kCannotOpen,  // no temporary file could be made beside `path`: nothing changed
  kCannotWrite  // writing, keeping the former file or renaming failed: nothing changed
};

// Makes `text` the contents of `path`. The new file takes the former one's
// permissions, or the usual ones for a new file. A former "<path>~" is
// replaced by the file kept. Whatever fails, `path` holds either its former
// text or the whole new one, and no temporary file is left.
ReplaceResult replace_file(const std::string& path, const std::string& text);

#endif
