// Level 2: the rules of arbitrary data; level 5: stored bytes that are damaged.
#include <algorithm>
#include <array>
#include <cstring>

#include "host/values/arbitrary_value.h"
#include "judge/cases/case_table.h"
#include "judge/engine/arbitrary_calls.h"
#include "judge/engine/fixture.h"

namespace flumo::judge {

namespace {

using SharedValue = std::shared_ptr<host::ArbitraryValue>;

constexpr int kDamagedValues = 200;
constexpr int kForeignBytes = 32;

/// A default value, a new one, and interpolations between them.
std::array<SharedValue, 3> sample_values(host::Host& host, const host::Control& control) {
    const SharedValue standard = host::ArbitraryValue::default_of(host, control);
    const SharedValue fresh = host::ArbitraryValue::fresh(host, control);
    return {standard, fresh, host::ArbitraryValue::interpolate(*standard, *fresh, 0.5)};
}

bool equal(const host::ArbitraryValue& a, const host::ArbitraryValue& b) {
    return a.compare(b) == PF_ArbCompare_EQUAL;
}

void judge_copy(Fixture& fixture, const host::Control& control) {
    CaseContext& context = fixture.context();
    SharedValue original = host::ArbitraryValue::default_of(fixture.host(), control);
    const std::vector<std::byte> stored = original->flatten();
    SharedValue copy = original->copy();
    context.expect(copy->handle() != original->handle(), "a handle of its own for a copy", "the original's");
    context.expect(equal(*original, *copy), "a copy that equals its original", "another value");
    original.reset();
    // What the copy shared with the original has now other contents.
    std::vector<SharedValue> others;
    for (int i = 0; i < 8; ++i)
        others.push_back(host::ArbitraryValue::fresh(fixture.host(), control));
    context.expect(copy->flatten() == stored, "a copy that outlives its original unchanged",
                   "other contents");
}

void judge_stored(Fixture& fixture, const host::Control& control, const host::ArbitraryValue& value) {
    CaseContext& context = fixture.context();
    host::Host& host = fixture.host();
    const Announced announced = flat_size(host, control, value.handle());
    GuardedBytes buffer(announced.size);
    const PF_Err error = flatten_into(host, control, value.handle(), buffer);
    context.expect(announced.error == PF_Err_NONE && error == PF_Err_NONE, "no error",
                   host::error_name(error));
    context.expect(buffer.guards_intact(), "no more bytes than announced, " + std::to_string(announced.size),
                   "writing after them");
    const auto back =
        host::ArbitraryValue::unflatten(host, control, std::span(buffer.bytes).first(buffer.size));
    context.expect(equal(value, *back) && equal(*back, value), "a stored value that comes back equal",
                   "another value");
    context.expect(back->flatten() == value.flatten(), "the same bytes when stored again", "other bytes");
}

void judge_interpolation(CaseContext& context, const host::ArbitraryValue& left,
                         const host::ArbitraryValue& right) {
    context.expect(equal(*host::ArbitraryValue::interpolate(left, right, 0), left), "the left value at 0",
                   "another value");
    for (const double t : {0.0, 0.25, 1.0}) {
        context.expect(equal(*host::ArbitraryValue::interpolate(left, left, t), left),
                       "between two equal values the same value", "another at " + std::to_string(t));
    }
    const auto middle = host::ArbitraryValue::interpolate(left, right, 0.5);
    context.expect(middle->handle() != left.handle() && middle->handle() != right.handle(),
                   "a handle of its own for a value between", "one of the two");
}

void judge_text(Fixture& fixture, const host::Control& control, const host::ArbitraryValue& value) {
    CaseContext& context = fixture.context();
    const Announced announced = print_size(fixture.host(), control, value.handle());
    GuardedBytes buffer(announced.size);
    const PF_Err error = print_into(fixture.host(), control, value.handle(), buffer);
    context.expect(announced.error == PF_Err_NONE && error == PF_Err_NONE, "no error",
                   host::error_name(error));
    context.expect(buffer.guards_intact(), "no more characters than announced", "writing after them");
    const auto end = std::ranges::find(buffer.bytes, std::byte{0}) - buffer.bytes.begin();
    context.expect(end + 1 == static_cast<std::ptrdiff_t>(announced.size),
                   "a text that fills the announced " + std::to_string(announced.size) + " bytes",
                   "an end after " + std::to_string(end) + " characters");
}

/// Any result is accepted as long as the command returns.
void scan(Fixture& fixture, const host::Control& control, const std::string& text) {
    try {
        host::ArbitraryValue::scan(fixture.host(), control, text)->flatten();
    } catch (const host::HostError&) {
    }
}

/// Damaged bytes may be refused, or give any value, with which all callbacks then work.
void take_damaged(Fixture& fixture, const host::Control& control, std::span<const std::byte> bytes) {
    SharedValue value;
    try {
        value = host::ArbitraryValue::unflatten(fixture.host(), control, bytes);
    } catch (const host::HostError&) {
        return;
    }
    value->print();
    const SharedValue again = host::ArbitraryValue::unflatten(fixture.host(), control, value->flatten());
    fixture.context().expect(again->flatten() == value->flatten(),
                             "a value of damaged bytes to be stored and read again", "another value");
    static_cast<void>(host::ArbitraryValue::interpolate(*value, *again, 0.5)->compare(*value));
}

/// Bytes after the end are no part of the value. An effect may refuse them.
void take_extended(Fixture& fixture, const host::Control& control, std::vector<std::byte> bytes, int more,
                   std::mt19937_64& random) {
    const SharedValue plain = host::ArbitraryValue::unflatten(fixture.host(), control, bytes);
    for (int i = 0; i < more; ++i)
        bytes.push_back(static_cast<std::byte>(random()));
    try {
        const SharedValue extended = host::ArbitraryValue::unflatten(fixture.host(), control, bytes);
        fixture.context().expect(equal(*extended, *plain), "the value without the bytes after its end",
                                 "another value");
    } catch (const host::HostError&) {
    }
}

std::vector<std::byte> damaged(std::vector<std::byte> bytes, std::mt19937_64& random) {
    bytes.resize(static_cast<size_t>(between(random, 0, static_cast<int>(bytes.size()) + 16)));
    for (int i = between(random, 1, 8); i > 0 && !bytes.empty(); --i)
        bytes[random() % bytes.size()] = static_cast<std::byte>(random());
    return bytes;
}

}  // namespace

void play_copies(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "copy",
                           [&](const host::Control& control) { judge_copy(fixture, control); });
    });
}

