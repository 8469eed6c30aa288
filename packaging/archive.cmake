# Run by CPack on the staged files: makes the archive such that it depends on nothing but their contents and
# SOURCE_DATE_EPOCH. CPack's own archives keep the order in which the file system lists a folder, and the user's id.
set(stage ${CPACK_TEMPORARY_DIRECTORY})
set(name ${CPACK_PACKAGE_FILE_NAME})
set(archive ${CPACK_PACKAGE_DIRECTORY}/${name}.${FLUMO_ARCHIVE})
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    message(FATAL_ERROR "SOURCE_DATE_EPOCH is not set; ./dev package sets it to the commit's time")
endif()
file(REMOVE ${archive})
get_filename_component(parent ${stage} DIRECTORY)

if(FLUMO_ARCHIVE STREQUAL "zip")
    set(commands "find ${name} -exec touch -h -d @$SOURCE_DATE_EPOCH {} + && find ${name} -type f | sort | zip -q -9 -X -@ ${archive}")
else()
    set(commands "tar --sort=name --mtime=@$SOURCE_DATE_EPOCH --owner=root:0 --group=root:0 --format=ustar -cf - ${name} | gzip -9n > ${archive}")
endif()
execute_process(COMMAND bash -o pipefail -c "export TZ=UTC LC_ALL=C; ${commands}" WORKING_DIRECTORY ${parent}
                COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES ${archive})
if(NOT FLUMO_ARCHIVE STREQUAL "zip")
    execute_process(COMMAND ${FLUMO_PACKAGING}/debian-package.sh ${stage} ${FLUMO_VERSION} ${CPACK_PACKAGE_DIRECTORY}
                    COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB debian_packages ${CPACK_PACKAGE_DIRECTORY}/*.deb)
    list(APPEND CPACK_EXTERNAL_BUILT_PACKAGES ${debian_packages})
endif()
