// replace_file.cpp -- the temporary file is made in the directory of the
// target, so that the final rename stays within one file system and is
// atomic. The former file is kept by a hard link made before the rename:
// at no moment is there no file under the user's name.
#include "foundations/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

bool write_all(int fd, const std::string& text) {
  size_t done = 0;
  while (done < text.size()) {
    ssize_t n = write(fd, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += static_cast<size_t>(n);
  }
  return true;
}

bool has_text(const std::string& path, const std::string& text) {
  FILE* f = fopen(path.c_str(), "r");
  if (!f) return false;
  std::string old;
  char buffer[4096];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, f)) > 0;) old.append(buffer, n);
  fclose(f);
  return old == text;
}

mode_t new_file_mode() {
  mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

ReplaceResult replace_file(const std::string& path, const std::string& text) {
  std::string temp = path + ".XXXXXX";
  int fd = mkstemp(&temp[0]);
  if (fd < 0) return ReplaceResult::kCannotOpen;
  struct stat old;
  bool exists = stat(path.c_str(), &old) == 0;
  bool ok = write_all(fd, text) && fsync(fd) == 0 &&
            fchmod(fd, exists ? (old.st_mode & 07777) : new_file_mode()) == 0;
  ok = close(fd) == 0 && ok;
  bool keep = ok && exists && !has_text(path, text);
  if (keep) {
    std::string kept = path + "~";
    unlink(kept.c_str());
    ok = link(path.c_str(), kept.c_str()) == 0;
  }
  if (ok) ok = rename(temp.c_str(), path.c_str()) == 0;
  if (!ok) {
    unlink(temp.c_str());
    return ReplaceResult::kCannotWrite;
  }
  return keep ? ReplaceResult::kKeptOld : ReplaceResult::kWritten;
}
