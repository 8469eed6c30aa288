#include "tests/windows/platform_spy.h"

#include <cstring>
#include <map>
#include <mutex>
#include <set>
#include <utility>

#include "tests/windows/pe_image.h"

namespace flumo::tests::spy {

namespace {

using CreateAttribs = HGLRC(WINAPI*)(HDC, HGLRC, const int*);
using ExtensionsString = const char*(WINAPI*)(HDC);

struct State {
    std::mutex mutex;
    std::vector<std::string> calls;
    std::map<char, int> made;
    std::map<std::pair<char, const void*>, std::string> names;
    std::multiset<std::string, std::less<>> failures;
    std::vector<std::string> hidden;
    std::map<HGLRC, HGLRC> partner;
    HGLRC root = nullptr;
    CreateAttribs create_attribs = nullptr;
    ExtensionsString extensions_string = nullptr;
    int live_contexts = 0;
    int wrong_shares = 0;
};

// Never destroyed: the module may still call while the process ends.
State& state() {
    static State& the_one = *new State;
    return the_one;
}

using Lock = std::lock_guard<std::mutex>;

// The helpers below run under the lock.

// 'w' window, 'd' device context, 'c' GL context.
std::string name_of(char kind, const void* handle) {
    if (handle == nullptr) return "-";
    std::string& name = state().names[{kind, handle}];
    if (name.empty()) name.append(1, kind).append(std::to_string(state().made[kind]++));
    return name;
}

// The system gives out handles again: what is made now is new, whatever had the handle before.
std::string name_of_new(char kind, const void* handle) {
    state().names.erase({kind, handle});
    return name_of(kind, handle);
}

void note(std::string call) {
    state().calls.push_back(std::move(call));
}

bool must_fail(std::string_view call) {
    const auto planned = state().failures.find(call);
    if (planned == state().failures.end()) return false;
    state().failures.erase(planned);
    SetLastError(ERROR_NOT_SUPPORTED);
    return true;
}

ATOM WINAPI register_class(const WNDCLASSEXA* record) {
    const Lock lock(state().mutex);
    note(std::string("RegisterClassExA ") + record->lpszClassName);
    return must_fail("RegisterClassExA") ? ATOM{0} : RegisterClassExA(record);
}

HWND WINAPI create_window(DWORD ex_style, LPCSTR class_name, LPCSTR title, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                          LPVOID parameter) {
    const Lock lock(state().mutex);
    HWND window = nullptr;
    if (!must_fail("CreateWindowExA")) {
        window = CreateWindowExA(ex_style, class_name, title, style, x, y, width, height, parent, menu,
                                 instance, parameter);
    }
    note("CreateWindowExA " + name_of_new('w', window));
    return window;
}

BOOL WINAPI unregister_class(LPCSTR name, HINSTANCE instance) {
    const Lock lock(state().mutex);
    note(std::string("UnregisterClassA ") + name + (instance == nullptr ? " -" : " instance"));
    return UnregisterClassA(name, instance);
}

HDC WINAPI get_dc(HWND window) {
    const Lock lock(state().mutex);
    const HDC dc = GetDC(window);
    note("GetDC " + name_of('w', window) + " " + name_of_new('d', dc));
    return dc;
}

int WINAPI release_dc(HWND window, HDC dc) {
    const Lock lock(state().mutex);
    note("ReleaseDC " + name_of('w', window) + " " + name_of('d', dc));
    return ReleaseDC(window, dc);
}

int WINAPI choose_format(HDC dc, const PIXELFORMATDESCRIPTOR* format) {
    const Lock lock(state().mutex);
    note("ChoosePixelFormat " + name_of('d', dc));
    return must_fail("ChoosePixelFormat") ? 0 : ChoosePixelFormat(dc, format);
}

BOOL WINAPI set_format(HDC dc, int chosen, const PIXELFORMATDESCRIPTOR* format) {
    const Lock lock(state().mutex);
    note("SetPixelFormat " + name_of('d', dc));
    return must_fail("SetPixelFormat") ? FALSE : SetPixelFormat(dc, chosen, format);
}

HGLRC WINAPI create_context(HDC dc) {
    const Lock lock(state().mutex);
    const HGLRC context = must_fail("wglCreateContext") ? nullptr : wglCreateContext(dc);
    state().root = context;
    state().live_contexts += context != nullptr;
    note("wglCreateContext " + name_of('d', dc) + " " + name_of_new('c', context));
    return context;
}

std::string text_of(const int* attributes) {
    std::string text;
    for (; attributes != nullptr && *attributes != 0; ++attributes)
        text.append(1, ' ').append(std::to_string(*attributes));
    return text;
}

HGLRC WINAPI create_attribs(HDC dc, HGLRC share, const int* attributes) {
    const Lock lock(state().mutex);
    const HGLRC partner = share != nullptr ? share : state().root;
    const HGLRC context =
        must_fail("wglCreateContextAttribsARB") ? nullptr : state().create_attribs(dc, partner, attributes);
    state().live_contexts += context != nullptr;
    if (context != nullptr) state().partner[context] = partner;
    note("wglCreateContextAttribsARB " + name_of('d', dc) + " " + name_of('c', share) + text_of(attributes) +
         " " + name_of_new('c', context));
    return context;
}

BOOL WINAPI make_current(HDC dc, HGLRC context) {
    const Lock lock(state().mutex);
    note("wglMakeCurrent " + name_of('d', dc) + " " + name_of('c', context));
    return must_fail("wglMakeCurrent") ? FALSE : wglMakeCurrent(dc, context);
}

BOOL WINAPI delete_context(HGLRC context) {
    const Lock lock(state().mutex);
    note("wglDeleteContext " + name_of('c', context));
    --state().live_contexts;
    state().partner.erase(context);
    return wglDeleteContext(context);
}

BOOL WINAPI share_lists(HGLRC first, HGLRC second) {
    const Lock lock(state().mutex);
    note("wglShareLists " + name_of('c', first) + " " + name_of('c', second));
    if (must_fail("wglShareLists")) return FALSE;
    const auto pair = state().partner.find(second);
    if (pair != state().partner.end() && pair->second == first) return TRUE;
    ++state().wrong_shares;
    SetLastError(ERROR_INVALID_OPERATION);
    return FALSE;
}

const char* WINAPI extensions_string(HDC dc) {
    const Lock lock(state().mutex);
    note("wglGetExtensionsStringARB " + name_of('d', dc));
    static std::string list;
    list = state().extensions_string(dc);
    for (const std::string& name : state().hidden) {
        for (auto at = list.find(name); at != std::string::npos; at = list.find(name))
            list.erase(at, name.size());
    }
    return list.c_str();
}

template <typename Function>
PROC as_proc(Function function) {
    return reinterpret_cast<PROC>(reinterpret_cast<void*>(function));
}

PROC WINAPI get_proc(LPCSTR name) {
    const PROC found = wglGetProcAddress(name);
    if (std::strncmp(name, "wgl", 3) != 0) return found;
    const Lock lock(state().mutex);
    note(std::string("wglGetProcAddress ") + name);
    if (found == nullptr || must_fail(name)) return nullptr;
    void* const address = reinterpret_cast<void*>(found);
    if (std::strcmp(name, "wglCreateContextAttribsARB") == 0) {
        state().create_attribs = reinterpret_cast<CreateAttribs>(address);
        return as_proc(create_attribs);
    }
    if (std::strcmp(name, "wglGetExtensionsStringARB") == 0) {
        state().extensions_string = reinterpret_cast<ExtensionsString>(address);
        return as_proc(extensions_string);
    }
    return found;
}

template <typename Function>
void redirect(HMODULE module, const char* name, Function replacement) {
    ULONGLONG& slot = import_slot(module, name);
    DWORD before = 0;
    VirtualProtect(&slot, sizeof(slot), PAGE_READWRITE, &before);
    slot = reinterpret_cast<ULONGLONG>(replacement);
    VirtualProtect(&slot, sizeof(slot), before, &before);
}

}  // namespace

void install(HMODULE module) {
    redirect(module, "RegisterClassExA", register_class);
    redirect(module, "CreateWindowExA", create_window);
    redirect(module, "UnregisterClassA", unregister_class);
    redirect(module, "GetDC", get_dc);
    redirect(module, "ReleaseDC", release_dc);
    redirect(module, "ChoosePixelFormat", choose_format);
    redirect(module, "SetPixelFormat", set_format);
    redirect(module, "wglCreateContext", create_context);
    redirect(module, "wglMakeCurrent", make_current);
    redirect(module, "wglDeleteContext", delete_context);
    redirect(module, "wglShareLists", share_lists);
    redirect(module, "wglGetProcAddress", get_proc);
}

std::vector<std::string> calls() {
    const Lock lock(state().mutex);
    return state().calls;
}

void forget_calls() {
    const Lock lock(state().mutex);
    state().calls.clear();
}

void fail_next(std::string_view call) {
    const Lock lock(state().mutex);
    state().failures.emplace(call);
}

void hide_extension(std::string_view name) {
    const Lock lock(state().mutex);
    state().hidden.emplace_back(name);
}

int live_contexts() {
    const Lock lock(state().mutex);
    return state().live_contexts;
}

int wrong_shares() {
    const Lock lock(state().mutex);
    return state().wrong_shares;
}

}  // namespace flumo::tests::spy