void play_stored_values(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "stored", [&](const host::Control& control) {
            for (const SharedValue& value : sample_values(fixture.host(), control))
                judge_stored(fixture, control, *value);
        });
    });
}

void play_interpolation(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "between", [&](const host::Control& control) {
            const auto values = sample_values(fixture.host(), control);
            judge_interpolation(fixture.context(), *values[0], *values[1]);
            judge_interpolation(fixture.context(), *values[1], *values[0]);
        });
    });
}

void play_comparison(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "compared", [&](const host::Control& control) {
            const auto values = sample_values(fixture.host(), control);
            for (const SharedValue& a : values) {
                fixture.context().expect(equal(*a, *a), "a value that equals itself", "it does not");
                for (const SharedValue& b : values) {
                    fixture.context().expect(equal(*a, *b) == equal(*b, *a),
                                             "the same answer for both orders of two values", "two answers");
                }
            }
        });
    });
}

void play_value_texts(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "printed", [&](const host::Control& control) {
            for (const SharedValue& value : sample_values(fixture.host(), control))
                judge_text(fixture, control, *value);
        });
        for_each_arbitrary(fixture, "scanned", [&](const host::Control& control) {
            const std::string own = host::ArbitraryValue::default_of(fixture.host(), control)->print();
            for (const std::string& text : {own, std::string(), own.substr(0, own.size() / 2),
                                            std::string("%s%n"), std::string(5000, 'x')})
                scan(fixture, control, text);
        });
    });
}

void play_refusals(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_arbitrary(fixture, "selector", [&](const host::Control& control) {
            for (const PF_FunctionSelector selector : {-1, 11, 1000}) {
                const PF_Err error = call_arbitrary(fixture.host(), control, selector, [](auto&) {});
                fixture.context().expect(error != PF_Err_NONE,
                                         "an error for selector " + std::to_string(selector), "none");
            }
        });
    });
}

void play_hostile_values(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        const auto stored = [&](const host::Control& control) {
            return host::ArbitraryValue::default_of(fixture.host(), control)->flatten();
        };
        for_each_arbitrary(fixture, "truncated", [&](const host::Control& control) {
            const std::vector<std::byte> bytes = stored(control);
            for (size_t size = 0; size < bytes.size(); ++size)
                take_damaged(fixture, control, std::span(bytes).first(size));
        });
        for_each_arbitrary(fixture, "foreign-end", [&](const host::Control& control) {
            std::mt19937_64 random = fixture.context().random("foreign-end");
            for (int more = 1; more <= kForeignBytes; ++more)
                take_extended(fixture, control, stored(control), more, random);
        });
        for_each_arbitrary(fixture, "damaged", [&](const host::Control& control) {
            std::mt19937_64 random = fixture.context().random("damaged");
            for (int i = 0; i < kDamagedValues; ++i)
                take_damaged(fixture, control, damaged(stored(control), random));
        });
    });
}

}  // namespace flumo::judge
