#include "judge/engine/case_context.h"

#include <nlohmann/json.hpp>

#include "host/module/host_error.h"
#include "judge/engine/case.h"

namespace flumo::judge {

namespace {

/// FNV-1a, which is the same on every machine.
uint64_t hash_of(const std::string& text) {
    uint64_t hash = 0xCBF29CE484222325;
    for (const char c : text)
        hash = (hash ^ static_cast<uint8_t>(c)) * 0x100000001B3;
    return hash;
}

/// Texts of an effect may contain any bytes.
std::string line(const nlohmann::json& object) {
    return object.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

}  // namespace

CaseContext::CaseContext(Subject subject, StepChoice choice, WriteLine write)
    : subject_(std::move(subject)), choice_(std::move(choice)), write_(std::move(write)) {}

bool CaseContext::is_chosen(const std::string& name) {
    if (choice_.only) return *choice_.only == name;
    if (!choice_.after) return true;
    if (*choice_.after == name) choice_.after.reset();
    return false;
}

void CaseContext::guarded(const std::function<void()>& body) {
    try {
        body();
    } catch (const Skipped&) {
        throw;
    } catch (const host::HostError& error) {
        finding("the effect to do it", error.what());
    } catch (const std::exception& error) {
        finding("nothing that the host cannot go on with", error.what());
    }
}

void CaseContext::step(const std::string& name, const std::function<void()>& body) {
    if (!is_chosen(name)) return;
    write_(line({{"step", name}}));
    guarded(body);
}

void CaseContext::report(const char* kind, const std::string& expected, const std::string& seen) {
    write_(line({{kind, {{"expected", expected}, {"seen", seen}}}}));
}

void CaseContext::expect(bool holds, const std::string& expected, const std::string& seen) {
    if (!holds) finding(expected, seen);
}

void CaseContext::finding(const std::string& expected, const std::string& seen) {
    report("finding", expected, seen);
}

void CaseContext::note(const std::string& expected, const std::string& seen) {
    report("note", expected, seen);
}

std::mt19937_64 CaseContext::random(const std::string& name) const {
    return std::mt19937_64(subject_.seed ^ hash_of(name));
}

void CaseContext::play(const Case& played) {
    try {
        guarded([&] { played.play(*this); });
    } catch (const Skipped& skipped) {
        write_(line({{"skipped", skipped.why}}));
    }
    write_(line({{"done", true}}));
}

}  // namespace flumo::judge
