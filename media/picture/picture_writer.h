// A picture file in the making.
#pragma once

#include "host/values/world.h"
#include "media/picture/picture.h"

namespace flumo::media {

/// What is known before the first row.
struct PictureShape {
    std::size_t width = 0;
    std::size_t height = 0;
    host::Depth depth = host::Depth::k8;  ///< of the samples to come
};

/// Takes a picture from its top to its bottom, so that it need not be in memory as a whole. The bytes of the
/// file do not depend on how the rows are grouped. Every function throws std::exception.
class PictureWriter {
  public:
    PictureWriter() = default;
    virtual ~PictureWriter() = default;
    PictureWriter(const PictureWriter&) = delete;
    PictureWriter& operator=(const PictureWriter&) = delete;

    /// The next rows: a picture of the whole width with straight alpha, at the depth of the shape.
    virtual void write_rows(Picture rows) = 0;

    /// After the last row; the file is closed.
    virtual void finish() = 0;
};

}  // namespace flumo::media
