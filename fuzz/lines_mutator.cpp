// Mutates JSON Lines: lines as such, and one of them as JSON.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/json_mutator.h"

namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> lines = linesOf(text);
  if (seed % 4 == 0 || lines.empty()) return LLVMFuzzerMutate(data, size, most);

  std::minstd_rand random(seed);
  const auto place = [&] { return static_cast<std::size_t>(random()) % lines.size(); };
  const std::size_t chosen = place();
  switch (random() % 8) {
    case 0:
      lines.push_back(lines[chosen]);
      break;
    case 1:
      std::swap(lines[chosen], lines[place()]);
      break;
    case 2:
      lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(chosen));
      break;
    default:
      lines[chosen] = quorvantis::fuzz::mutateJSON(lines[chosen], seed);
  }
  std::string mutated;
  for (const std::string& line : lines) mutated += line + '\n';
  if (mutated.size() > most) return LLVMFuzzerMutate(data, size, most);
  std::memcpy(data, mutated.data(), mutated.size());
  return mutated.size();
}
