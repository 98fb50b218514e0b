# SPDX-License-Identifier: MIT
# What `cmake --install` puts where, and how an application finds it: pkg-config and find_package.
# Each file belongs to one component, of which cmake/Packages.cmake makes packages: runtime,
# development, tools, udev, python.
include(CMakePackageConfigHelpers)

set(simulator_program zelsim_program)
set(simulator_folder ${CMAKE_INSTALL_LIBDIR}/zeltag) # of the object that is preloaded

# The headers include one another as "frame/NAME", so the folder frame stays; what stands above it
# is the library's own, since "frame" is too common a name for the system's include folder.
file(GLOB public_headers CONFIGURE_DEPENDS frame/zelTag*.h)
set(include_folder ${CMAKE_INSTALL_INCLUDEDIR}/zelTagAPI)
install(FILES ${public_headers} DESTINATION ${include_folder}/frame COMPONENT development)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libzeltagapi-dev
        COMPONENT development PATTERN __pycache__ EXCLUDE PATTERN build EXCLUDE)

# A program finds the library by the way from one to the other, wherever both are moved.
set(here $<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>)
file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(zeltag PROPERTIES INSTALL_RPATH ${here}/${bin_to_lib})
set_target_properties(zelsim_preload PROPERTIES INSTALL_RPATH ${here}/..)

# An application in C needs the archive's C++ runtime by name: its own linker driver knows of none.
if(APPLE)
    set(static_needs -lc++ "-framework IOKit" "-framework CoreFoundation")
else()
    set(static_needs -lstdc++)
endif()
target_link_libraries(zelTagAPI_static INTERFACE "$<INSTALL_INTERFACE:${static_needs}>")

install(TARGETS zeltag ${simulator_program} COMPONENT tools)
install(TARGETS zelsim_preload LIBRARY DESTINATION ${simulator_folder} COMPONENT tools)
install(TARGETS zelTagAPI zelTagAPI_static EXPORT zelTagAPI
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION ${include_folder} ${include_folder}/frame)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zelTagAPI)
install(EXPORT zelTagAPI NAMESPACE zelTag:: FILE zelTagAPITargets.cmake
    DESTINATION ${package_folder} COMPONENT development)
configure_package_config_file(cmake/zelTagAPIConfig.cmake.in zelTagAPIConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(zelTagAPIConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/zelTagAPIConfig.cmake
              ${CMAKE_BINARY_DIR}/zelTagAPIConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT development)

file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
file(RELATIVE_PATH libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
list(JOIN static_needs " " static_needs)
configure_file(cmake/zelTagAPI.pc.in zelTagAPI.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zelTagAPI.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# References, where they are made.
install(FILES ${program_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
foreach(page ${text_pages})
    string(REGEX MATCH "[0-9]$" section ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT tools)
endforeach()
if(function_stamp)
    install(DIRECTORY ${man_folder}/man3 DESTINATION ${CMAKE_INSTALL_MANDIR}
        COMPONENT development)
endif()
foreach(row "bash bash-completion/completions" "zsh zsh/site-functions"
            "fish fish/vendor_completions.d")
    string(REPLACE " " ";" row ${row})
    list(GET row 0 shell)
    list(GET row 1 folder)
    set(files ${completions})
    list(FILTER files INCLUDE REGEX "/${shell}/[^/]+$")
    install(FILES ${files} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} COMPONENT tools)
endforeach()

# udev looks into lib/udev of /usr and of /usr/local, wherever the system keeps its libraries.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    install(FILES ${ZEL_UDEV_RULES} DESTINATION lib/udev/rules.d COMPONENT udev)
endif()
