#include "platform/linux/mount_table.h"

#include <cstdlib>
#include <set>

// Labels become paths, and paths are other people's. Every volume has an absolute path of its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view table(reinterpret_cast<const char*>(data), size);
  std::set<std::string> paths;
  for (const auto& volume : lunevra::parseMountTable(table))
    if (!volume.path.starts_with('/') || !paths.insert(volume.path).second) std::abort();
  return 0;
}
