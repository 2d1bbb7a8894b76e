#include "io/file_identity.h"

#include "io/messages.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <filesystem>
#include <system_error>

namespace tool {

std::string resolveSymlinks(const std::string& file) {
  constexpr int mostLinks = 40;  // the limit of Linux
  std::filesystem::path name = file;
  for (int i = 0; i < mostLinks; ++i) {
    std::error_code error;
    const std::filesystem::path next = std::filesystem::read_symlink(name, error);
    struct statfs system;
    if (error || (statfs(name.parent_path().c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC)) {
      return name;
    }
    name = name.parent_path() / next;
  }
  return file;
}

std::optional<FileIdentity> identityOf(const std::string& file) {
  struct stat status;
  if (stat(file.c_str(), &status) == 0) {
    return S_ISREG(status.st_mode) ? std::optional(FileIdentity{status.st_dev, status.st_ino, ""}) : std::nullopt;
  }
  const std::filesystem::path name = resolveSymlinks(file);
  const std::filesystem::path directory = name.parent_path();
  if (stat(directory.empty() ? "." : directory.c_str(), &status) != 0) {
    return std::nullopt;
  }
  return FileIdentity{status.st_dev, status.st_ino, name.filename()};
}

std::set<FileIdentity> identitiesOf(const std::vector<std::string>& inputs) {
  std::set<FileIdentity> identities;
  for (const std::string& input : inputs) {
    if (const auto identity = identityOf(input == "-" ? "/dev/stdin" : input)) {
      identities.insert(*identity);
    }
  }
  return identities;
}

void requireNotAnInput(const std::string& output, const std::set<FileIdentity>& inputs) {
  const auto identity = identityOf(output);
  if (identity && inputs.contains(*identity)) {
    throw Failure("is one of the inputs", output);
  }
}

}  // namespace tool
