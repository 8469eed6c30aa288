// The cases that an effect is played through.
#pragma once

#include <span>
#include <string_view>

#include "judge/engine/case.h"

namespace flumo::judge {

/// By ascending level.
std::span<const Case> all_cases();
/// Null for a name that no case has.
const Case* find_case(std::string_view name);

// Level 1.
void play_load(CaseContext&);
void play_registration(CaseContext&);
void play_resource(CaseContext&);
void play_about(CaseContext&);
void play_global_setup(CaseContext&);
void play_unknown_commands(CaseContext&);
void play_set_up_and_down(CaseContext&);
void play_expected_identity(CaseContext&);
// Level 2.
void play_controls(CaseContext&);
void play_custom_ui(CaseContext&);
void play_expected_controls(CaseContext&);
void play_sequence(CaseContext&);
void play_copies(CaseContext&);
void play_stored_values(CaseContext&);
void play_interpolation(CaseContext&);
void play_comparison(CaseContext&);
void play_value_texts(CaseContext&);
void play_refusals(CaseContext&);
void play_resetup(CaseContext&);
void play_filled_slots(CaseContext&);
void play_projects(CaseContext&);
void play_disposals(CaseContext&);
void play_optional_commands(CaseContext&);
// Level 3.
void play_frame_sizes(CaseContext&);
void play_row_padding(CaseContext&);
void play_partial_frames(CaseContext&);
void play_repeated_frames(CaseContext&);
void play_looks(CaseContext&);
void play_callers_context(CaseContext&);
void play_abort(CaseContext&);
void play_input_layer(CaseContext&);
void play_output_world(CaseContext&);
void play_row_order(CaseContext&);
void play_world_flags(CaseContext&);
void play_empty_result(CaseContext&);
void play_pre_render_output(CaseContext&);
void play_time(CaseContext&);
void play_other_hosts(CaseContext&);
void play_render_copies(CaseContext&);
// Level 4.
void play_drawing(CaseContext&);
void play_clicks(CaseContext&);
void play_other_events(CaseContext&);
void play_panel_life(CaseContext&);
void play_two_panels(CaseContext&);
// Level 5.
void play_hostile_values(CaseContext&);
void play_missing_suites(CaseContext&);
void play_faulty_set_up(CaseContext&);
void play_faulty_sequence(CaseContext&);
void play_faulty_values(CaseContext&);
void play_faulty_events(CaseContext&);
void play_faulty_frames_8(CaseContext&);
void play_faulty_frames_16(CaseContext&);
void play_faulty_frames_32(CaseContext&);
void play_threads(CaseContext&);
void play_thread_generations(CaseContext&);
void play_engine_threads(CaseContext&);

}  // namespace flumo::judge
