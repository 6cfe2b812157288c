// file_identity.h -- whether two names mean one file, for the tools that
// must not write over what they read: by device and inode for files that
// exist, by their directory (links resolved) and name for files about to
// be made, so that "a.csv" and "./a.csv" are one file before either exists.
#ifndef FOUNDATIONS_FILE_IDENTITY_H
#define FOUNDATIONS_FILE_IDENTITY_H

#include <string>

// True when `a` and `b` name one regular file, existing or not yet made.
// Devices and pipes (/dev/null) are never the same file: writing one does
// not destroy what another name reads.
bool same_file(const std::string& a, const std::string& b);
// True when `path` names the regular file open on descriptor `fd`.
bool names_descriptor(const std::string& path, int fd);

#endif
