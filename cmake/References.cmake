# SPDX-License-Identifier: MIT
# Manual pages and completions: of the programs from their parsers, of the functions from the public
# headers, of files and concepts from docs/man. What they are made with may be missing, but not
# where packages are made (ZEL_PACKAGE).
set(reference_folder ${CMAKE_BINARY_DIR}/packaging)
set(man_folder ${reference_folder}/man)
set(program_pages "")   # of section 1
set(text_pages "")      # of sections 5 and 7
set(function_stamp "")  # stands for those of section 3
set(completions "")

function(say_what_is_left_out what needed)
    if(ZEL_PACKAGE)
        message(FATAL_ERROR "${what} can't be made without ${needed}")
    endif()
    message(STATUS "${what} are left out: they are made with ${needed}")
endfunction()

# The pages' date is that of the packages' newest entry.
file(STRINGS packaging/debian/changelog dates REGEX "^ -- ")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS packaging/debian/changelog)
list(GET dates 0 date)
string(REGEX MATCH "([0-9][0-9]) ([A-Z][a-z][a-z]) (20[0-9][0-9])" date "${date}")
set(day ${CMAKE_MATCH_1})
set(year ${CMAKE_MATCH_3})
set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
list(FIND months "${CMAKE_MATCH_2}" month)
math(EXPR month "${month} + 101")
string(SUBSTRING ${month} 1 2 month)
set(page_date ${year}-${month}-${day})

# generator: a program that prints each form of `program`, see cli/reference.
function(add_program_reference program generator)
    foreach(row "manual man/man1/${program}.1" "bash completions/bash/${program}"
                "zsh completions/zsh/_${program}" "fish completions/fish/${program}.fish")
        string(REPLACE " " ";" row ${row})
        list(GET row 0 form)
        list(GET row 1 name)
        set(file ${reference_folder}/${name})
        cmake_path(GET file PARENT_PATH folder)
        file(MAKE_DIRECTORY ${folder})
        add_custom_command(OUTPUT ${file}
            COMMAND ${generator} ${form} ${PROJECT_VERSION} ${page_date} > ${file}
            DEPENDS ${generator} VERBATIM)
        if(form STREQUAL manual)
            set(program_pages ${program_pages} ${file} PARENT_SCOPE)
        else()
            list(APPEND completions ${file})
        endif()
    endforeach()
    set(completions ${completions} PARENT_SCOPE)
endfunction()

if(TARGET zeltag_reference)
    add_program_reference(zeltag zeltag_reference)
    add_program_reference(zelsim zelsim_reference)
endif()

find_program(ZEL_GO_MD2MAN go-md2man)
file(GLOB texts CONFIGURE_DEPENDS docs/man/*.md)
if(ZEL_GO_MD2MAN)
    foreach(text ${texts})
        cmake_path(GET text STEM LAST_ONLY name) # zeltag-template.5
        string(REGEX MATCH "[0-9]$" section ${name})
        set(page ${man_folder}/man${section}/${name})
        add_custom_command(OUTPUT ${page}
            COMMAND ${CMAKE_COMMAND} -DTEXT=${text} -DPAGE=${page} -DDATE=${page_date}
                    -DVERSION=${PROJECT_VERSION} -DGO_MD2MAN=${ZEL_GO_MD2MAN}
                    -P ${CMAKE_SOURCE_DIR}/cmake/TextPage.cmake
            DEPENDS ${text} cmake/TextPage.cmake VERBATIM)
        list(APPEND text_pages ${page})
    endforeach()
else()
    say_what_is_left_out("The manual pages of sections 5 and 7" "go-md2man")
endif()

find_package(Python3 QUIET COMPONENTS Interpreter)
if(Python3_FOUND)
    file(GLOB headers CONFIGURE_DEPENDS frame/zelTag*.h)
    set(function_stamp ${reference_folder}/man3.txt)
    add_custom_command(OUTPUT ${function_stamp}
        COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/docs/man/function_pages.py
                --version ${PROJECT_VERSION} --date ${page_date} --to ${man_folder}/man3 ${headers}
                > ${function_stamp}
        DEPENDS docs/man/function_pages.py ${headers} VERBATIM)
else()
    say_what_is_left_out("The manual pages of section 3" "Python 3")
endif()

add_custom_target(zel_references ALL
    DEPENDS ${program_pages} ${completions} ${text_pages} ${function_stamp})
