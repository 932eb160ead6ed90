// An explanation for people to read. Any thread.
#pragma once

#include <cstddef>
#include <vector>

#include "lint/explanation.h"
#include "lint/printer.h"

namespace quorvantis::lint {

inline constexpr std::size_t kSituationIndent = 2;

/// One section for each thing that happens.
void print(const std::vector<Explained>& explanation, Printer& printer);

}  // namespace quorvantis::lint
