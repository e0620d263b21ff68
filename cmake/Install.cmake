include(CMakePackageConfigHelpers)

foreach(header ${public_headers})
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES zelmar_label/${header}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelmar_label/${folder} COMPONENT development)
endforeach()
install(FILES "${PROJECT_BINARY_DIR}/include/zelmar_label/zelmar_label_export.h"
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelmar_label COMPONENT development)

install(TARGETS zelmar_label EXPORT zelmar_label-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zelmar_label)
install(EXPORT zelmar_label-targets NAMESPACE zelmar_label:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/zelmar_label-config.cmake.in
    "${PROJECT_BINARY_DIR}/zelmar_label-config.cmake" INSTALL_DESTINATION ${package_dir}
    PATH_VARS CMAKE_INSTALL_LIBEXECDIR CMAKE_INSTALL_DATADIR)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zelmar_label-config-version.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/zelmar_label-config.cmake"
    "${PROJECT_BINARY_DIR}/zelmar_label-config-version.cmake"
    DESTINATION ${package_dir} COMPONENT development)

# Relative to the file itself, so that an installed tree can be moved.
file(RELATIVE_PATH pkgconfig_to_prefix
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file(cmake/zelmar_label.pc.in "${PROJECT_BINARY_DIR}/zelmar_label.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zelmar_label.pc"
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# A program reads its database and its scripts from its own folder. Tool, database and scripts therefore share a folder,
# and bin has a link to the tool. Programs that use the library copy database and scripts from here.
set(program_dir ${CMAKE_INSTALL_LIBEXECDIR}/zelmar_label)
# Only the shipped files: tests of other drivers may have added files beside the built programs.
get_target_property(driver_scripts zelmar_label_drivers ZELMAR_LABEL_SCRIPTS)
install(FILES "${ZELMAR_LABEL_RUNTIME_DIR}/database/drivers" DESTINATION ${program_dir}/database COMPONENT runtime)
install(FILES ${driver_scripts} DESTINATION ${program_dir}/scripts COMPONENT runtime)
if(ZELMAR_LABEL_TOOL)
    install(TARGETS zelmar-label RUNTIME DESTINATION ${program_dir} COMPONENT runtime)
    file(RELATIVE_PATH bin_to_program
        "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBEXECDIR}/zelmar_label/zelmar-label")
    install(CODE "
        file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        file(CREATE_LINK \"${bin_to_program}\"
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/zelmar-label\" SYMBOLIC)"
        COMPONENT runtime)
endif()
