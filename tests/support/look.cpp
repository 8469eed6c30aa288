#include "tests/support/look.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <stdexcept>

namespace flumo::test {
namespace {

// A gradient's stored form: a count, then position, kind, red, green, blue and alpha of each stop.
std::vector<std::byte> stored(const Stops& stops) {
    struct Stored {
        float at;
        int32_t kind;
        float r, g, b, a;
    };
    std::vector<std::byte> bytes(4 + stops.size() * sizeof(Stored));
    const auto count = static_cast<int32_t>(stops.size());
    std::memcpy(bytes.data(), &count, 4);
    for (size_t i = 0; i < stops.size(); ++i) {
        // The alpha of a stop shows nowhere.
        const Stored stop{stops[i].at, stops[i].kind, stops[i].r, stops[i].g, stops[i].b, 0.25F};
        std::memcpy(bytes.data() + 4 + i * sizeof(Stored), &stop, sizeof(Stored));
    }
    return bytes;
}

host::Value value_of(host::Host& host, int index, const Setting& setting) {
    if (const auto* number = std::get_if<double>(&setting.value)) return *number;
    if (const auto* layer = std::get_if<host::Layer>(&setting.value)) return *layer;
    return host::Arbitrary(
        host::ArbitraryValue::unflatten(host, host.control(index), stored(std::get<Stops>(setting.value))));
}

}  // namespace

Look look(std::string_view settings) {
    Look look;
    std::istringstream words{std::string(settings)};
    for (std::string word; words >> word;) {
        const size_t sign = word.find('=');
        const auto control = std::ranges::find(kControls, word.substr(0, sign), &Control::id);
        if (control == kControls.end()) throw std::invalid_argument(word);
        look.insert_or_assign(control->section, std::stod(word.substr(sign + 1)));
    }
    return look;
}

Look with(Look base, const Look& changes) {
    for (const auto& [section, setting] : changes)
        base.insert_or_assign(section, setting);
    return base;
}

std::unique_ptr<host::Instance> instance_with(host::Host& host, const Look& look) {
    auto instance = host.new_instance();
    for (const auto& [section, setting] : look) {
        const int index = static_cast<int>(section) + 1;
        instance->set(index, value_of(host, index, setting));
    }
    return instance;
}

}  // namespace flumo::test
