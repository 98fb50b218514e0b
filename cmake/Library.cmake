# SPDX-License-Identifier: MIT
# The shared library and the archive, both of the objects of zel_objects.
set_target_properties(zel_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
target_compile_definitions(zel_objects PRIVATE ZELTAGAPI_BUILDING)

add_library(zelTagAPI SHARED)
target_link_libraries(zelTagAPI PRIVATE zel_objects)
set_target_properties(zelTagAPI PROPERTIES
    LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})

if(NOT APPLE)
    # Calls between the library's own functions stay inside it, whatever an application defines;
    # exported data stays replaceable, which copy relocations need.
    set(names ${CMAKE_SOURCE_DIR}/frame/exports.txt)
    set(script ${CMAKE_BINARY_DIR}/exports.map)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${names})
    file(STRINGS ${names} rows REGEX "^[TD] ")
    set(exported "")
    foreach(row ${rows})
        string(REGEX REPLACE "^. ([^ ]+).*$" "\\1" name ${row})
        string(APPEND exported "        ${name};\n")
        if(row MATCHES "^D")
            string(APPEND exported "        zelTagAPI_${name};\n")
        endif()
    endforeach()
    file(CONFIGURE OUTPUT ${script} @ONLY CONTENT
         "ZELTAGAPI_${PROJECT_VERSION_MAJOR} {\n    global:\n${exported}    local:\n        *;\n};\n")
    target_link_options(zelTagAPI PRIVATE
        -Wl,--version-script=${script} -Wl,--no-undefined-version -Wl,-Bsymbolic-functions
        -Wl,-z,relro,-z,now)
    set_target_properties(zelTagAPI PROPERTIES LINK_DEPENDS ${script})
    if(NOT ZEL_SANITIZE) # a sanitizer's runtime is found in the program
        target_link_options(zelTagAPI PRIVATE -Wl,-z,defs)
    endif()
endif()

# The archive holds one object: whoever needs any of it also gets the part that runs at load, and
# the names that the shared library hides are local.
if(APPLE)
    add_library(zelTagAPI_static STATIC)
    target_sources(zelTagAPI_static PRIVATE $<TARGET_OBJECTS:zel_objects>)
    target_link_libraries(zelTagAPI_static INTERFACE
        "$<BUILD_INTERFACE:-framework IOKit;-framework CoreFoundation>")
else()
    find_program(ZEL_MERGING_LINKER NAMES ld.bfd ld REQUIRED) # lld keeps groups apart
    set(merged ${CMAKE_BINARY_DIR}/zelTagAPI.o)
    add_custom_command(OUTPUT ${merged}
        COMMAND ${ZEL_MERGING_LINKER} -r --force-group-allocation -o ${merged}
                $<TARGET_OBJECTS:zel_objects>
        COMMAND ${CMAKE_OBJCOPY} --localize-hidden ${merged}
        DEPENDS zel_objects $<TARGET_OBJECTS:zel_objects>
        COMMAND_EXPAND_LISTS VERBATIM)
    add_library(zelTagAPI_static STATIC ${merged})
    set_source_files_properties(${merged} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
endif()
set_target_properties(zelTagAPI_static PROPERTIES OUTPUT_NAME zelTagAPI LINKER_LANGUAGE CXX)
