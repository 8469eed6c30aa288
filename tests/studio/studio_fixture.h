// The real effect and its controls, as the studio has them.
#pragma once

#include <string_view>

#include "job/session.h"
#include "studio/document/document.h"

namespace flumo::studio::test {

/// The session of this test program, set up once and kept: a second one would pay for another context.
job::Session& session();

struct OpenDocument {
    const scene::Control& control(std::string_view id) const { return document.catalog().find(id); }
    double number(std::string_view id) const { return number(id, document.current_frame()); }
    double number(std::string_view id, int frame) const {
        return std::get<double>(document.value_at(control(id), frame));
    }

    Document document{session().catalog(), session().host()};
};

}  // namespace flumo::studio::test
