// Writes values as compact JSON, keys sorted by code point. Any thread.
#pragma once

#include <string>

#include "json/value.h"

namespace quorvantis::json {

/// Strings are written as they are, with `"`, `\` and the characters below U+0020 escaped; reals in the
/// shortest form that reads back as the same real; data, which JSON does not have, as strings of hexadecimal
/// digits; NaN and the infinities, which it does not have either, as null.
std::string write(const Value& value);

/// The fewest digits that read back as the same real, "1" for 1.0; with an exponent below 1e-4 and from 1e16
/// on.
std::string shortest(double number);

}  // namespace quorvantis::json
