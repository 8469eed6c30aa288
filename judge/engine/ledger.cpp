#include "judge/engine/ledger.h"

namespace flumo::judge {

namespace {

constexpr const char* kHandles = "handle(s)";
constexpr const char* kLocks = "lock(s) of handles";

void enter(Ledger& ledger, const std::string& what, int count) {
    if (count != 0) ledger[what] = count;
}

}  // namespace

Ledger read_ledger(host::Host& host) {
    const host::Accounting& accounting = host.accounting();
    Ledger ledger;
    enter(ledger, "control(s) checked out", accounting.lent(host::Lent::kParam));
    enter(ledger, "layer(s) checked out", accounting.lent(host::Lent::kLayer));
    enter(ledger, "drawing object(s)", accounting.lent(host::Lent::kDrawbotObject));
    for (const auto& [suite, count] : accounting.acquired_suites())
        enter(ledger, "acquisition(s) of " + suite.first + " " + std::to_string(suite.second), count);
    enter(ledger, kHandles, static_cast<int>(host.handles().live_count()));
    enter(ledger, kLocks, static_cast<int>(host.handles().lock_count()));
    return ledger;
}

std::vector<std::string> differences(const Ledger& before, const Ledger& after) {
    Ledger change = after;
    for (const auto& [what, count] : before)
        change[what] -= count;
    std::vector<std::string> lines;
    for (const auto& [what, count] : change) {
        if (count > 0) lines.push_back(std::to_string(count) + " " + what + " not given back");
        if (count < 0) lines.push_back(std::to_string(-count) + " " + what + " too many given back");
    }
    return lines;
}

bool is_memory(const std::string& difference) {
    return difference.find(kHandles) != std::string::npos || difference.find(kLocks) != std::string::npos;
}

std::vector<std::string> take_misuses(host::Host& host) {
    std::vector<std::string> misuses = host.accounting().misuses();
    host.accounting().forget_misuses();
    return misuses;
}

bool is_null_handed_on(const std::string& misuse) {
    return misuse.starts_with("drew with a reference ") || misuse.starts_with("used a drawing object ");
}

bool is_needless_return(const std::string& misuse) {
    return misuse.starts_with("checked in ") || misuse.starts_with("released suite ") ||
           misuse == "unlocked a handle that is not locked";
}

}  // namespace flumo::judge
