// The keyboard of the gradient editor: every key becomes the mouse events that a hand would make.
#include <QKeyEvent>
#include <algorithm>
#include <cmath>

#include "studio/controls/editors/gradient_editor.h"

namespace flumo::studio {
namespace {

constexpr int kMargin = 6;  // pixels between the control's edge and the ends of the ramp
constexpr int kReach = 10;  // a stop is hit nearer than this
constexpr int kFar = 10;    // pixels that a nudge goes with Shift
constexpr int kBelow = 40;  // pixels below the control, where a stop is let go

}  // namespace

int GradientEditor::x_of(const scene::Stop& stop) const {
    return kMargin + static_cast<int>(std::round(stop.at * static_cast<float>(width() - 2 * kMargin)));
}

// A place where a click hits this stop: of stops close together the leftmost is hit, so a free place is
// looked for from the right side on.
std::optional<int> GradientEditor::handle_of(std::size_t stop) const {
    if (stop >= stops_.size()) return std::nullopt;
    const int centre = x_of(stops_[stop]);
    for (int offset = 0; offset < 2 * kReach - 1; ++offset) {
        const int x = offset < kReach ? centre + offset : centre - (offset - kReach + 1);
        const auto hit = std::ranges::find_if(
            stops_, [&](const scene::Stop& other) { return std::abs(x_of(other) - x) < kReach - 1; });
        const bool inside = x >= 0 && x <= width();
        if (inside && hit - stops_.begin() == static_cast<std::ptrdiff_t>(stop)) return x;
    }
    return std::nullopt;
}

void GradientEditor::mark(std::ptrdiff_t stop) {
    const auto last = static_cast<std::ptrdiff_t>(stops_.size()) - 1;
    marked_ =
        static_cast<std::size_t>(std::clamp(stop, std::ptrdiff_t{0}, std::max(std::ptrdiff_t{0}, last)));
    update();
}

void GradientEditor::nudge(int pixels) {
    const std::optional<int> x = handle_of(marked_);
    if (!x) return;
    const int y = height() / 2;
    const scene::Stop before = stops_[marked_];
    const host::EventOutcome pressed = events().click({*x, y});
    if (!pressed.drag_wanted) return;
    take(events().drag({*x + pixels, y}));
    // The stop may have passed over a neighbour.
    const float at = std::clamp(
        before.at + static_cast<float>(pixels) / static_cast<float>(width() - 2 * kMargin), 0.0F, 1.0F);
    const auto nearest = std::ranges::min_element(stops_, {}, [&](const scene::Stop& stop) {
        return std::abs(stop.at - at) + (stop.colour == before.colour ? 0.0F : 1.0F);
    });
    mark(nearest - stops_.begin());
}

void GradientEditor::remove_marked() {
    const std::optional<int> x = handle_of(marked_);
    if (!x) return;
    const int y = height() / 2;
    if (!events().click({*x, y}).drag_wanted) return;
    start_drag();
    // A stop is lifted by moving aside and down.
    const int aside = *x < width() / 2 ? 1 : -1;
    take(events().drag({*x + aside, y}));
    take(events().drag({*x + 2 * aside, height() + kBelow}));
    stop_drag();
    mark(static_cast<std::ptrdiff_t>(marked_));
}

void GradientEditor::click_marked(int clicks, Qt::KeyboardModifiers held) {
    const std::optional<int> x = handle_of(marked_);
    if (x) press({*x, height() / 2}, clicks, held);
}

// Half-way between the marked stop and its neighbour, on a pixel where no stop is hit.
void GradientEditor::add_stop() {
    const std::size_t count = stops_.size();
    const bool last = marked_ + 1 >= count;
    const int left = count == 0 ? kMargin : x_of(stops_[last && count > 1 ? count - 2 : marked_]);
    const int right = count > 1 ? x_of(stops_[last ? count - 1 : marked_ + 1]) : width() - kMargin;
    const int x = (left + right) / 2;
    if (std::ranges::any_of(stops_,
                            [&](const scene::Stop& stop) { return std::abs(x_of(stop) - x) <= kReach; }))
        return;
    press({x, height() / 2}, 2, Qt::NoModifier);
    const auto added =
        std::ranges::find_if(stops_, [&](const scene::Stop& stop) { return std::abs(x_of(stop) - x) <= 1; });
    if (added != stops_.end()) mark(added - stops_.begin());
}

void GradientEditor::keyPressEvent(QKeyEvent* event) {
    const int far = event->modifiers() & Qt::ShiftModifier ? kFar : 1;
    switch (event->key()) {
        case Qt::Key_Left:
            return nudge(-far);
        case Qt::Key_Right:
            return nudge(far);
        case Qt::Key_Up:
            return mark(static_cast<std::ptrdiff_t>(marked_) - 1);
        case Qt::Key_Down:
            return mark(static_cast<std::ptrdiff_t>(marked_) + 1);
        case Qt::Key_Home:
            return mark(0);
        case Qt::Key_End:
            return mark(static_cast<std::ptrdiff_t>(stops_.size()) - 1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return click_marked(2, Qt::NoModifier);
        case Qt::Key_Space:
            return click_marked(1, Qt::ControlModifier);
        case Qt::Key_Insert:
            return add_stop();
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            return remove_marked();
        default:
            ControlEditor::keyPressEvent(event);
    }
}

}  // namespace flumo::studio
