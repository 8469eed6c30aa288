#include "cli/commands/panel_command.h"

#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "base/failure.h"
#include "base/file_contents.h"
#include "base/text_list.h"
#include "host/instance.h"
#include "job/session.h"
#include "media/new_file.h"
#include "media/picture_file.h"
#include "scene/gradient/gradient_text.h"

namespace flumo::cli {
namespace {

const scene::Control& gradient_control(const scene::ControlCatalog& catalog, const std::string& id) {
    const scene::Control& control = catalog.find(id);
    if (control.kind != scene::ControlKind::kArbitrary)
        throw usage_failure("panel " + in_quotes(id) + ": expected Gradient or LinesGradient");
    return control;
}

std::vector<PointerEvent> read_script(const std::filesystem::path& path) {
    if (path.empty()) return {};
    if (path != "-") return parse_pointer_script(read_text_file(path), path.string());
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    return parse_pointer_script(text, "standard input");
}

std::vector<PointerEvent> events_of(const PanelRequest& request) {
    std::vector<PointerEvent> events = read_script(request.script);
    events.insert(events.end(), request.events.begin(), request.events.end());
    return events;
}

std::vector<uint8_t> load_stored(const std::filesystem::path& path) {
    std::vector<uint8_t> bytes = read_file(path);
    if (scene::stops_from_stored_form(std::as_bytes(std::span(bytes)))) return bytes;
    throw input_failure("cannot read \"" + path.string() +
                        "\": no stored gradient: expected 4 bytes of count and 24 bytes for each stop");
}

std::vector<uint8_t> parse_stops(const PanelRequest& request) {
    std::string_view text = *request.gradient;
    const std::string own_id = request.control + "=";
    if (text.starts_with(own_id)) text.remove_prefix(own_id.size());
    return scene::to_stored_form(scene::parse_gradient(text));
}

/// The bytes that the command line names; none for the default.
std::optional<std::vector<uint8_t>> stored_gradient(const PanelRequest& request) {
    if (request.gradient && !request.load.empty())
        throw usage_failure("--gradient and --load each name a gradient: expected one of them");
    if (!request.load.empty()) return load_stored(request.load);
    if (request.gradient) return parse_stops(request);
    return std::nullopt;
}

// Cannot be moved, so it is made in place.
host::Panel make_canvas(const PanelRequest& request, const FrameSize& size) try {
    return host::Panel(
        {.width = size.width, .height = size.height, .scale = request.scale, .layout = request.layout});
} catch (const std::invalid_argument& error) {
    throw usage_failure(error.what());
}

Failure effect_failure(const std::string& what, const host::EventOutcome& outcome) {
    const host::HostError error(PF_Cmd_EVENT, outcome.error, outcome.message);
    return {FailureKind::kFrameFailed, what + ": " + error.what()};
}

/// The mouse over one control; each operator sends one kind of event.
class Pointer {
  public:
    Pointer(host::ControlEvents& events, host::Panel& canvas) : events_(events), canvas_(canvas) {}

    host::EventOutcome operator()(const Press& press) {
        at_ = press.at;
        const host::EventOutcome outcome = events_.click(press.at, press.clicks, press.modifiers);
        holds_ = outcome.drag_wanted;
        return outcome;
    }

    // The host sends drags only while a click on a stop asked for them.
    host::EventOutcome operator()(const Move& move) {
        at_ = move.at;
        return holds_ ? events_.drag(at_) : host::EventOutcome{};
    }

    host::EventOutcome operator()(const Release&) {
        return std::exchange(holds_, false) ? events_.release(at_) : host::EventOutcome{};
    }

    host::EventOutcome operator()(const host::PickedColour& answer) {
        canvas_.colour_picker = [answer](const PF_PixelFloat&) { return answer; };
        return {};
    }

  private:
    host::ControlEvents& events_;
    host::Panel& canvas_;
    PF_Point at_{};
    bool holds_ = false;
};

void set_gradient(host::Instance& instance, const scene::Control& control,
                  const std::vector<uint8_t>& stored) {
    host::Host& host = instance.host();
    instance.set(control.index, host::Arbitrary(host::ArbitraryValue::unflatten(
                                    host, host.control(control.index), std::as_bytes(std::span(stored)))));
}

host::Arbitrary gradient_of(const host::Instance& instance, const scene::Control& control) {
    return std::get<host::Arbitrary>(instance.value_at(control.index, 0));
}

/// Sends the events and reports each; returns the first failure, which is reported last.
std::optional<Failure> play(
    Pointer& pointer, const std::vector<PointerEvent>& events,
    const std::function<void(const std::string&, const host::EventOutcome&)>& report) {
    std::optional<Failure> first;
    for (const PointerEvent& event : events) {
        const host::EventOutcome outcome = std::visit(pointer, event.action);
        if (!std::holds_alternative<host::PickedColour>(event.action)) report(event.text, outcome);
        if (outcome.error && !first) first = effect_failure("event " + in_quotes(event.text), outcome);
    }
    return first;
}

void save_stored(const std::filesystem::path& path, const host::ArbitraryValue& value) {
    media::NewFile file(path);
    const std::vector<std::byte> bytes = value.flatten();
    std::ofstream stream(file.temporary(), std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) throw output_failure("cannot write \"" + path.string() + "\"");
    file.commit();
}

void draw_picture(const std::filesystem::path& path, host::ControlEvents& events, const host::Panel& canvas) {
    const host::EventOutcome outcome = events.draw();
    if (outcome.error) throw effect_failure("drawing the control", outcome);
    media::write_picture(path, media::PictureFormat::kPng,
                         {.width = static_cast<std::size_t>(canvas.image_width()),
                          .height = static_cast<std::size_t>(canvas.image_height()),
                          .samples = canvas.rgba()});
}

// Reports a file that cannot be written before the work.
void probe(const std::filesystem::path& path) {
    if (!path.empty()) const media::NewFile trial(path);
}

}  // namespace

ExitStatus panel(const PanelRequest& request, const StdoutGuard& output) {
    if (request.control.empty())
        throw usage_failure("panel needs a control, such as: flumo panel Gradient -o panel.png");
    const std::vector<PointerEvent> script = events_of(request);
    const auto stored = stored_gradient(request);
    job::Session session(request.module, job::Use::kControlsAlone);
    const scene::Control& control = gradient_control(session.catalog(), request.control);
    probe(request.picture);
    probe(request.save);
    const FrameSize size =
        request.size.value_or(FrameSize{control.definition.ui_width, control.definition.ui_height});
    host::Panel canvas = make_canvas(request, size);

    const auto instance = session.host().new_instance();
    if (stored) set_gradient(*instance, control, *stored);
    host::ControlEvents events(*instance, {.index = control.index, .frame = {0, 0, size.width, size.height}},
                               &canvas);
    Pointer pointer(events, canvas);
    pointer(request.pick);
    GradientReport report(request.print);
    const auto add = [&](const std::string& event, const host::EventOutcome& outcome) {
        report.add(event, outcome, *gradient_of(*instance, control));
    };
    add("start", {});
    const auto failure = play(pointer, script, add);
    output.write(report.text());
    if (!request.save.empty()) save_stored(request.save, *gradient_of(*instance, control));
    if (!request.picture.empty()) draw_picture(request.picture, events, canvas);
    if (failure) throw Failure(*failure);
    return ExitStatus::kDone;
}

}  // namespace flumo::cli
