# flumo_library(NAME SOURCES ... LIBS ...)
# One folder of the sources as a static library: its sources, and the libraries below it that it may use.
function(flumo_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC effect_api ${arg_LIBS} PRIVATE flumo_options)
endfunction()
