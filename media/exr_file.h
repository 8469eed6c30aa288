// OpenEXR through its own library.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "host/values/frame_rate.h"
#include "media/picture.h"

namespace flumo::media {

/// Whether the bytes begin as an OpenEXR file does.
bool is_exr(std::span<const uint8_t> bytes);

/// Reads the display window as floats, with alpha as the file has it (by custom premultiplied): channels
/// R, G, B or Y alone, and A, which is 1 where there is none. Throws std::exception.
Picture read_exr(const std::filesystem::path& path);

enum class ExrType { kHalf, kFloat };

/// What a file says about its frame beside the pixels.
struct ExrNotes {
    ExrType type = ExrType::kFloat;
    std::optional<host::FrameRate> rate;  ///< attribute framesPerSecond
    std::string scene;  ///< attribute flumoScene: a scene file that renders it again; may be empty
};

/// Writes float samples into channels R, G, B, A, as they stand or rounded to the nearest half.
/// Throws std::exception.
void write_exr(const std::filesystem::path& path, const Picture& picture, const ExrNotes& notes = {});

/// What the header says; no scene in a file of another program. Throws std::exception.
ExrNotes read_exr_notes(const std::filesystem::path& path);

}  // namespace flumo::media
