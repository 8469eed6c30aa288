#include "cli/files/text_file.h"

#include <fstream>

#include "base/failure.h"
#include "media/new_file.h"

namespace flumo::cli {

void write_text_file(const std::filesystem::path& path, std::string_view text) {
    media::NewFile file(path);
    std::ofstream stream(file.temporary(), std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) throw output_failure("cannot write \"" + path.string() + "\"");
    file.commit();
}

}  // namespace flumo::cli
