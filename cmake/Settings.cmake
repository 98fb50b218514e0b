# SPDX-License-Identifier: MIT
# Language, warnings and sanitizers for every target.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

include_directories(${CMAKE_SOURCE_DIR})
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
                    $<$<COMPILE_LANGUAGE:CXX>:-Wmissing-declarations>)
# g++ 12 sees an overlap in plain text concatenation (its bug 105651).
add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)

if(ZEL_HARDEN)
    include(cmake/Hardening.cmake)
endif()

if(ZEL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -g1) # lines are what a report shows
    add_link_options(-fsanitize=address,undefined)
endif()

if(ZEL_COVERAGE)
    add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
endif()

# Where everything is installed, which zelsim knows as well: it looks for its object there.
if(ZEL_TESTS AND CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version)
    # Packages are made of a tested build too, whatever its prefix.
    set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE})
endif()
include(GNUInstallDirs)
