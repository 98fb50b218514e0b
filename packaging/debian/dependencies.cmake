# SPDX-License-Identifier: MIT
# What the library's package depends on, asked for here: were CPack to ask, it would also call
# ldconfig from scripts of its own, which the trigger does already. CPack reads this first.
set(folder ${CPACK_ZEL_CONTROL}/shlibdeps)
file(WRITE ${folder}/debian/control "Source: zeltagapi\n\nPackage: library\nArchitecture: any\n")
execute_process(COMMAND dpkg-shlibdeps -O ${CPACK_ZEL_LIBRARY} WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE told COMMAND_ERROR_IS_FATAL ANY)
if(NOT told MATCHES "^shlibs:Depends=([^\n]+)")
    message(FATAL_ERROR "dpkg-shlibdeps tells no dependencies: ${told}")
endif()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS ${CMAKE_MATCH_1})
