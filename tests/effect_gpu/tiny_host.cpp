#include "tests/effect_gpu/tiny_host.h"

#include <algorithm>
#include <cstdio>

namespace flumo::tests {

namespace {

TinyHost* host = nullptr;

PF_Err Answer(const std::string& name) {
    const auto failure = host->failures.find(name);
    return failure != host->failures.end() ? failure->second : PF_Err_NONE;
}

PF_Err Logged(const std::string& name) {
    host->log.push_back(name);
    return Answer(name);
}

// A getter of the wrong depth succeeds with a null pointer.
template <typename Pixel>
PF_Err GetPixels(const char* name, PF_EffectWorld* def, Pixel** pixels) {
    auto& world = *static_cast<TinyWorld*>(def->platform_ref);
    *pixels = world.pixelSize == sizeof(Pixel) ? reinterpret_cast<Pixel*>(world.bytes.data()) : nullptr;
    return Answer(name);
}

PF_Err GetPixels8(PF_EffectWorld* def, PF_PixelPtr, PF_Pixel8** pixels) {
    return GetPixels("get_pixel_data8", def, pixels);
}

PF_Err GetPixels16(PF_EffectWorld* def, PF_PixelPtr, PF_Pixel16** pixels) {
    return GetPixels("get_pixel_data16", def, pixels);
}

PF_Err GetPixelsFloat(PF_EffectWorld* def, PF_PixelPtr, PF_PixelFloat** pixels) {
    return GetPixels("get_pixel_data_float", def, pixels);
}

PF_Handle NewHandle(A_HandleSize size) {
    if (Answer("host_new_handle") != PF_Err_NONE) return nullptr;
    auto& block = host->blocks.emplace_back(TinyHost::Block{std::vector<std::byte>(size)});
    block.data = block.bytes.data();
    return &block.data;
}

void* LockHandle(PF_Handle handle) {
    ++host->heldLocks;
    return *handle;
}

void UnlockHandle(PF_Handle) {
    --host->heldLocks;
}

void DisposeHandle(PF_Handle handle) {
    host->blocks.remove_if([handle](const TinyHost::Block& block) { return &block.data == handle; });
}

// Walks the destination, with the coordinates and the refcon that the effect's function wants.
PF_Err Iterate(PF_InData*, A_long, A_long, PF_EffectWorld* source, const PF_Rect*, void* refcon,
               PF_IteratePixelFloatFunc function, PF_EffectWorld* destination) {
    auto& world = *static_cast<TinyWorld*>(destination->platform_ref);
    for (A_long y = 0; y < std::min(source->height, destination->height); ++y) {
        for (A_long x = 0; x < std::min(source->width, destination->width); ++x) {
            PF_PixelFloat unread{};
            function(refcon, x, y, &unread, reinterpret_cast<PF_PixelFloat*>(&world.At<float>(x, y, 0)));
        }
    }
    return Answer("iterate");
}

PF_Err GetPixelFormat(const PF_EffectWorld* def, PF_PixelFormat* format) {
    const auto& world = *static_cast<const TinyWorld*>(def->platform_ref);
    *format = world.pixelSize == sizeof(PF_Pixel8)    ? PF_PixelFormat_ARGB32
              : world.pixelSize == sizeof(PF_Pixel16) ? PF_PixelFormat_ARGB64
                                                      : PF_PixelFormat_ARGB128;
    return Answer("PF_GetPixelFormat");
}

const PF_HandleSuite1 kHandles = [] {
    PF_HandleSuite1 suite{};
    suite.host_new_handle = NewHandle;
    suite.host_lock_handle = LockHandle;
    suite.host_unlock_handle = UnlockHandle;
    suite.host_dispose_handle = DisposeHandle;
    return suite;
}();
const PF_iterateFloatSuite1 kIteration{Iterate, nullptr, nullptr};
const PF_PixelDataSuite1 kPixelData{nullptr, nullptr, GetPixelsFloat};
const PF_WorldSuite2 kWorlds{nullptr, nullptr, GetPixelFormat};

SPErr AcquireSuite(const char* name, int32, const void** suite) {
    const std::map<std::string, const void*> suites = {{kPFHandleSuite, &kHandles},
                                                       {kPFIterateFloatSuite, &kIteration},
                                                       {kPFPixelDataSuite, &kPixelData},
                                                       {kPFWorldSuite, &kWorlds}};
    const SPErr err = Logged(std::string("acquire ") + name);
    *suite = err == 0 ? suites.at(name) : nullptr;
    return err;
}

SPErr ReleaseSuite(const char* name, int32) {
    return Logged(std::string("release ") + name);
}

PF_Err CheckoutParam(PF_ProgPtr, PF_ParamIndex index, A_long, A_long, A_u_long, PF_ParamDef* def) {
    if (const PF_Err err = Answer("checkout_param")) return err;
    ++host->checkedOutParams;
    if (host->fillParam) host->fillParam(index, *def);
    return PF_Err_NONE;
}

PF_Err CheckinParam(PF_ProgPtr, PF_ParamDef*) {
    --host->checkedOutParams;
    const bool first = host->log.empty() || host->log.back() != "checkin_param";
    return first ? Logged("checkin_param") : Answer("checkin_param");
}

PF_Err CheckoutWorld(const char* name, TinyWorld* world, PF_EffectWorld** pixels) {
    const PF_Err err = Logged(name);
    if (err == PF_Err_NONE) *pixels = &world->def;
    return err;
}

void FillUtilities(PF_UtilCallbacks& utils) {
    utils.get_pixel_data8 = GetPixels8;
    utils.get_pixel_data16 = GetPixels16;
    utils.ansi.sprintf = std::sprintf;
}

void FillSmart(PF_SmartRenderCallbacks& smart) {
    smart.checkout_layer_pixels = [](PF_ProgPtr, A_long id, PF_EffectWorld** pixels) {
        return CheckoutWorld(id == 0 ? "checkout_layer_pixels" : "wrong id", host->inputWorld, pixels);
    };
    smart.checkin_layer_pixels = [](PF_ProgPtr, A_long id) {
        return Logged(id == 0 ? "checkin_layer_pixels" : "wrong id");
    };
    smart.checkout_output = [](PF_ProgPtr, PF_EffectWorld** pixels) {
        return CheckoutWorld("checkout_output", host->outputWorld, pixels);
    };
}

}  // namespace

TinyWorld::TinyWorld(A_long width, A_long height, size_t bytesPerPixel, A_long padding)
    : pixelSize(bytesPerPixel) {
    def.width = width;
    def.height = height;
    def.rowbytes = width * static_cast<A_long>(bytesPerPixel) + padding;
    bytes.assign(static_cast<size_t>(def.rowbytes) * static_cast<size_t>(height), std::byte{0xA5});
    def.data = reinterpret_cast<PF_PixelPtr>(bytes.data());
    def.world_flags = bytesPerPixel == sizeof(PF_Pixel16) ? PF_WorldFlag_DEEP : 0;
    def.platform_ref = this;
}

TinyHost::TinyHost() {
    host = this;
    FillUtilities(utils);
    FillSmart(smart);
    basic.AcquireSuite = AcquireSuite;
    basic.ReleaseSuite = ReleaseSuite;
    in_data.utils = &utils;
    in_data.pica_basicP = &basic;
    in_data.inter.checkout_param = CheckoutParam;
    in_data.inter.checkin_param = CheckinParam;
    in_data.inter.abort = [](PF_ProgPtr) { return Logged("abort"); };
    in_data.downsample_x = in_data.downsample_y = {1, 1};
}

TinyHost::~TinyHost() {
    host = nullptr;
}

}  // namespace flumo::tests
