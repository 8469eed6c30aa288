#include "judge/cases/case_table.h"

#include <algorithm>

namespace flumo::judge {

namespace {

constexpr Case kCases[] = {
    {"entry.load", 1, play_load, "the file is a module with both exports"},
    {"entry.resource", 1, play_resource, "a Windows module's property list says what the effect says"},
    {"entry.registration", 1, play_registration, "texts, kind and entry point are registered"},
    {"entry.global-setup", 1, play_global_setup, "version and flags make sense, twice the same"},
    {"entry.expected", 1, play_expected_identity, "version, flags and names are those expected"},
    {"entry.about", 1, play_about, "there is a text about the effect"},
    {"entry.unknown-commands", 1, play_unknown_commands, "numbers without a command do nothing"},
    {"entry.set-up-and-down", 1, play_set_up_and_down, "each set-down gives everything back"},
    {"params.controls", 2, play_controls, "disk ids, groups, names, ranges and defaults"},
    {"params.custom-ui", 2, play_custom_ui, "controls that draw themselves are announced as such"},
    {"params.expected", 2, play_expected_controls, "the controls are those expected"},
    {"sequence.life", 2, play_sequence, "set-up, flatten, resetup, copies and set-down of sequence data"},
    {"sequence.resetup", 2, play_resetup, "resetup without a set-up before, and of live data"},
    {"values.copies", 2, play_copies, "a copy shares nothing with its original"},
    {"values.stored", 2, play_stored_values, "stored size is kept, stored values come back equal"},
    {"values.interpolation", 2, play_interpolation, "interpolation holds at its ends"},
    {"values.comparison", 2, play_comparison, "comparison is reflexive and symmetric"},
    {"values.text", 2, play_value_texts,
     "the announced size is the printed size; scanning junk does no harm"},
    {"values.refusals", 2, play_refusals, "unknown selectors are refused"},
    {"values.filled-slot", 2, play_filled_slots, "interpolation into a slot that holds a value"},
    {"values.project", 2, play_projects, "opened, compared, printed, scanned, saved and opened again"},
    {"values.disposal-order", 2, play_disposals, "copies disposed of in another order than they were made"},
    {"commands.optional", 2, play_optional_commands, "commands without work, with and without their record"},
    {"frames.sizes", 3, play_frame_sizes,
     "every depth and odd size: every pixel, and no other byte, written"},
    {"frames.row-padding", 3, play_row_padding, "the padding after rows never shows"},
    {"frames.partial", 3, play_partial_frames, "parts of a frame and reduced resolutions"},
    {"frames.repeat", 3, play_repeated_frames, "a frame asked for again is the same frame"},
    {"frames.looks", 3, play_looks, "random settings that follow from the seed"},
    {"frames.callers-context", 3, play_callers_context, "the caller's OpenGL context stays current"},
    {"frames.abort", 3, play_abort, "a frame that the user stops ends with 517 and gives everything back"},
    {"frames.input-layer", 3, play_input_layer,
     "masked, grown, offset and empty input layers, requests beyond"},
    {"frames.output-world", 3, play_output_world, "an output world of another place and size than announced"},
    {"frames.row-order", 3, play_row_order, "negative row bytes give the same frame"},
    {"frames.world-flags", 3, play_world_flags, "further bits in the flags of worlds change nothing"},
    {"frames.empty-result", 3, play_empty_result,
     "nothing announced only where the frame is the input, which the host then shows"},
    {"frames.pre-render-output", 3, play_pre_render_output, "junk in the record that pre-render fills in"},
    {"frames.time", 3, play_time, "time scales, time that runs backwards, stills as the flags promise"},
    {"frames.other-hosts", 3, play_other_hosts, "parameters in smart commands, controls after the last one"},
    {"frames.render-copies", 3, play_render_copies, "instances from resetup alone or without sequence data"},
    {"events.draw", 4, play_drawing, "controls are drawn within their frame, and all objects are released"},
    {"events.clicks", 4, play_clicks, "random clicks and drags leave sound values"},
    {"events.others", 4, play_other_events, "events for other controls are left alone"},
    {"events.panel-life", 4, play_panel_life,
     "a context from start to end, drags that end outside or are resized"},
    {"events.two-panels", 4, play_two_panels, "a drag in one panel while another shows the same control"},
    {"hostile.stored-values", 5, play_hostile_values, "damaged stored values do no harm"},
    {"hostile.missing-suites", 5, play_missing_suites, "a host without suites is refused, not crashed"},
    {"faults.set-up", 5, play_faulty_set_up, "each call of set-up and set-down failing"},
    {"faults.sequence", 5, play_faulty_sequence, "each call of the sequence commands failing"},
    {"faults.values", 5, play_faulty_values, "each call of the arbitrary-data callbacks failing"},
    {"faults.events", 5, play_faulty_events, "each call of drawing and clicking failing"},
    {"faults.frames-8", 5, play_faulty_frames_8, "each call of an 8-bit frame failing"},
    {"faults.frames-16", 5, play_faulty_frames_16, "each call of a 16-bit frame failing"},
    {"faults.frames-32", 5, play_faulty_frames_32, "each call of a float frame failing"},
    {"threads.frames", 5, play_threads, "frames of several threads are those of one"},
    {"threads.generations", 5, play_thread_generations, "threads end, new threads start, set-up is repeated"},
    {"threads.render-engine", 5, play_engine_threads, "eleven copies on twelve threads, saves in between"},
};
static_assert(std::ranges::is_sorted(kCases, {}, &Case::level));

}  // namespace

std::span<const Case> all_cases() {
    return kCases;
}

const Case* find_case(std::string_view name) {
    const auto* found = std::ranges::find(kCases, name, &Case::name);
    return found == std::end(kCases) ? nullptr : found;
}

}  // namespace flumo::judge
