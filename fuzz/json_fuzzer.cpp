// libFuzzer's hook, for those fuzzers whose input is one JSON text: now mutated as JSON, now as bytes.
#include <cstring>

#include "fuzz/json_mutator.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  if (seed % 4 != 0) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string mutated = quorvantis::fuzz::mutateJSON(text, seed);
    if (mutated != text && mutated.size() <= most) {
      std::memcpy(data, mutated.data(), mutated.size());
      return mutated.size();
    }
  }
  return LLVMFuzzerMutate(data, size, most);
}
