// A value of an arbitrary-data control, used through the effect's own callbacks.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "effect_api/arbitrary.h"
#include "host/module/command_sender.h"
#include "host/values/control.h"

namespace flumo::host {

/// Owns one handle; its end asks the effect to dispose of it, so it must not outlive the Host. Every
/// operation throws HostError when the effect reports an error or gives no handle.
class ArbitraryValue {
  public:
    /// Takes over a handle that the effect made for this control.
    ArbitraryValue(CommandSender& sender, const Control& control, PF_ArbitraryH handle);
    ~ArbitraryValue();
    ArbitraryValue(const ArbitraryValue&) = delete;
    ArbitraryValue& operator=(const ArbitraryValue&) = delete;

    /// The effect's new value, which is not the control's default.
    static std::shared_ptr<ArbitraryValue> fresh(CommandSender& sender, const Control& control);
    /// A copy of the default that the control was registered with; a new value without one.
    static std::shared_ptr<ArbitraryValue> default_of(CommandSender& sender, const Control& control);
    static std::shared_ptr<ArbitraryValue> unflatten(CommandSender& sender, const Control& control,
                                                     std::span<const std::byte> bytes);
    /// What the effect scans from a text.
    static std::shared_ptr<ArbitraryValue> scan(CommandSender& sender, const Control& control,
                                                const std::string& text);
    /// Between left (t = 0) and right (t = 1).
    static std::shared_ptr<ArbitraryValue> interpolate(const ArbitraryValue& left,
                                                       const ArbitraryValue& right, double t);

    std::shared_ptr<ArbitraryValue> copy() const;
    /// The form that projects store.
    std::vector<std::byte> flatten() const;
    PF_ArbCompareResult compare(const ArbitraryValue& other) const;
    /// The effect's text form.
    std::string print() const;

    PF_ArbitraryH handle() const { return handle_; }
    const Control& control() const { return control_; }

  private:
    CommandSender& sender_;
    const Control& control_;
    PF_ArbitraryH handle_;
};

}  // namespace flumo::host
