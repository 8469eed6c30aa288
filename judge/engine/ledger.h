// What a host has lent out at one moment, to compare with another moment.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/host.h"

namespace flumo::judge {

/// By name of the thing, such as "handle(s)": how many are out. Things of which none is out are absent.
using Ledger = std::map<std::string, int>;

Ledger read_ledger(host::Host& host);

/// A line for each thing of which more (or fewer) are out than before.
std::vector<std::string> differences(const Ledger& before, const Ledger& after);

/// Whether the thing is memory, which the host can do without, and no control, layer, suite or object.
bool is_memory(const std::string& difference);

/// Takes the misuses that were noted since the last time.
std::vector<std::string> take_misuses(host::Host& host);

/// Whether the effect handed a null that the host gave it back to the host, which refused it.
bool is_null_handed_on(const std::string& misuse);

/// Whether the effect gave back something that it did not have, which happens where a clean-up runs in full
/// after a failure.
bool is_needless_return(const std::string& misuse);

}  // namespace flumo::judge
