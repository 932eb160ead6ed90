// Another implementation opens what ours seals, and the other way round.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "jose/jwe.h"

namespace quorvantis::jose {
namespace {

const std::string kKey = "k3y!with-punctuation@0123456789^";

/// What the script makes of the text.
std::string script(const std::string& direction, const std::string& input) {
  const std::string base = testing::TempDir() + "jose_interop";
  std::ofstream(base + ".in", std::ios::binary) << input;
  const std::string command = std::string(QUORVANTIS_PYTHON) + " '" + QUORVANTIS_JOSE_SCRIPT + "' " +
                              direction + " '" + kKey + "' < " + base + ".in > " + base + ".out";
  EXPECT_EQ(std::system(command.c_str()), 0);
  std::ifstream output(base + ".out", std::ios::binary);
  return {std::istreambuf_iterator<char>(output), {}};
}

TEST(JoseInterop, BothWays) {
  for (const std::string& body : {std::string("&tarea=pushlibRegistrarToken&token=0a&jsonGeo={\"ñ\":1}"),
                                  std::string("\0\xFF\r\n", 4), std::string(50'000, 'a')}) {
    EXPECT_EQ(script("open", seal(body, kKey)), body);
    EXPECT_EQ(open(script("seal", body), kKey), body);
  }
  EXPECT_EQ(open(script("seal", {}), kKey), "");  // the other one opens no empty body
}

}  // namespace
}  // namespace quorvantis::jose
