// replace_file.cpp -- the temporary file is made in the directory of the
// target, so that the final rename stays within one file system and is
// atomic. The former file is kept by a hard link made before the rename:
// at no moment is there no file under the user's name.
#include "foundations/replace_file.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace {

bool has_text(const std::string& path, FILE* written) {
  FILE* f = fopen(path.c_str(), "r");
  if (!f) return false;
  rewind(written);
  bool same = true;
  for (int a, b; same;) {
    a = getc(f);
    b = getc(written);
    same = a == b;
    if (a == EOF) break;
  }
  fclose(f);
  return same;
}

mode_t new_file_mode() {
  mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// The file a link names: rename() would replace the link itself.
std::string resolved(const std::string& path) {
  char buffer[PATH_MAX];
  struct stat st;
  if (lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode) && realpath(path.c_str(), buffer)) return buffer;
  return path;
}

}  // namespace

FileReplacement::~FileReplacement() { abandon(); }

bool FileReplacement::open(const std::string& path) {
  abandon();
  target = resolved(path);
  shared = false;
  struct stat old;
  existed = stat(target.c_str(), &old) == 0;
  if (existed && !S_ISREG(old.st_mode)) {
    temporary.clear();
    stream = fopen(target.c_str(), "w");
    return stream != nullptr;
  }
  temporary = target + ".XXXXXX";
  int fd = mkstemp(&temporary[0]);
  if (fd < 0) {
    temporary.clear();
    return false;
  }
  if (fchmod(fd, existed ? (old.st_mode & 07777) : new_file_mode()) != 0 || !(stream = fdopen(fd, "w+"))) {
    int saved = errno;
    close(fd);
    unlink(temporary.c_str());
    temporary.clear();
    errno = saved;
    return false;
  }
  return true;
}

void FileReplacement::open_shared(FILE* f) {
  abandon();
  stream = f;
  shared = true;
}

ReplaceResult FileReplacement::commit(bool keep_old) {
  if (!stream) return ReplaceResult::kCannotWrite;
  int error = 0;  // the first failure's errno
  auto check = [&error](bool good) {
    if (!good && !error) error = errno ? errno : EIO;
    return error == 0;
  };
  errno = 0;
  check(fflush(stream) == 0 && !ferror(stream));
  if (!temporary.empty()) check(fsync(fileno(stream)) == 0);
  bool keep = !error && keep_old && existed && !temporary.empty() && !has_text(target, stream);
  if (!shared) check(fclose(stream) == 0);
  stream = nullptr;
  if (!temporary.empty()) {
    if (keep) {
      std::string kept = target + "~";
      unlink(kept.c_str());
      check(link(target.c_str(), kept.c_str()) == 0);
    }
    if (!error) check(rename(temporary.c_str(), target.c_str()) == 0);
    if (error) unlink(temporary.c_str());
    temporary.clear();
  }
  errno = error;
  if (error) return ReplaceResult::kCannotWrite;
  return keep ? ReplaceResult::kKeptOld : ReplaceResult::kWritten;
}

void FileReplacement::abandon() {
  if (stream && !shared) fclose(stream);
  stream = nullptr;
  shared = false;
  if (!temporary.empty()) unlink(temporary.c_str());
  temporary.clear();
}

ReplaceResult replace_file(const std::string& path, const std::string& text) {
  FileReplacement file;
  if (!file.open(path)) return ReplaceResult::kCannotOpen;
  fwrite(text.data(), 1, text.size(), file.file());
  return file.commit(true);
}
