// How often the process has asked the disk for durability, in the program that links fsyncs.cpp. Any thread.
#pragma once

namespace quorvantis::bench {

int fsyncs();

}  // namespace quorvantis::bench
