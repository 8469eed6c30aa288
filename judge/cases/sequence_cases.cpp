// Level 2: the sequence data of an applied effect.
#include "judge/cases/case_table.h"
#include "judge/engine/stage.h"

namespace flumo::judge {

namespace {

std::string size_of(const std::vector<std::byte>& bytes) {
    return std::to_string(bytes.size()) + " bytes";
}

/// What a project stores. Goes live again afterwards.
std::vector<std::byte> stored_by(host::Instance& instance) {
    std::vector<std::byte> bytes = instance.flatten();
    instance.resetup();
    return bytes;
}

void judge_flattening(Stage& stage) {
    const auto instance = stage.host().new_instance();
    Trial& trial = stage.trial();
    const std::vector<std::byte> first = stored_by(*instance);
    const std::vector<std::byte> again = stored_by(*instance);
    trial.expect(first == again, "the same stored bytes at each flattening, " + size_of(first),
                 "others, " + size_of(again));
    if (instance->sequence_data()) trial.expect(!first.empty(), "stored bytes of the sequence data", "none");
}

void judge_project(Stage& stage) {
    const auto saved = stage.host().new_instance();
    const std::vector<std::byte> project = stored_by(*saved);
    if (project.empty()) return;
    const auto opened = stage.host().new_instance();
    opened->resetup(project);
    stage.trial().expect(stored_by(*opened) == project, "an opened project to be stored as it was",
                         "other bytes");
}

void judge_flattened_copy(Stage& stage) {
    const auto instance = stage.host().new_instance();
    host::HandleTable& handles = stage.host().handles();
    const PF_Handle live = instance->sequence_data();
    const std::vector<std::byte> copy = instance->flattened_copy();
    stage.trial().expect(instance->sequence_data() == live && (!live || handles.lives(live)),
                         "the live data left alone", "it is gone");
    stage.trial().expect(!live || !copy.empty(), "a flattened copy", "none");
}

}  // namespace

void play_sequence(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        stage.step("set-up-and-down", [&] {
            const auto one = stage.host().new_instance();
            const auto other = stage.host().new_instance();
            stage.trial().expect(!one->sequence_data() || one->sequence_data() != other->sequence_data(),
                                 "sequence data of its own for each instance", "one handle for two");
        });
        stage.step("project", [&] { judge_project(stage); });
        if (stage.has_flag(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING)) {
            stage.step("flatten", [&] { judge_flattening(stage); });
            stage.step("duplicate", [&] {
                const auto original = stage.host().new_instance();
                const auto twin = original->duplicate();
            });
        }
        if (stage.has_flag2(PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA))
            stage.step("flattened-copy", [&] { judge_flattened_copy(stage); });
    });
}

}  // namespace flumo::judge
