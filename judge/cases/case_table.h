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
void play_load(Trial&);
void play_registration(Trial&);
void play_resource(Trial&);
void play_about(Trial&);
void play_global_setup(Trial&);
void play_unknown_commands(Trial&);
void play_set_up_and_down(Trial&);
void play_expected_identity(Trial&);
// Level 2.
void play_controls(Trial&);
void play_custom_ui(Trial&);
void play_expected_controls(Trial&);
void play_sequence(Trial&);
void play_copies(Trial&);
void play_stored_values(Trial&);
void play_interpolation(Trial&);
void play_comparison(Trial&);
void play_value_texts(Trial&);
void play_refusals(Trial&);
// Level 3.
void play_frame_sizes(Trial&);
void play_row_padding(Trial&);
void play_partial_frames(Trial&);
void play_repeated_frames(Trial&);
void play_looks(Trial&);
void play_callers_context(Trial&);
void play_abort(Trial&);
// Level 4.
void play_drawing(Trial&);
void play_clicks(Trial&);
void play_other_events(Trial&);
// Level 5.
void play_hostile_values(Trial&);
void play_missing_suites(Trial&);
void play_faulty_set_up(Trial&);
void play_faulty_sequence(Trial&);
void play_faulty_values(Trial&);
void play_faulty_events(Trial&);
void play_faulty_frames_8(Trial&);
void play_faulty_frames_16(Trial&);
void play_faulty_frames_32(Trial&);
void play_threads(Trial&);
void play_thread_generations(Trial&);

}  // namespace flumo::judge
