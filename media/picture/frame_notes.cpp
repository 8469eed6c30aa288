#include "media/picture/frame_notes.h"

namespace flumo::media {

std::string software_name() {
    return "Flumo " FLUMO_VERSION;
}

}  // namespace flumo::media
