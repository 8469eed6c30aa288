#include "host/panel/panel_state.h"

#include "host/callbacks/answer.h"

namespace flumo::host {

bool is_state(Call& call, const void* reference) {
    if (reference == &state_of(call)) return true;
    misused(call, MisuseKind::kDrawingReference, "drew with a reference that is not this panel's");
    return false;
}

void* add_object(Call& call, DrawingObject object) {
    auto owned = std::make_unique<DrawingObject>(std::move(object));
    void* reference = owned.get();
    state_of(call).objects.emplace(reference, std::move(owned));
    call.host.accounting().lend(Lent::kDrawbotObject);
    return reference;
}

DrawingObject* find_object(Call& call, const void* reference) {
    auto& objects = state_of(call).objects;
    const auto found = objects.find(reference);
    if (found != objects.end()) return found->second.get();
    misused(call, MisuseKind::kDrawingReference, "used a drawing object that does not live");
    return nullptr;
}

}  // namespace flumo::host
