#include "effect/gpu/software_driver.h"

#include <glbinding/gl33core/gl.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <stdexcept>

#include "effect/gpu/gl/fault.h"
#include "effect/gpu/gl/program.h"
#include "effect/shaders/shader_texts.h"

using namespace gl33core;

namespace flumo {

namespace {

constexpr std::string_view kSoftwareRenderers[] = {"llvmpipe", "softpipe", "SwiftShader"};

// Recursive, since a host may request a frame inside a callback of another.
std::recursive_mutex SoftwareDriverMutex;

/// The place of a switch's declaration: from `uniform` or the type up to the semicolon.
struct Declaration {
    size_t begin;
    size_t length;
};

Declaration FindDeclaration(std::string_view text, const LookConstant& constant) {
    const std::string typed = std::string(constant.type) + " " + std::string(constant.name);
    size_t begin = text.find("\nuniform " + typed + ";");
    if (begin == std::string_view::npos) begin = text.find("\n" + typed + " =");
    if (begin == std::string_view::npos) throw std::logic_error("the main text does not declare " + typed);
    return {begin + 1, text.find(';', begin) - begin};
}

std::string ConstantText(const LookConstant& constant) {
    const std::string type(constant.type);
    return "const " + type + " " + std::string(constant.name) + " = " + type + "(" +
           std::to_string(constant.value) + ");";
}

GLuint BuildLookProgram(const Look& look) {
    constexpr std::array<int, 2> attributes = {kAttributePosition, kAttributeColor};
    try {
        return AESDK_OpenGL_BuildProgram(kUvVertexText, MainTextForLook(look).c_str(), attributes);
    } catch (const AESDK_OpenGL_Fault&) {
        return 0;
    }
}

void DeleteLookProgram(LookProgram& entry) {
    if (entry.program != 0) glDeleteProgram(entry.program);
}

/// The look's entry at the front of the list.
LookProgram& NewestEntry(std::vector<LookProgram>& programs, const Look& look) {
    auto entry = std::ranges::find(programs, look, &LookProgram::look);
    if (entry == programs.end()) {
        if (programs.size() == kLookProgramLimit) {
            DeleteLookProgram(programs.back());
            programs.pop_back();
        }
        programs.push_back({look, BuildLookProgram(look)});
        entry = std::prev(programs.end());
    }
    std::rotate(programs.begin(), entry, std::next(entry));
    return programs.front();
}

}  // namespace

bool IsSoftwareRenderer(std::string_view renderer) {
    return std::ranges::any_of(kSoftwareRenderers, [renderer](std::string_view name) {
        return renderer.find(name) != std::string_view::npos;
    });
}

std::string MainTextForLook(const Look& look) {
    std::string text = kMainFragmentText;
    for (const LookConstant& constant : look) {
        const Declaration declaration = FindDeclaration(text, constant);
        text.replace(declaration.begin, declaration.length, ConstantText(constant));
    }
    return text;
}

GLuint AESDK_OpenGL_ProgramForLook(AESDK_OpenGL_EffectRenderData& renderData, const Look& look) {
    if (!renderData.softwareDriver) return renderData.mainProgram;
    const LookProgram& entry = NewestEntry(renderData.lookPrograms, look);
    return entry.program != 0 ? entry.program : renderData.mainProgram;
}

void DeleteLookPrograms(std::vector<LookProgram>& programs) {
    std::ranges::for_each(programs, DeleteLookProgram);
    programs.clear();
}

SoftwareTurn::SoftwareTurn(const AESDK_OpenGL_EffectCommonData* root)
    : taken_(root != nullptr && root->softwareDriver) {
    if (taken_) SoftwareDriverMutex.lock();
}

SoftwareTurn::~SoftwareTurn() {
    if (taken_) SoftwareDriverMutex.unlock();
}

SoftwareTurnPause::SoftwareTurnPause(const AESDK_OpenGL_EffectRenderData& renderData)
    : paused_(renderData.softwareDriver) {
    if (paused_) SoftwareDriverMutex.unlock();
}

SoftwareTurnPause::~SoftwareTurnPause() {
    if (paused_) SoftwareDriverMutex.lock();
}

}  // namespace flumo
