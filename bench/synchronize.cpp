// One flush of the user defaults with seven changed values, as a registration makes it, and with none.
#include "bench/pairs.h"
#include "bench/phone.h"
#include "bench/plain_settings.h"
#include "bench/seven_settings.h"

namespace quorvantis::bench {

void registerSynchronize() {
  const std::string row = "synchronize, seven values changed";
  measureWaiting(row, "library", [round = 0]() mutable {
    storeSeven(++round);
    platform::NSUserDefaults::standardUserDefaults().synchronize();
    if (round % 64 == 0) Phone::only().forget();
  });
  measureWaiting(row, "SQLite", [round = 0]() mutable {
    static PlainSettings settings(Phone::only().folder.path() / "plain.sqlite");
    settings.commit(sevenRows(++round));
  });
}

}  // namespace quorvantis::bench
