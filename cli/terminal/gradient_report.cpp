#include "cli/terminal/gradient_report.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/text_list.h"
#include "host/module/host_error.h"
#include "scene/gradient/gradient_stops.h"

namespace flumo::cli {
namespace {

using nlohmann::ordered_json;

std::string hex_of(std::span<const std::byte> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : bytes) {
        text += kDigits[std::to_integer<std::size_t>(byte) >> 4];
        text += kDigits[std::to_integer<std::size_t>(byte) & 15];
    }
    return text;
}

// The shortest decimal: 0.1 and not 0.10000000149011612.
double short_number(float value) {
    return std::stod(number_text(value));
}

ordered_json kind_json(scene::StopKind kind) {
    const auto word = scene::word_of_kind(kind);
    return word ? ordered_json(*word) : ordered_json(static_cast<int32_t>(kind));
}

ordered_json stops_json(const host::ArbitraryValue& value) {
    const auto stops = scene::stops_from_stored_form(value.flatten());
    if (!stops) throw std::runtime_error("the effect's stored form is none");
    ordered_json array = ordered_json::array();
    for (const scene::Stop& stop : *stops) {
        ordered_json colour = ordered_json::array();
        for (const float channel : {stop.colour.r, stop.colour.g, stop.colour.b, stop.colour.a})
            colour.push_back(short_number(channel));
        array.push_back({{"at", short_number(stop.at)}, {"kind", kind_json(stop.kind)}, {"color", colour}});
    }
    return array;
}

std::string words_of(const host::EventOutcome& outcome) {
    return outcome.error == PF_Err_NONE ? "" : "\terror " + host::error_name(outcome.error);
}

}  // namespace

GradientForm parse_gradient_form(std::string_view text) {
    if (text == "text") return GradientForm::kText;
    if (text == "hex") return GradientForm::kHex;
    if (text == "json") return GradientForm::kJson;
    throw usage_failure("print " + in_quotes(text) + ": expected text, hex or json");
}

void GradientReport::add(const std::string& event, const host::EventOutcome& outcome,
                         const host::ArbitraryValue& value) {
    if (form_ == GradientForm::kJson) {
        const ordered_json entry = {{"event", event},
                                    {"error", outcome.error},
                                    {"handled", outcome.handled()},
                                    {"changed", outcome.changed},
                                    {"stops", stops_json(value)}};
        lines_ += (lines_.empty() ? "[" : ",\n ") + entry.dump();
        return;
    }
    const std::string gradient = form_ == GradientForm::kHex ? hex_of(value.flatten()) : value.print();
    lines_ += event + "\t" + gradient + words_of(outcome) + "\n";
}

std::string GradientReport::text() const {
    return form_ == GradientForm::kJson ? lines_ + "]\n" : lines_;
}

}  // namespace flumo::cli
