#include "judge/engine/ledger.h"

namespace flumo::judge {

namespace {

std::string name_of(Lent kind, const std::string& name) {
    switch (kind) {
        case Lent::kControl:
            return "control(s) checked out";
        case Lent::kLayer:
            return "layer(s) checked out";
        case Lent::kDrawingObject:
            return "drawing object(s)";
        case Lent::kSuite:
            return "acquisition(s) of " + name;
        case Lent::kHandle:
            return "handle(s)";
        case Lent::kLock:
            break;
    }
    return "lock(s) of handles";
}

}  // namespace

Ledger read_ledger(host::Host& host) {
    const host::Accounting& accounting = host.accounting();
    Ledger ledger;
    const auto enter = [&ledger](Lent kind, int count, const std::string& name = {}) {
        if (count != 0) ledger[{kind, name}] = count;
    };
    enter(Lent::kControl, accounting.lent(host::Lent::kParam));
    enter(Lent::kLayer, accounting.lent(host::Lent::kLayer));
    enter(Lent::kDrawingObject, accounting.lent(host::Lent::kDrawbotObject));
    for (const auto& [suite, count] : accounting.acquired_suites())
        enter(Lent::kSuite, count, suite.first + " " + std::to_string(suite.second));
    enter(Lent::kHandle, static_cast<int>(host.handles().live_count()));
    enter(Lent::kLock, static_cast<int>(host.handles().lock_count()));
    return ledger;
}

std::vector<LedgerDifference> differences(const Ledger& before, const Ledger& after) {
    Ledger change = after;
    for (const auto& [what, count] : before)
        change[what] -= count;
    std::vector<LedgerDifference> found;
    for (const auto& [what, count] : change) {
        const std::string thing = name_of(what.first, what.second);
        if (count > 0) found.push_back({what.first, std::to_string(count) + " " + thing + " not given back"});
        if (count < 0)
            found.push_back({what.first, std::to_string(-count) + " " + thing + " too many given back"});
    }
    return found;
}

std::vector<host::Misuse> take_misuses(host::Host& host) {
    std::vector<host::Misuse> misuses = host.accounting().misuses();
    host.accounting().forget_misuses();
    return misuses;
}

}  // namespace flumo::judge
