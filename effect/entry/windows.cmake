# What the module needs on Windows only: the exports, the property list as a resource, and the C++
# runtime inside, so that nothing but the system's own libraries is loaded with it.
enable_language(RC)

# The property list is computed by a program for the machine that builds: the module's own compiler may not make
# programs that run here.
find_program(FLUMO_BUILD_CXX NAMES c++ g++ clang++ REQUIRED DOC "C++ compiler for programs that run during the build")
set(resource ${CMAKE_CURRENT_BINARY_DIR}/flumo.rc)
set(pipl_writer ${CMAKE_CURRENT_BINARY_DIR}/write_pipl)
add_custom_command(
    OUTPUT ${resource}
    COMMAND ${FLUMO_BUILD_CXX} -std=c++20 -I${CMAKE_SOURCE_DIR} -MMD -MF ${pipl_writer}.d -MT ${resource}
            ${CMAKE_CURRENT_LIST_DIR}/write_pipl.cpp -o ${pipl_writer}
    COMMAND ${pipl_writer} ${resource}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/write_pipl.cpp
    DEPFILE ${pipl_writer}.d
    COMMENT "Writing the property list"
    VERBATIM)

target_sources(Flumo PRIVATE flumo.def ${resource})
set_target_properties(Flumo PROPERTIES PREFIX "" SUFFIX .aex)
target_link_libraries(Flumo PRIVATE -static)
# Stripped by the linker: the strip program would put the time of day into the file.
target_link_options(Flumo PRIVATE -Wl,--gc-sections -Wl,--no-insert-timestamp $<$<CONFIG:Release>:-s>)
