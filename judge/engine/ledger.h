// What a host has lent at one moment, to compare with another moment.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/host.h"

namespace flumo::judge {

/// Kinds of things that a host lends.
enum class Lent : uint8_t { kControl, kLayer, kDrawingObject, kSuite, kHandle, kLock };

/// How many of each are lent, by kind and, for suites, name and version. Kinds of which none is lent are
/// absent.
using Ledger = std::map<std::pair<Lent, std::string>, int>;

Ledger read_ledger(host::Host& host);

struct LedgerDifference {
    Lent kind;
    /// A sentence.
    std::string text;

    /// Whether it is memory alone, and no control, layer, suite or drawing object.
    bool is_memory() const { return kind == Lent::kHandle || kind == Lent::kLock; }
};

/// One for each kind of which more (or fewer) are lent than before.
std::vector<LedgerDifference> differences(const Ledger& before, const Ledger& after);

/// Takes the misuses that were noted since the last time.
std::vector<host::Misuse> take_misuses(host::Host& host);

}  // namespace flumo::judge
