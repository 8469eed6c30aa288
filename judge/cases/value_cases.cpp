// Level 2: the laws of arbitrary data; level 5: stored bytes that are damaged.
#include <algorithm>
#include <array>
#include <cstring>

#include "host/values/arbitrary_value.h"
#include "judge/cases/case_table.h"
#include "judge/engine/arbitrary_calls.h"
#include "judge/engine/stage.h"

namespace flumo::judge {

namespace {

using SharedValue = std::shared_ptr<host::ArbitraryValue>;

constexpr int kDamagedValues = 200;

/// A step for each control that holds arbitrary data, named after the control's place.
void for_each_control(Stage& stage, const std::string& name,
                      const std::function<void(const host::Control&)>& body) {
    for (const host::Control* control : arbitrary_controls(stage.host()))
        stage.step(name + "-" + std::to_string(control->index), [&] { body(*control); });
}

/// A default and a fresh value; what comes between them too.
std::array<SharedValue, 3> sample_values(host::Host& host, const host::Control& control) {
    const SharedValue standard = host::ArbitraryValue::default_of(host, control);
    const SharedValue fresh = host::ArbitraryValue::fresh(host, control);
    return {standard, fresh, host::ArbitraryValue::interpolate(*standard, *fresh, 0.5)};
}

bool equal(const host::ArbitraryValue& a, const host::ArbitraryValue& b) {
    return a.compare(b) == PF_ArbCompare_EQUAL;
}

void judge_copy(Stage& stage, const host::Control& control) {
    Trial& trial = stage.trial();
    SharedValue original = host::ArbitraryValue::default_of(stage.host(), control);
    const std::vector<std::byte> stored = original->flatten();
    SharedValue copy = original->copy();
    trial.expect(copy->handle() != original->handle(), "a handle of its own for a copy", "the original's");
    trial.expect(equal(*original, *copy), "a copy that equals its original", "another value");
    original.reset();
    // Whatever the copy still shared has now other contents.
    std::vector<SharedValue> others;
    for (int i = 0; i < 8; ++i)
        others.push_back(host::ArbitraryValue::fresh(stage.host(), control));
    trial.expect(copy->flatten() == stored, "a copy that outlives its original unchanged", "other contents");
}

void judge_stored(Stage& stage, const host::Control& control, const host::ArbitraryValue& value) {
    Trial& trial = stage.trial();
    host::Host& host = stage.host();
    const Announced announced = flat_size(host, control, value.handle());
    GuardedBytes buffer(announced.size);
    const PF_Err error = flatten_into(host, control, value.handle(), buffer);
    trial.expect(announced.error == PF_Err_NONE && error == PF_Err_NONE, "no error", host::error_name(error));
    trial.expect(buffer.guards_intact(), "no more bytes than announced, " + std::to_string(announced.size),
                 "writing behind them");
    const auto back =
        host::ArbitraryValue::unflatten(host, control, std::span(buffer.bytes).first(buffer.size));
    trial.expect(equal(value, *back) && equal(*back, value), "a stored value that comes back equal",
                 "another value");
    trial.expect(back->flatten() == value.flatten(), "the same bytes when stored again", "other bytes");
}

void judge_interpolation(Trial& trial, const host::ArbitraryValue& left, const host::ArbitraryValue& right) {
    trial.expect(equal(*host::ArbitraryValue::interpolate(left, right, 0), left), "the left value at 0",
                 "another value");
    for (const double t : {0.0, 0.25, 1.0}) {
        trial.expect(equal(*host::ArbitraryValue::interpolate(left, left, t), left),
                     "between two equal values the same value", "another at " + std::to_string(t));
    }
    const auto middle = host::ArbitraryValue::interpolate(left, right, 0.5);
    trial.expect(middle->handle() != left.handle() && middle->handle() != right.handle(),
                 "a handle of its own for a value between", "one of the two");
}

void judge_text(Stage& stage, const host::Control& control, const host::ArbitraryValue& value) {
    Trial& trial = stage.trial();
    const Announced announced = print_size(stage.host(), control, value.handle());
    GuardedBytes buffer(announced.size);
    const PF_Err error = print_into(stage.host(), control, value.handle(), buffer);
    trial.expect(announced.error == PF_Err_NONE && error == PF_Err_NONE, "no error", host::error_name(error));
    trial.expect(buffer.guards_intact(), "no more characters than announced", "writing behind them");
    const auto end = std::ranges::find(buffer.bytes, std::byte{0}) - buffer.bytes.begin();
    trial.expect(end + 1 == static_cast<std::ptrdiff_t>(announced.size),
                 "a text that fills the announced " + std::to_string(announced.size) + " bytes",
                 "an end after " + std::to_string(end) + " characters");
}

/// Any answer will do as long as it is an answer.
void scan(Stage& stage, const host::Control& control, const std::string& text) {
    try {
        host::ArbitraryValue::scan(stage.host(), control, text)->flatten();
    } catch (const host::HostError&) {
    }
}

/// Damaged bytes may be refused, or give some value; that value can then be worked with.
void take_damaged(Stage& stage, const host::Control& control, std::span<const std::byte> bytes) {
    SharedValue value;
    try {
        value = host::ArbitraryValue::unflatten(stage.host(), control, bytes);
    } catch (const host::HostError&) {
        return;
    }
    value->print();
    const SharedValue again = host::ArbitraryValue::unflatten(stage.host(), control, value->flatten());
    stage.trial().expect(again->flatten() == value->flatten(),
                         "a value of damaged bytes to be stored and read again", "another value");
    static_cast<void>(host::ArbitraryValue::interpolate(*value, *again, 0.5)->compare(*value));
}

std::vector<std::byte> damaged(std::vector<std::byte> bytes, std::mt19937_64& random) {
    bytes.resize(static_cast<std::size_t>(between(random, 0, static_cast<int>(bytes.size()) + 16)));
    for (int i = between(random, 1, 8); i > 0 && !bytes.empty(); --i)
        bytes[random() % bytes.size()] = static_cast<std::byte>(random());
    return bytes;
}

}  // namespace

void play_copies(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        for_each_control(stage, "copy", [&](const host::Control& control) { judge_copy(stage, control); });
    });
}

