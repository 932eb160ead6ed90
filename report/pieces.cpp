#include "report/pieces.h"

#include <sstream>

namespace quorvantis::report {

std::string packed(const Pieces& pieces) {
  const PayloadTotals& totals = pieces.totals;
  std::ostringstream bytes;
  bytes << totals.files << ' ' << totals.unreadable << ' ' << totals.errors << ' ' << totals.warnings << ' '
        << totals.notes << ' ' << pieces.reports.size() << '\n'
        << pieces.reports << pieces.notices;
  return bytes.str();
}

Pieces unpacked(const std::string& bytes) {
  Pieces pieces;
  PayloadTotals& totals = pieces.totals;
  std::size_t size = 0;
  const std::size_t header = bytes.find('\n') + 1;
  std::istringstream(bytes.substr(0, header)) >> totals.files >> totals.unreadable >> totals.errors >>
      totals.warnings >> totals.notes >> size;
  pieces.reports = bytes.substr(header, size);
  pieces.notices = bytes.substr(header + size);
  return pieces;
}

}  // namespace quorvantis::report
