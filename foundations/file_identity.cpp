// file_identity.cpp -- names compared as the system resolves them.
#include "foundations/file_identity.h"

#include <limits.h>
#include <sys/stat.h>

#include <cstdlib>

namespace {

// A file that does not exist yet: its directory resolved, then its name.
std::string future_name(const std::string& path) {
  size_t slash = path.rfind('/');
  std::string dir = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
  std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  char buffer[PATH_MAX];
  if (!realpath(dir.c_str(), buffer)) return path;
  return std::string(buffer) + "/" + name;
}

bool same_regular(const struct stat& a, const struct stat& b) {
  return S_ISREG(a.st_mode) && S_ISREG(b.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

bool same_file(const std::string& a, const std::string& b) {
  struct stat sa, sb;
  bool a_exists = stat(a.c_str(), &sa) == 0, b_exists = stat(b.c_str(), &sb) == 0;
  if (a_exists && b_exists) return same_regular(sa, sb);
  if (a_exists || b_exists) return false;
  return future_name(a) == future_name(b);
}

bool names_descriptor(const std::string& path, int fd) {
  struct stat sp, sd;
  return stat(path.c_str(), &sp) == 0 && fstat(fd, &sd) == 0 && same_regular(sp, sd);
}
