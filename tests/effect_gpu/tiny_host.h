// Just enough of a host for one frame: worlds with padded rows, handles, four suites, and a log of what
// was asked. One at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "effect_api/effect.h"
#include "effect_api/smart.h"
#include "effect_api/suites.h"

namespace flumo::tests {

/// A world of 4, 8 or 16 bytes a pixel whose rows have `padding` spare bytes, all filled with 0xA5.
struct TinyWorld {
    TinyWorld(A_long width, A_long height, size_t pixelSize, A_long padding = 0);
    TinyWorld(const TinyWorld&) = delete;
    TinyWorld& operator=(const TinyWorld&) = delete;

    /// Channel 0 to 3 (alpha, red, green, blue) of a pixel.
    template <typename Channel>
    Channel& At(A_long x, A_long y, int channel) {
        auto* row = bytes.data() + static_cast<ptrdiff_t>(y) * def.rowbytes;
        return reinterpret_cast<Channel*>(row)[x * 4 + channel];
    }

    PF_EffectWorld def{};
    size_t pixelSize;
    std::vector<std::byte> bytes;
};

class TinyHost {
  public:
    TinyHost();
    ~TinyHost();
    TinyHost(const TinyHost&) = delete;
    TinyHost& operator=(const TinyHost&) = delete;

    PF_InData in_data{};
    PF_OutData out_data{};
    SPBasicSuite basic{};
    PF_UtilCallbacks utils{};
    PF_SmartRenderCallbacks smart{};

    /// Calls that answer an error, by name: "get_pixel_data8", "iterate", "host_new_handle" (gives null),
    /// a suite's name (is missing), "checkout_param", "checkout_layer_pixels", ...
    std::map<std::string, PF_Err> failures;
    /// What was asked, in order; controls and pixels are left out.
    std::vector<std::string> log;
    /// Handles not disposed of; a failed download leaves its own.
    struct Block {
        std::vector<std::byte> bytes;
        void* data = nullptr;
    };
    std::list<Block> blocks;
    int heldLocks = 0;
    int checkedOutParams = 0;
    TinyWorld* inputWorld = nullptr;
    TinyWorld* outputWorld = nullptr;
    /// Fills a control that is checked out.
    std::function<void(PF_ParamIndex, PF_ParamDef&)> fillParam;
};

}  // namespace flumo::tests
