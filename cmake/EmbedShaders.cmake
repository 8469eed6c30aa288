# flumo_embed_shaders(OUT HEADER TEXT SYMBOL [TEXT SYMBOL ...])
#   OUT     C++ source to write, one raw string literal a text
#   HEADER  header that declares the strings
#   TEXT    file beside the caller; SYMBOL is the name of its string
# Run as a script (cmake -P) it writes the source; included it adds the rule that keeps it up to date.
function(flumo_embed_shaders out header)
    set(texts "")
    set(pairs ${ARGN})
    while(pairs)
        list(POP_FRONT pairs text symbol)
        list(APPEND texts ${CMAKE_CURRENT_SOURCE_DIR}/${text})
    endwhile()
    string(JOIN "," joined ${ARGN})
    add_custom_command(
        OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -DOUT=${out} -DHEADER=${header} -DFOLDER=${CMAKE_CURRENT_SOURCE_DIR}
                "-DPAIRS=${joined}" -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
        DEPENDS ${texts} ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
        COMMENT "Embedding shader texts"
        VERBATIM)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
    string(REPLACE "," ";" pairs "${PAIRS}")
    set(source "// Generated from the shader texts; edit those.\n#include \"${HEADER}\"\n\nnamespace flumo {\n")
    while(pairs)
        list(POP_FRONT pairs text symbol)
        file(READ "${FOLDER}/${text}" content)
        string(APPEND source "\nconst char* const ${symbol} = R\"glsl(${content})glsl\";\n")
    endwhile()
    string(APPEND source "\n}  // namespace flumo\n")
    file(WRITE "${OUT}" "${source}")
endif()
