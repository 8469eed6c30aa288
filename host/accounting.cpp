#include "host/accounting.h"

#include <algorithm>
#include <sstream>

namespace flumo::host {

namespace {

constexpr size_t kMostEntries = 1000;
constexpr const char* kLentNames[] = {"control(s) checked out", "layer(s) checked out",
                                      "drawing object(s) alive"};
static_assert(std::size(kLentNames) == static_cast<size_t>(Lent::kCount));

template <class Entry>
void append(std::vector<Entry>& entries, Entry entry) {
    if (entries.size() < kMostEntries) entries.push_back(std::move(entry));
}

}  // namespace

bool Accounting::clean() const {
    return idle() && handles_.live_count() == 0;
}

bool Accounting::idle() const {
    const bool nothing_lent = std::ranges::all_of(lent_, [](const auto& count) { return count.load() == 0; });
    return nothing_lent && handles_.lock_count() == 0 && acquired_suites().empty();
}

std::string Accounting::describe() const {
    std::ostringstream text;
    for (const LiveHandle& handle : handles_.live()) {
        text << "handle " << handle.serial << " of " << handle.size << " bytes is alive, locked "
             << handle.locks << " times\n";
    }
    for (size_t i = 0; i < lent_.size(); ++i) {
        if (lent_[i] != 0) text << lent_[i] << ' ' << kLentNames[i] << '\n';
    }
    for (const auto& [suite, count] : acquired_suites()) {
        text << "suite \"" << suite.first << "\" version " << suite.second << " is acquired " << count
             << " times\n";
    }
    return text.str();
}

int Accounting::lent(Lent what) const {
    return lent_[static_cast<size_t>(what)];
}

std::map<std::pair<std::string, int>, int> Accounting::acquired_suites() const {
    std::lock_guard guard(mutex_);
    return suites_;
}

std::vector<Misuse> Accounting::misuses() const {
    std::lock_guard guard(mutex_);
    return misuses_;
}

std::vector<std::string> Accounting::misuse_texts() const {
    std::lock_guard guard(mutex_);
    std::vector<std::string> texts;
    for (const Misuse& misuse : misuses_)
        texts.push_back(misuse.text);
    return texts;
}

std::vector<std::string> Accounting::messages() const {
    std::lock_guard guard(mutex_);
    return messages_;
}

void Accounting::forget_misuses() {
    std::lock_guard guard(mutex_);
    misuses_.clear();
}

void Accounting::forget_messages() {
    std::lock_guard guard(mutex_);
    messages_.clear();
}

void Accounting::lend(Lent what) {
    ++lent_[static_cast<size_t>(what)];
}

void Accounting::take_back(Lent what) {
    --lent_[static_cast<size_t>(what)];
}

void Accounting::suite_acquired(const std::string& name, int version) {
    std::lock_guard guard(mutex_);
    ++suites_[{name, version}];
}

void Accounting::suite_released(const std::string& name, int version) {
    std::lock_guard guard(mutex_);
    const auto found = suites_.find({name, version});
    if (found == suites_.end()) {
        const std::string suite = "\"" + name + "\" version " + std::to_string(version);
        append(misuses_,
               Misuse{MisuseKind::kNotAcquired, "released suite " + suite + ", which is not acquired"});
    } else if (--found->second == 0) {
        suites_.erase(found);
    }
}

void Accounting::misuse(MisuseKind kind, std::string text) {
    std::lock_guard guard(mutex_);
    append(misuses_, Misuse{kind, std::move(text)});
}

void Accounting::message(std::string text) {
    std::lock_guard guard(mutex_);
    append(messages_, std::move(text));
}

}  // namespace flumo::host
