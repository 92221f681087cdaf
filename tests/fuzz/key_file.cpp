#include <cstdlib>

#include "physical_key/physical_key_manager.h"

// What is on a drive comes from anybody. No file may match a fingerprint that no secret has.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view contents(reinterpret_cast<const char*>(data), size);
  if (lunevra::PhysicalKeyManager::verifyKeyFile(contents, lunevra::Bytes(32))) std::abort();
  return 0;
}
