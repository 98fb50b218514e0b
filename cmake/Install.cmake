# SPDX-License-Identifier: MIT
# What `cmake --install` puts where, and how an application finds it: pkg-config and find_package.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The headers include one another as "frame/NAME", so the folder frame stays; what stands above it
# is the library's own, since "frame" is too common a name for the system's include folder.
file(GLOB public_headers CONFIGURE_DEPENDS frame/zelTag*.h)
set(include_folder ${CMAKE_INSTALL_INCLUDEDIR}/zelTagAPI)
install(FILES ${public_headers} DESTINATION ${include_folder}/frame)

# The program finds the library by the way from one to the other, wherever both are moved.
file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(zeltag PROPERTIES INSTALL_RPATH
    $<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>/${bin_to_lib})

# An application in C needs the archive's C++ runtime by name: its own linker driver knows of none.
if(APPLE)
    set(static_needs -lc++ "-framework IOKit" "-framework CoreFoundation")
else()
    set(static_needs -lstdc++)
endif()
target_link_libraries(zelTagAPI_static INTERFACE "$<INSTALL_INTERFACE:${static_needs}>")

install(TARGETS zeltag zelsim-bridge)
install(TARGETS zelTagAPI zelTagAPI_static EXPORT zelTagAPI
    INCLUDES DESTINATION ${include_folder} ${include_folder}/frame)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zelTagAPI)
install(EXPORT zelTagAPI NAMESPACE zelTagAPI:: FILE zelTagAPITargets.cmake
    DESTINATION ${package_folder})
configure_package_config_file(cmake/zelTagAPIConfig.cmake.in zelTagAPIConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(zelTagAPIConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/zelTagAPIConfig.cmake
              ${CMAKE_BINARY_DIR}/zelTagAPIConfigVersion.cmake DESTINATION ${package_folder})

file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
file(RELATIVE_PATH libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
list(JOIN static_needs " " static_needs)
configure_file(cmake/zelTagAPI.pc.in zelTagAPI.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zelTagAPI.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
