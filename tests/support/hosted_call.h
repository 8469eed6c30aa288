// The stand-in host in the middle of a command, so that a test can call any function of the effect as the
// effect itself would.
#pragma once

#include <utility>

#include "host/call.h"
#include "host/host.h"

namespace flumo::test {

/// For one thread, and one at a time.
struct HostedCall {
    explicit HostedCall(host::HostOptions options = {}, host::SuiteProvider* suites = nullptr)
        : host(module, std::move(options)), call(host, nullptr, suites), in_data(host.new_in_data()) {
        in_data.effect_ref = call.ref();
    }

    /// Nothing is borrowed but handles, and nothing that is none was given back.
    bool Tidy() const { return host.accounting().idle() && host.accounting().misuses().empty(); }

    /// The command is not sent: the test is the effect.
    const host::Module module{nullptr, nullptr};
    host::Host host;
    host::Call call;
    const host::CurrentCall current{call};
    PF_InData in_data;
    PF_OutData out_data{};
};

}  // namespace flumo::test
