// FileIdentity: which file a name stands for, however it is written.
#pragma once

#include <sys/types.h>

#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace tool {

// The device and inode of the file, and an empty text; of a file that does not exist, those of its directory, and its
// name there. So it is equal for all names of one file: relative or absolute, through links and hard links.
using FileIdentity = std::tuple<dev_t, ino_t, std::string>;

// None for devices, FIFOs and the like, and where there is no such directory.
std::optional<FileIdentity> identityOf(const std::string& file);

// The name without links at its end: where a file is written under that name. A link of /proc that stands for an open
// file is left, since what it reads as is only that file's name.
std::string resolveSymlinks(const std::string& file);

// Of the files that are read; "-" is the standard input.
std::set<FileIdentity> identitiesOf(const std::vector<std::string>& inputs);

// Throws Failure, "is one of the inputs", when writing `output` would replace one of them.
void requireNotAnInput(const std::string& output, const std::set<FileIdentity>& inputs);

}  // namespace tool
