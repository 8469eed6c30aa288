#include "tests/windows/pe_image.h"

#include <stdexcept>

namespace flumo::tests {

namespace {

template <typename T>
T* at(HMODULE module, size_t offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

ULONGLONG* slot_in(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& library, const std::string& name) {
    const auto* entry = at<IMAGE_THUNK_DATA>(module, library.OriginalFirstThunk);
    auto* slot = at<IMAGE_THUNK_DATA>(module, library.FirstThunk);
    for (; entry->u1.AddressOfData != 0; ++entry, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL(entry->u1.Ordinal)) continue;
        const auto* import = at<IMAGE_IMPORT_BY_NAME>(module, entry->u1.AddressOfData);
        if (name == reinterpret_cast<const char*>(import->Name)) return &slot->u1.Function;
    }
    return nullptr;
}

}  // namespace

ULONGLONG& import_slot(HMODULE module, const std::string& name) {
    const auto headers = static_cast<size_t>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    const auto& directories = at<IMAGE_NT_HEADERS>(module, headers)->OptionalHeader.DataDirectory;
    const auto* library =
        at<IMAGE_IMPORT_DESCRIPTOR>(module, directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    for (; library->Name != 0; ++library) {
        if (ULONGLONG* slot = slot_in(module, *library, name)) return *slot;
    }
    throw std::runtime_error("the module does not import " + name);
}

}  // namespace flumo::tests
