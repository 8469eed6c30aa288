#include "host/module/host_error.h"

#include <algorithm>
#include <array>

namespace flumo::host {

namespace {

struct NameRow {
    A_long number;
    const char* name;
};

// Every command and error that effect_api/commands.h names; a test compares the two.
constexpr NameRow kCommands[] = {
    {PF_Cmd_ABOUT, "PF_Cmd_ABOUT"},
    {PF_Cmd_GLOBAL_SETUP, "PF_Cmd_GLOBAL_SETUP"},
    {PF_Cmd_GLOBAL_SETDOWN, "PF_Cmd_GLOBAL_SETDOWN"},
    {PF_Cmd_PARAMS_SETUP, "PF_Cmd_PARAMS_SETUP"},
    {PF_Cmd_SEQUENCE_SETUP, "PF_Cmd_SEQUENCE_SETUP"},
    {PF_Cmd_SEQUENCE_RESETUP, "PF_Cmd_SEQUENCE_RESETUP"},
    {PF_Cmd_SEQUENCE_FLATTEN, "PF_Cmd_SEQUENCE_FLATTEN"},
    {PF_Cmd_SEQUENCE_SETDOWN, "PF_Cmd_SEQUENCE_SETDOWN"},
    {PF_Cmd_DO_DIALOG, "PF_Cmd_DO_DIALOG"},
    {PF_Cmd_FRAME_SETUP, "PF_Cmd_FRAME_SETUP"},
    {PF_Cmd_RENDER, "PF_Cmd_RENDER"},
    {PF_Cmd_FRAME_SETDOWN, "PF_Cmd_FRAME_SETDOWN"},
    {PF_Cmd_USER_CHANGED_PARAM, "PF_Cmd_USER_CHANGED_PARAM"},
    {PF_Cmd_UPDATE_PARAMS_UI, "PF_Cmd_UPDATE_PARAMS_UI"},
    {PF_Cmd_EVENT, "PF_Cmd_EVENT"},
    {PF_Cmd_GET_EXTERNAL_DEPENDENCIES, "PF_Cmd_GET_EXTERNAL_DEPENDENCIES"},
    {PF_Cmd_COMPLETELY_GENERAL, "PF_Cmd_COMPLETELY_GENERAL"},
    {PF_Cmd_QUERY_DYNAMIC_FLAGS, "PF_Cmd_QUERY_DYNAMIC_FLAGS"},
    {PF_Cmd_AUDIO_RENDER, "PF_Cmd_AUDIO_RENDER"},
    {PF_Cmd_AUDIO_SETUP, "PF_Cmd_AUDIO_SETUP"},
    {PF_Cmd_AUDIO_SETDOWN, "PF_Cmd_AUDIO_SETDOWN"},
    {PF_Cmd_ARBITRARY_CALLBACK, "PF_Cmd_ARBITRARY_CALLBACK"},
    {PF_Cmd_SMART_PRE_RENDER, "PF_Cmd_SMART_PRE_RENDER"},
    {PF_Cmd_SMART_RENDER, "PF_Cmd_SMART_RENDER"},
    {PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, "PF_Cmd_GET_FLATTENED_SEQUENCE_DATA"},
    {PF_Cmd_TRANSLATE_PARAMS_TO_PREFS, "PF_Cmd_TRANSLATE_PARAMS_TO_PREFS"},
    {PF_Cmd_SMART_RENDER_GPU, "PF_Cmd_SMART_RENDER_GPU"},
    {PF_Cmd_GPU_DEVICE_SETUP, "PF_Cmd_GPU_DEVICE_SETUP"},
    {PF_Cmd_GPU_DEVICE_SETDOWN, "PF_Cmd_GPU_DEVICE_SETDOWN"},
};

constexpr NameRow kErrors[] = {
    {PF_Err_OUT_OF_MEMORY, "PF_Err_OUT_OF_MEMORY"},
    {PF_Err_INTERNAL_STRUCT_DAMAGED, "PF_Err_INTERNAL_STRUCT_DAMAGED"},
    {PF_Err_INVALID_INDEX, "PF_Err_INVALID_INDEX"},
    {PF_Err_UNRECOGNIZED_PARAM_TYPE, "PF_Err_UNRECOGNIZED_PARAM_TYPE"},
    {PF_Err_INVALID_CALLBACK, "PF_Err_INVALID_CALLBACK"},
    {PF_Err_BAD_CALLBACK_PARAM, "PF_Err_BAD_CALLBACK_PARAM"},
    {PF_Interrupt_CANCEL, "PF_Interrupt_CANCEL"},
    {PF_Err_CANNOT_PARSE_KEYFRAME_TEXT, "PF_Err_CANNOT_PARSE_KEYFRAME_TEXT"},
};

std::string sentence(PF_Cmd command, PF_Err code, const std::string& message) {
    std::string text = command_name(command) + " failed with " + error_name(code);
    return message.empty() ? text : text + ": " + message;
}

}  // namespace

std::string command_name(PF_Cmd command) {
    const auto* row = std::ranges::find(kCommands, command, &NameRow::number);
    return row == std::end(kCommands) ? "command " + std::to_string(command) : row->name;
}

std::string error_name(PF_Err error) {
    const auto* row = std::ranges::find(kErrors, error, &NameRow::number);
    const std::string number = std::to_string(error);
    return row == std::end(kErrors) ? number : number + " (" + row->name + ")";
}

HostError::HostError(PF_Cmd command, PF_Err code, std::string message)
    : std::runtime_error(sentence(command, code, message)),
      command_(command),
      code_(code),
      message_(std::move(message)) {}

}  // namespace flumo::host
