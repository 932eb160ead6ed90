#include "base/real.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#ifndef __cpp_lib_to_chars  // libc++: no std::from_chars for reals before 20
#include <cstdlib>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#else
#include <clocale>
#endif
#endif

namespace quorvantis::base {

namespace {

#ifdef __cpp_lib_to_chars

/// Whether all of the text was read.
bool read(std::string_view text, double& real) {
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, real);
  if (error != std::errc::result_out_of_range) return error == std::errc() && end == last;
  // The same failure means too large and too close to zero; a wider type tells them apart.
  long double wide = 0;
  std::from_chars(text.data(), last, wide);
  real = std::copysign(std::fabs(wide) > 1 ? std::numeric_limits<double>::infinity() : 0.0,
                       text.front() == '-' ? -1.0 : 1.0);
  return end == last;
}

#else

bool read(std::string_view text, double& real) {
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  const std::string terminated(text);
  char* end = nullptr;
  real = strtod_l(terminated.c_str(), &end, plain);
  return end == terminated.c_str() + terminated.size();
}

#endif

}  // namespace

std::optional<double> realFrom(std::string_view text) {
  if (text.empty() || text.front() == '+') return std::nullopt;
  if (text.find_first_not_of("0123456789+-.eE") != std::string_view::npos) return std::nullopt;
  double real = 0;
  if (!read(text, real)) return std::nullopt;
  return real;
}

}  // namespace quorvantis::base
