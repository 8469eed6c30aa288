# flumo_room(NAME SOURCES ... LIBS ...)
# One room of the house as a static library: its sources, and the rooms below it that it may use.
function(flumo_room name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC effect_api ${arg_LIBS} PRIVATE flumo_options)
endfunction()
