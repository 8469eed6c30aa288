// The module with a host around it, for the length of a case.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/host.h"
#include "host/instance.h"
#include "judge/engine/case_context.h"
#include "judge/engine/ledger.h"

namespace flumo::judge {

class Fixture {
  public:
    /// Loads the module. Throws ModuleError.
    explicit Fixture(CaseContext& context, host::HostOptions options = {});

    CaseContext& context() { return context_; }
    host::Host& host() { return host_; }

    /// Sets the module up. Throws HostError.
    void start();
    /// A step of the context, which must give back at its end all that was lent in it, without a misuse.
    void step(const std::string& name, const std::function<void()>& body);

    /// What is lent now beyond the state after set-up counts as lost and reported: set-down need not give it
    /// back.
    void write_off_losses();
    /// The last step.
    void set_down();

    /// Whether a bit of the effect's second flags is set.
    bool has_flag2(PF_OutFlags2 flag) const { return (host_.identity().flags2 & flag) != 0; }
    bool has_flag(PF_OutFlags flag) const { return (host_.identity().flags & flag) != 0; }

  private:
    CaseContext& context_;
    host::Module module_;
    host::Host host_;
    Ledger at_start_;
    Ledger lost_;
};

/// Sets the module up, plays `body`, sets it down and judges that nothing is left.
void with_fixture(CaseContext& context, const std::function<void(Fixture&)>& body,
                  host::HostOptions options = {});

/// The controls that hold arbitrary data. Throws Skipped when there is none.
std::vector<const host::Control*> arbitrary_controls(host::Host& host);
/// A step "NAME-INDEX" for each of them.
void for_each_arbitrary(Fixture& fixture, const std::string& name,
                        const std::function<void(const host::Control&)>& body);
/// The controls that draw themselves. Throws Skipped when there is none.
std::vector<const host::Control*> drawn_controls(host::Host& host);

}  // namespace flumo::judge
