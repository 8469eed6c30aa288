#include "tests/windows/pe_image.h"

#include <cctype>
#include <functional>
#include <stdexcept>
#include <string_view>

namespace flumo::tests {

namespace {

template <typename T>
T* at(HMODULE module, std::size_t offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

std::size_t directory_offset(HMODULE module, int which) {
    const auto start = static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    return at<IMAGE_NT_HEADERS>(module, start)->OptionalHeader.DataDirectory[which].VirtualAddress;
}

std::string upper(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

using Visit = std::function<void(const std::string& library, const IMAGE_IMPORT_DESCRIPTOR&)>;

void for_each_library(HMODULE module, const Visit& visit) {
    const auto* row =
        at<IMAGE_IMPORT_DESCRIPTOR>(module, directory_offset(module, IMAGE_DIRECTORY_ENTRY_IMPORT));
    for (; row->Name != 0; ++row)
        visit(upper(at<char>(module, row->Name)), *row);
}

ULONGLONG* slot_in(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& row, std::string_view name) {
    const auto* entry = at<IMAGE_THUNK_DATA>(module, row.OriginalFirstThunk);
    auto* slot = at<IMAGE_THUNK_DATA>(module, row.FirstThunk);
    for (; entry->u1.AddressOfData != 0; ++entry, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL(entry->u1.Ordinal)) continue;
        const auto* import = at<IMAGE_IMPORT_BY_NAME>(module, entry->u1.AddressOfData);
        if (name == reinterpret_cast<const char*>(import->Name)) return &slot->u1.Function;
    }
    return nullptr;
}

}  // namespace

std::set<std::string> imported_libraries(HMODULE module) {
    std::set<std::string> libraries;
    for_each_library(module, [&](const std::string& library, const auto&) { libraries.insert(library); });
    return libraries;
}

std::set<std::string> exported_names(HMODULE module) {
    const auto* table =
        at<IMAGE_EXPORT_DIRECTORY>(module, directory_offset(module, IMAGE_DIRECTORY_ENTRY_EXPORT));
    std::set<std::string> names;
    for (DWORD i = 0; i < table->NumberOfNames; ++i) {
        names.insert(at<char>(module, at<DWORD>(module, table->AddressOfNames)[i]));
    }
    return names;
}

ULONGLONG& import_slot(HMODULE module, const std::string& library, const std::string& name) {
    ULONGLONG* found = nullptr;
    for_each_library(module, [&](const std::string& candidate, const IMAGE_IMPORT_DESCRIPTOR& row) {
        if (found == nullptr && candidate == upper(library)) found = slot_in(module, row, name);
    });
    if (found == nullptr) throw std::runtime_error("the module does not import " + name + " from " + library);
    return *found;
}

}  // namespace flumo::tests