void play_stored_values(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        for_each_control(stage, "stored", [&](const host::Control& control) {
            for (const SharedValue& value : sample_values(stage.host(), control))
                judge_stored(stage, control, *value);
        });
    });
}

void play_interpolation(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        for_each_control(stage, "between", [&](const host::Control& control) {
            const auto values = sample_values(stage.host(), control);
            judge_interpolation(stage.trial(), *values[0], *values[1]);
            judge_interpolation(stage.trial(), *values[1], *values[0]);
        });
    });
}

void play_comparison(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        for_each_control(stage, "compared", [&](const host::Control& control) {
            const auto values = sample_values(stage.host(), control);
            for (const SharedValue& a : values) {
                stage.trial().expect(equal(*a, *a), "a value that equals itself", "it does not");
                for (const SharedValue& b : values) {
                    stage.trial().expect(equal(*a, *b) == equal(*b, *a),
                                         "the same answer for both orders of two values", "two answers");
                }
            }
        });
    });
}

void play_value_texts(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        for_each_control(stage, "printed", [&](const host::Control& control) {
            for (const SharedValue& value : sample_values(stage.host(), control))
                judge_text(stage, control, *value);
        });
        for_each_control(stage, "scanned", [&](const host::Control& control) {
            const std::string own = host::ArbitraryValue::default_of(stage.host(), control)->print();
            for (const std::string& text : {own, std::string(), own.substr(0, own.size() / 2),
                                            std::string("%s%n"), std::string(5000, 'x')})
                scan(stage, control, text);
        });
    });
}

void play_refusals(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        for_each_control(stage, "selector", [&](const host::Control& control) {
            for (const PF_FunctionSelector selector : {-1, 11, 1000}) {
                const PF_Err error = call_arbitrary(stage.host(), control, selector, [](auto&) {});
                stage.trial().expect(error != PF_Err_NONE,
                                     "an error for selector " + std::to_string(selector), "none");
            }
        });
    });
}

void play_hostile_values(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        const auto stored = [&](const host::Control& control) {
            return host::ArbitraryValue::default_of(stage.host(), control)->flatten();
        };
        for_each_control(stage, "truncated", [&](const host::Control& control) {
            const std::vector<std::byte> bytes = stored(control);
            for (std::size_t size = 0; size < bytes.size(); ++size)
                take_damaged(stage, control, std::span(bytes).first(size));
        });
        for_each_control(stage, "damaged", [&](const host::Control& control) {
            std::mt19937_64 random = stage.trial().random("damaged");
            for (int i = 0; i < kDamagedValues; ++i)
                take_damaged(stage, control, damaged(stored(control), random));
        });
    });
}

}  // namespace flumo::judge
