# SPDX-License-Identifier: MIT
# What a Debian package has otherwise than a plain tree: compressed pages, its own notices, no way
# of its own to a library, zsh's completions elsewhere, no debug information. CPack runs it on each
# component's files before it makes their package.
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# A page that stands for another one becomes a link to it.
function(compress_pages folder)
    file(GLOB pages ${folder}/usr/share/man/man*/*)
    set(compressed "")
    foreach(page ${pages})
        file(READ ${page} text LIMIT 200)
        if(text MATCHES "^\\.so man[0-9]/([^\n]+)\n$")
            file(REMOVE ${page})
            file(CREATE_LINK ${CMAKE_MATCH_1}.gz ${page}.gz SYMBOLIC)
        else()
            list(APPEND compressed ${page})
        endif()
    endforeach()
    if(compressed)
        run(gzip -9n ${compressed})
    endif()
endfunction()

function(add_notices folder package)
    set(notices ${folder}/usr/share/doc/${package})
    file(MAKE_DIRECTORY ${notices})
    configure_file(${CPACK_ZEL_SOURCE}/packaging/debian/copyright ${notices}/copyright COPYONLY)
    configure_file(${CPACK_ZEL_SOURCE}/packaging/debian/changelog ${notices}/changelog.Debian
                   COPYONLY)
    file(CHMOD ${notices}/copyright ${notices}/changelog.Debian
         PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    run(gzip -9n ${notices}/changelog.Debian)
endfunction()

# The system's linker finds the library without; an archive is stripped by no install.
function(finish_objects folder)
    file(GLOB_RECURSE archives ${folder}/usr/lib/*.a)
    foreach(archive ${archives})
        run(${CPACK_ZEL_STRIP} --strip-debug --enable-deterministic-archives
            -R .comment -R .note ${archive})
    endforeach()
    file(GLOB_RECURSE objects ${folder}/usr/bin/* ${folder}/usr/lib/*.so ${folder}/usr/lib/*.so.*)
    foreach(object ${objects})
        if(NOT IS_SYMLINK ${object})
            file(RPATH_REMOVE FILE ${object})
            run(${CPACK_ZEL_STRIP} -R .comment -R .note ${object})
        endif()
    endforeach()
endfunction()

function(move_zsh_completions folder)
    set(from ${folder}/usr/share/zsh/site-functions)
    if(EXISTS ${from})
        file(RENAME ${from} ${folder}/usr/share/zsh/vendor-completions)
    endif()
endfunction()

foreach(component ${CPACK_COMPONENTS_ALL})
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/${component})
    string(TOUPPER ${component} key)
    compress_pages(${folder})
    add_notices(${folder} ${CPACK_DEBIAN_${key}_PACKAGE_NAME})
    finish_objects(${folder})
    move_zsh_completions(${folder})
endforeach()
