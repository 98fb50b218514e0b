# SPDX-License-Identifier: MIT
# Turns one text of docs/man into a manual page, in what all readers of such pages understand:
#     cmake -DTEXT=... -DPAGE=... -DDATE=... -DVERSION=... -DGO_MD2MAN=... -P TextPage.cmake
cmake_path(GET PAGE FILENAME name)
string(REGEX MATCH "^(.*)\\.([0-9])$" name ${name})
set(title ${CMAKE_MATCH_1})
set(section ${CMAKE_MATCH_2})
set(manual "File Formats")
if(section EQUAL 7)
    set(manual "Concepts")
endif()

file(READ ${TEXT} text)
string(REGEX REPLACE "^<!--[^\n]*-->\n" "" text "${text}") # the licence
file(WRITE ${PAGE}.md
    "% ${title} ${section} \"${DATE}\" \"libzelTagAPI ${VERSION}\" \"${manual}\"\n${text}")
execute_process(COMMAND ${GO_MD2MAN} -in ${PAGE}.md -out ${PAGE} COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${PAGE}.md)

file(READ ${PAGE} page)
string(REPLACE "\\fB\\fC" "\\fB" page "${page}") # a font of its own for code isn't known everywhere
string(REGEX REPLACE "(\n\\.SH [^\n]*)\n\\.PP\n" "\\1\n" page "${page}") # a heading begins one
string(REGEX REPLACE "(\n\\.SS [^\n]*)\n\\.PP\n" "\\1\n" page "${page}")
string(REGEX REPLACE "\n\n+" "\n" page "${page}")
# A table has no box, and its last column takes the room that the line has left.
string(REPLACE "\nallbox;\n" "\n" page "${page}")
string(REGEX REPLACE "\n([l ]*l) \\.\n" "\n\\1x .\n" page "${page}")
string(REPLACE "\tT{\n" "\t@\n" page "${page}")
string(REGEX REPLACE "\t([^\t\n@][^\t\n]*)\n" "\tT{\n\\1\nT}\n" page "${page}")
string(REPLACE "\t@\n" "\tT{\n" page "${page}")
file(WRITE ${PAGE} "${page}")
