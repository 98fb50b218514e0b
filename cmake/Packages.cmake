# SPDX-License-Identifier: MIT
# Debian packages of the installed files, made by scripts/build_packages. The rules for udev are a
# package of their own, for any machine: an application that depends on the library alone needs
# them, and a library's package may hold no file whose name stays when the library's number changes.
set(ZEL_PACKAGE_MAINTAINER "libzelTagAPI maintainers <maintainers@zeltag.invalid>" CACHE STRING
    "Whom the packages name")
set(library_package libzeltagapi${PROJECT_VERSION_MAJOR})

# Their version is that of the newest entry, which goes with the project's.
file(STRINGS packaging/debian/changelog entry LIMIT_COUNT 1)
if(NOT entry MATCHES "^zeltagapi \\((.*)-([^-]*)\\) " OR
   NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/debian/changelog has no entry for ${PROJECT_VERSION}")
endif()
set(release ${CMAKE_MATCH_2})
set(version ${PROJECT_VERSION}-${release})

# What an application's package will ask for: a library as new as the one it was built with.
set(control_folder ${CMAKE_BINARY_DIR}/packaging/debian)
set(node ZELTAGAPI_${PROJECT_VERSION_MAJOR})
file(STRINGS frame/exports.txt rows REGEX "^[TD] ")
list(TRANSFORM rows REPLACE "^D ([^ ]+).*$" "T zelTagAPI_\\1;T \\1")
list(TRANSFORM rows REPLACE "^T ([^ ]+).*$" " \\1@${node} ${PROJECT_VERSION}")
list(APPEND rows " ${node}@${node} ${PROJECT_VERSION}")
list(SORT rows)
list(JOIN rows "\n" symbols)
set(soname libzelTagAPI.so.${PROJECT_VERSION_MAJOR})
file(WRITE ${control_folder}/symbols "${soname} ${library_package} #MINVER#\n"
    "* Build-Depends-Package: libzeltagapi-dev\n${symbols}\n")
file(WRITE ${control_folder}/shlibs
    "libzelTagAPI ${PROJECT_VERSION_MAJOR} ${library_package} (>= ${PROJECT_VERSION})\n")
file(WRITE ${control_folder}/triggers "activate-noawait ldconfig\n")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zeltagapi)
set(CPACK_PACKAGE_CONTACT ${ZEL_PACKAGE_MAINTAINER})
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development tools udev python)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/debian/finish.cmake)
set(CPACK_ZEL_SOURCE ${CMAKE_SOURCE_DIR})
set(CPACK_ZEL_STRIP ${CMAKE_STRIP})
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/packaging/debian/dependencies.cmake)
set(CPACK_ZEL_CONTROL ${control_folder})
set(CPACK_ZEL_LIBRARY ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/${soname})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${release})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# CPack of this age knows no field Multi-Arch, so it stands behind the one for the section.
macro(describe_package component name section multiarch)
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}\nMulti-Arch: ${multiarch}")
    file(READ packaging/debian/${component}.txt CPACK_DEBIAN_${key}_DESCRIPTION)
    string(STRIP "${CPACK_DEBIAN_${key}_DESCRIPTION}" CPACK_DEBIAN_${key}_DESCRIPTION)
endmacro()

describe_package(runtime ${library_package} libs same)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS zeltag-udev)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${control_folder}/symbols ${control_folder}/shlibs ${control_folder}/triggers)

describe_package(development libzeltagapi-dev libdevel same)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS zeltag-tools)

describe_package(tools zeltag-tools utils foreign)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library_package} (>= ${PROJECT_VERSION})")

describe_package(udev zeltag-udev misc foreign)
set(CPACK_DEBIAN_UDEV_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_UDEV_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/packaging/debian/udev/postinst)

describe_package(python python3-zeltag python foreign)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "python3 (>= 3.9), ${library_package} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
    ${CMAKE_SOURCE_DIR}/packaging/debian/python/postinst
    ${CMAKE_SOURCE_DIR}/packaging/debian/python/prerm)

include(CPack)
