// Builds paths out of Cairo's own path elements.
#include <initializer_list>

#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/panel/panel_state.h"

namespace flumo::host {

namespace {

using Points = std::initializer_list<DRAWBOT_PointF32>;

void append(Path& path, cairo_path_data_type_t type, Points points) {
    cairo_path_data_t element;
    element.header = {type, static_cast<int>(points.size()) + 1};
    path.data.push_back(element);
    for (const DRAWBOT_PointF32& point : points) {
        element.point = {point.x, point.y};
        path.data.push_back(element);
    }
}

PF_Err with_path(DRAWBOT_PathRef reference, auto&& build) {
    return answer(Callback::kDrawbotPath, [&](Call& call) -> PF_Err {
        Path* path = find_content<Path>(call, reference);
        if (!path) return PF_Err_BAD_CALLBACK_PARAM;
        build(*path);
        return PF_Err_NONE;
    });
}

PF_Err add(DRAWBOT_PathRef reference, cairo_path_data_type_t type, Points points) {
    return with_path(reference, [&](Path& path) { append(path, type, points); });
}

SPErr move_to(DRAWBOT_PathRef path, float x, float y) {
    return add(path, CAIRO_PATH_MOVE_TO, {{x, y}});
}

SPErr line_to(DRAWBOT_PathRef path, float x, float y) {
    return add(path, CAIRO_PATH_LINE_TO, {{x, y}});
}

SPErr bezier_to(DRAWBOT_PathRef path, const DRAWBOT_PointF32* first, const DRAWBOT_PointF32* second,
                const DRAWBOT_PointF32* end) {
    return add(path, CAIRO_PATH_CURVE_TO, {*first, *second, *end});
}

SPErr close_path(DRAWBOT_PathRef path) {
    return add(path, CAIRO_PATH_CLOSE_PATH, {});
}

SPErr add_rect(DRAWBOT_PathRef reference, const DRAWBOT_RectF32* rect) {
    const float right = rect->left + rect->width;
    const float bottom = rect->top + rect->height;
    return with_path(reference, [&](Path& path) {
        append(path, CAIRO_PATH_MOVE_TO, {{rect->left, rect->top}});
        append(path, CAIRO_PATH_LINE_TO, {{right, rect->top}});
        append(path, CAIRO_PATH_LINE_TO, {{right, bottom}});
        append(path, CAIRO_PATH_LINE_TO, {{rect->left, bottom}});
        append(path, CAIRO_PATH_CLOSE_PATH, {});
    });
}

DRAWBOT_PathSuite1 filled_suite() {
    DRAWBOT_PathSuite1 suite{};
    refuse(suite.AddArc);
    suite.MoveTo = move_to;
    suite.LineTo = line_to;
    suite.BezierTo = bezier_to;
    suite.AddRect = add_rect;
    suite.Close = close_path;
    return suite;
}

}  // namespace

const DRAWBOT_PathSuite1& path_suite() {
    static const DRAWBOT_PathSuite1 suite = filled_suite();
    return suite;
}

}  // namespace flumo::host
