# Compiler options of every target of ours: warnings, and sanitizers where a preset asks for one.
set(FLUMO_SANITIZE "" CACHE STRING "address, thread or undefined")
option(FLUMO_WERROR "Treat warnings as errors" ON)

add_library(flumo_options INTERFACE)
target_compile_options(flumo_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(FLUMO_WERROR)
    target_compile_options(flumo_options INTERFACE -Werror)
endif()
# The image is float arithmetic that tests repeat: no fused multiply-add behind our back.
target_compile_options(flumo_options INTERFACE -ffp-contract=off)
if(FLUMO_SANITIZE)
    # Little optimisation and lines alone: the build, not the tests, takes most of a sanitizer's time.
    target_compile_options(flumo_options INTERFACE -O1 -g1 -fsanitize=${FLUMO_SANITIZE} -fno-omit-frame-pointer
                           -fno-sanitize-recover=all)
    # g++ takes instrumented members of the standard library (std::regex) for uninitialised ones.
    target_compile_options(flumo_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(flumo_options INTERFACE -fsanitize=${FLUMO_SANITIZE})
endif()
