// Scoped owners of the drawing objects that the host's supplier makes.
#pragma once

#include <utility>

#include "effect/suites/errors.h"
#include "effect_api/drawbot.h"

namespace flumo {

/// Owns one drawing object. Destruction releases it and ignores the result; Release() reports a failure.
template <typename Ref>
class DrawbotOwner {
  public:
    DrawbotOwner(const DrawbotOwner&) = delete;
    DrawbotOwner& operator=(const DrawbotOwner&) = delete;

    Ref Get() const { return reference_; }

    /// Releases the object now. Throws DRAWBOT_Exception when the host reports a failure.
    void Release() { ThrowOnDrawingError(ReleaseHeld()); }

  protected:
    explicit DrawbotOwner(const DRAWBOT_SupplierSuite1& suite) : suite_(suite) {}
    ~DrawbotOwner() { ReleaseHeld(); }

    /// Where the host writes the object that it makes.
    Ref* Slot() { return &reference_; }

  private:
    SPErr ReleaseHeld() {
        const Ref held = std::exchange(reference_, nullptr);
        return held ? suite_.ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(held)) : 0;
    }

    const DRAWBOT_SupplierSuite1& suite_;
    Ref reference_ = nullptr;
};

/// The constructors throw DRAWBOT_Exception when the host cannot make the object.
class DRAWBOT_BrushP : public DrawbotOwner<DRAWBOT_BrushRef> {
  public:
    DRAWBOT_BrushP(const DRAWBOT_SupplierSuite1& suite, DRAWBOT_SupplierRef supplier,
                   const DRAWBOT_ColorRGBA& colour)
        : DrawbotOwner(suite) {
        ThrowOnDrawingError(suite.NewBrush(supplier, &colour, Slot()));
    }
};

/// `width` in panel pixels.
class DRAWBOT_PenP : public DrawbotOwner<DRAWBOT_PenRef> {
  public:
    DRAWBOT_PenP(const DRAWBOT_SupplierSuite1& suite, DRAWBOT_SupplierRef supplier,
                 const DRAWBOT_ColorRGBA& colour, float width)
        : DrawbotOwner(suite) {
        ThrowOnDrawingError(suite.NewPen(supplier, &colour, width, Slot()));
    }
};

class DRAWBOT_PathP : public DrawbotOwner<DRAWBOT_PathRef> {
  public:
    DRAWBOT_PathP(const DRAWBOT_SupplierSuite1& suite, DRAWBOT_SupplierRef supplier) : DrawbotOwner(suite) {
        ThrowOnDrawingError(suite.NewPath(supplier, Slot()));
    }
};

/// Made from `pixels`, `width` x `height` of four bytes each in rows without padding, which stay the
/// caller's.
class DRAWBOT_ImageP : public DrawbotOwner<DRAWBOT_ImageRef> {
  public:
    DRAWBOT_ImageP(const DRAWBOT_SupplierSuite1& suite, DRAWBOT_SupplierRef supplier, A_long width,
                   A_long height, DRAWBOT_PixelLayout layout, const void* pixels)
        : DrawbotOwner(suite) {
        ThrowOnDrawingError(
            suite.NewImageFromBuffer(supplier, width, height, width * 4, layout, pixels, Slot()));
    }
};

}  // namespace flumo
