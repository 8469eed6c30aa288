// Level 2: the sequence data of an applied effect.
#include "judge/cases/case_table.h"
#include "judge/engine/fixture.h"

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

void judge_flattening(Fixture& fixture) {
    const auto instance = fixture.host().new_instance();
    CaseContext& context = fixture.context();
    const std::vector<std::byte> first = stored_by(*instance);
    const std::vector<std::byte> again = stored_by(*instance);
    context.expect(first == again, "the same stored bytes at each flattening, " + size_of(first),
                   "others, " + size_of(again));
    if (instance->sequence_data())
        context.expect(!first.empty(), "stored bytes of the sequence data", "none");
}

void judge_project(Fixture& fixture) {
    const auto saved = fixture.host().new_instance();
    const std::vector<std::byte> project = stored_by(*saved);
    if (project.empty()) return;
    const auto opened = fixture.host().new_instance();
    opened->resetup(project);
    fixture.context().expect(stored_by(*opened) == project, "an opened project to be stored as it was",
                             "other bytes");
}

void judge_flattened_copy(Fixture& fixture) {
    const auto instance = fixture.host().new_instance();
    host::HandleTable& handles = fixture.host().handles();
    const PF_Handle live = instance->sequence_data();
    const std::vector<std::byte> copy = instance->flattened_copy();
    fixture.context().expect(instance->sequence_data() == live && (!live || handles.lives(live)),
                             "the live data left alone", "it is gone");
    fixture.context().expect(!live || !copy.empty(), "a flattened copy", "none");
}

}  // namespace

void play_sequence(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        fixture.step("set-up-and-down", [&] {
            const auto one = fixture.host().new_instance();
            const auto other = fixture.host().new_instance();
            fixture.context().expect(!one->sequence_data() || one->sequence_data() != other->sequence_data(),
                                     "sequence data of its own for each instance", "one handle for two");
        });
        fixture.step("project", [&] { judge_project(fixture); });
        if (fixture.has_flag(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING)) {
            fixture.step("flatten", [&] { judge_flattening(fixture); });
            fixture.step("duplicate", [&] {
                const auto original = fixture.host().new_instance();
                const auto twin = original->duplicate();
            });
        }
        if (fixture.has_flag2(PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA))
            fixture.step("flattened-copy", [&] { judge_flattened_copy(fixture); });
    });
}

}  // namespace flumo::judge
