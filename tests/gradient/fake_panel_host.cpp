#include "tests/gradient/fake_panel_host.h"

#include <cstdio>
#include <cstring>
#include <sstream>
#include <stdexcept>

namespace flumo::test {
namespace {

FakePanelHost* g_host = nullptr;

template <typename... Parts>
std::string Text(const Parts&... parts) {
    std::ostringstream text;
    ((text << parts), ...);
    return text.str();
}

std::string Text(const DRAWBOT_ColorRGBA& c) {
    return Text('(', c.red, ' ', c.green, ' ', c.blue, ' ', c.alpha, ')');
}

PF_Handle NewHandle(A_HandleSize size) {
    if (g_host->Fails(PF_Err_OUT_OF_MEMORY)) return nullptr;
    auto block = std::make_unique<FakePanelHost::Block>();
    block->bytes.resize(size);
    block->master = block->bytes.data();
    const PF_Handle handle = &block->master;
    g_host->blocks[handle] = std::move(block);
    return handle;
}

void* LockHandle(PF_Handle handle) {
    if (g_host->Fails(PF_Err_OUT_OF_MEMORY)) return nullptr;
    FakePanelHost::Block& block = *g_host->blocks.at(handle);
    ++block.locks;
    return block.master;
}

void UnlockHandle(PF_Handle handle) {
    --g_host->blocks.at(handle)->locks;
}

void DisposeHandle(PF_Handle handle) {
    if (g_host->blocks.at(handle)->locks != 0) throw std::logic_error("disposed of a locked handle");
    g_host->blocks.erase(handle);
}

PF_Err Status() {
    return g_host->Fails(kHostFault) ? kHostFault : PF_Err_NONE;
}

PF_Err GetBgColor(PF_App_Color* color) {
    *color = {65535, 13107, 0};
    return Status();
}

PF_Err GetColor(PF_App_ColorType type, PF_App_Color* color) {
    *color = type == PF_App_Color_TEXT ? PF_App_Color{0, 0, 65535} : PF_App_Color{1, 1, 1};
    return Status();
}

PF_Err PickColor(const A_char* title, const PF_PixelFloat* sample, PF_Boolean, PF_PixelFloat* picked) {
    g_host->picker_title = title;
    g_host->picker_sample = *sample;
    *picked = g_host->picker_answer;
    return g_host->Fails(kHostFault) ? kHostFault : g_host->picker_status;
}

// The drawing reference, the supplier and the surface, which are no objects that anyone releases.
template <typename From, typename Ref>
SPErr GetFixed(From, Ref* reference) {
    *reference = reinterpret_cast<Ref>(g_host);
    return Status();
}

template <typename Ref>
SPErr NewObject(const std::string& what, Ref* reference) {
    if (g_host->Fails(kHostFault)) return kHostFault;
    auto object = std::make_unique<std::string>(what);
    *reference = reinterpret_cast<Ref>(object.get());
    g_host->objects[object.get()] = std::move(object);
    return PF_Err_NONE;
}

template <typename Ref>
std::string& Object(Ref reference) {
    return *g_host->objects.at(reinterpret_cast<const void*>(reference));
}

// A call that adds to a path or paints.
SPErr Log(std::string& to, const std::string& text) {
    const SPErr status = Status();
    if (status == PF_Err_NONE) to += text;
    return status;
}

SPErr Paint(const std::string& text) {
    return Log(g_host->painted.emplace_back(), text);
}

SPErr NewPen(DRAWBOT_SupplierRef, const DRAWBOT_ColorRGBA* color, float size, DRAWBOT_PenRef* pen) {
    return NewObject(Text("pen ", size, ' ', Text(*color)), pen);
}

SPErr NewBrush(DRAWBOT_SupplierRef, const DRAWBOT_ColorRGBA* color, DRAWBOT_BrushRef* brush) {
    return NewObject(Text(*color), brush);
}

SPErr NewPath(DRAWBOT_SupplierRef, DRAWBOT_PathRef* path) {
    return NewObject("", path);
}

SPErr NewImage(DRAWBOT_SupplierRef, int width, int height, int row_bytes, DRAWBOT_PixelLayout layout,
               const void* data, DRAWBOT_ImageRef* image) {
    const auto* bytes = static_cast<const std::byte*>(data);
    g_host->image.assign(bytes, bytes + static_cast<std::ptrdiff_t>(row_bytes) * height);
    return NewObject(Text(width, 'x', height, " row ", row_bytes, " layout ", layout), image);
}

SPErr ReleaseObject(DRAWBOT_ObjectRef object) {
    if (g_host->objects.erase(object) != 1) throw std::logic_error("released what is no object");
    return Status();
}

template <bool FakePanelHost::*kAnswer>
SPErr AnswerLayout(DRAWBOT_SupplierRef, DRAWBOT_Boolean* answer) {
    *answer = g_host->*kAnswer;
    return Status();
}

SPErr FillPath(DRAWBOT_SurfaceRef, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path, DRAWBOT_FillType type) {
    return Paint(Text("fill ", type, ' ', Object(brush), Object(path)));
}

SPErr StrokePath(DRAWBOT_SurfaceRef, DRAWBOT_PenRef pen, DRAWBOT_PathRef path) {
    return Paint(Text("stroke ", Object(pen), Object(path)));
}

SPErr DrawImage(DRAWBOT_SurfaceRef, DRAWBOT_ImageRef image, const DRAWBOT_PointF32* at, float alpha) {
    return Paint(Text("image ", Object(image), " at ", at->x, ' ', at->y, " alpha ", alpha));
}

SPErr MoveTo(DRAWBOT_PathRef path, float x, float y) {
    return Log(Object(path), Text(" M ", x, ' ', y));
}

SPErr LineTo(DRAWBOT_PathRef path, float x, float y) {
    return Log(Object(path), Text(" L ", x, ' ', y));
}

SPErr BezierTo(DRAWBOT_PathRef path, const DRAWBOT_PointF32* a, const DRAWBOT_PointF32* b,
               const DRAWBOT_PointF32* c) {
    return Log(Object(path), Text(" C ", a->x, ' ', a->y, ' ', b->x, ' ', b->y, ' ', c->x, ' ', c->y));
}

SPErr AddRect(DRAWBOT_PathRef path, const DRAWBOT_RectF32* r) {
    return Log(Object(path), Text(" R ", r->left, ' ', r->top, ' ', r->width, ' ', r->height));
}

SPErr Close(DRAWBOT_PathRef path) {
    return Log(Object(path), " Z");
}

const PF_HandleSuite1 kHandles{.host_new_handle = NewHandle,
                               .host_lock_handle = LockHandle,
                               .host_unlock_handle = UnlockHandle,
                               .host_dispose_handle = DisposeHandle,
                               .host_get_handle_size = nullptr,
                               .host_resize_handle = nullptr};
const PFAppSuite4 kApp = [] {
    PFAppSuite4 suite{};
    suite.PF_AppGetBgColor = GetBgColor;
    suite.PF_AppGetColor = GetColor;
    suite.PF_AppColorPickerDialog = PickColor;
    return suite;
}();
const PF_EffectCustomUISuite1 kCustomUi{GetFixed};
const DRAWBOT_DrawbotSuite1 kDraw{GetFixed, GetFixed};
const DRAWBOT_SupplierSuite1 kSupplier = [] {
    DRAWBOT_SupplierSuite1 suite{};
    suite.NewPen = NewPen;
    suite.NewBrush = NewBrush;
    suite.NewPath = NewPath;
    suite.NewImageFromBuffer = NewImage;
    suite.PrefersPixelLayoutARGB = AnswerLayout<&FakePanelHost::prefers_argb>;
    suite.SupportsPixelLayoutARGB = AnswerLayout<&FakePanelHost::supports_argb>;
    suite.PrefersPixelLayoutBGRA = AnswerLayout<&FakePanelHost::prefers_bgra>;
    suite.SupportsPixelLayoutBGRA = AnswerLayout<&FakePanelHost::supports_bgra>;
    suite.ReleaseObject = ReleaseObject;
    return suite;
}();
const DRAWBOT_SurfaceSuite2 kSurface = [] {
    DRAWBOT_SurfaceSuite2 suite{};
    suite.FillPath = FillPath;
    suite.StrokePath = StrokePath;
    suite.DrawImage = DrawImage;
    return suite;
}();
const DRAWBOT_PathSuite1 kPath{MoveTo, LineTo, BezierTo, AddRect, nullptr, Close};

std::string SuiteKey(const char* name, int32 version) {
    return Text(name, ' ', version);
}

SPErr AcquireSuite(const char* name, int32 version, const void** suite) {
    static const std::map<std::string, const void*> suites = {
        {"PF Handle Suite 2", &kHandles},         {"PF AE App Suite 6", &kApp},
        {"DRAWBOT Draw Suite 1", &kDraw},         {"PF Effect Custom UI Suite 1", &kCustomUi},
        {"DRAWBOT Supplier Suite 1", &kSupplier}, {"DRAWBOT Surface Suite 2", &kSurface},
        {"DRAWBOT Path Suite 1", &kPath}};
    *suite = nullptr;
    const std::string key = SuiteKey(name, version);
    if (g_host->missing_suites.contains(key) || g_host->Fails(PF_Err_BAD_CALLBACK_PARAM)) return kHostFault;
    *suite = suites.at(key);
    ++g_host->held_suites[key];
    return PF_Err_NONE;
}

SPErr ReleaseSuite(const char* name, int32 version) {
    --g_host->held_suites[SuiteKey(name, version)];
    return PF_Err_NONE;
}

}  // namespace

FakePanelHost::FakePanelHost() {
    g_host = this;
    basic_.AcquireSuite = AcquireSuite;
    basic_.ReleaseSuite = ReleaseSuite;
    utils_.ansi.sprintf = std::sprintf;
    in_data.pica_basicP = &basic_;
    in_data.utils = &utils_;
}

FakePanelHost::~FakePanelHost() {
    g_host = nullptr;
}

GradientHandle FakePanelHost::Wrap(GradientStopMap& stops) {
    const GradientHandle handle = NewHandle(sizeof(GradientRecord));
    const GradientRecord record{&stops};
    std::memcpy(*handle, &record, sizeof record);
    return handle;
}

void FakePanelHost::Dispose(GradientHandle handle) {
    DisposeHandle(handle);
}

GradientStopMap& FakePanelHost::StopsOf(GradientHandle handle) {
    return *static_cast<GradientRecord*>(*handle)->stops;
}

bool FakePanelHost::AllGivenBack(std::size_t handles) const {
    for (const auto& [handle, block] : blocks)
        if (block->locks != 0) return false;
    for (const auto& [name, count] : held_suites)
        if (count != 0) return false;
    return blocks.size() == handles && objects.empty();
}

bool FakePanelHost::Fails(PF_Err meaning) {
    if (fail_call == 0 || --fail_call != 0) return false;
    expected = meaning;
    return true;
}

}  // namespace flumo::test
