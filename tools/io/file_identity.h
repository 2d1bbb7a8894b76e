// FileIdentity: tells whether two names are names of one file.
#pragma once

#include <sys/types.h>

#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace tool {

// Device, inode and an empty text. For a file that does not exist: device and inode of the directory, and the name.
using FileIdentity = std::tuple<dev_t, ino_t, std::string>;

// Returns nothing for special files, such as devices and FIFOs, and if the directory does not exist.
std::optional<FileIdentity> identityOf(const std::string& file);

// Follows symbolic links at the end of the name. Keeps links in /proc to open files, whose text may be no path.
std::string resolveSymlinks(const std::string& file);

// "-" is the standard input.
std::set<FileIdentity> identitiesOf(const std::vector<std::string>& inputs);

// Throws Failure if the output is one of the inputs.
void requireNotAnInput(const std::string& output, const std::set<FileIdentity>& inputs);

}  // namespace tool
