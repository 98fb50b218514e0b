# SPDX-License-Identifier: MIT
# What makes a fault harder to exploit, for what is handed out; included when ZEL_HARDEN is set.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection
             -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER "ZEL_HAS${flag}" known)
    check_cxx_compiler_flag("-Werror ${flag}" ${known})
    if(${known})
        add_compile_options(${flag})
    endif()
endforeach()
add_compile_options(-Wformat -Werror=format-security)
# As an option, so that a folder that isn't optimised can take it back.
add_compile_options($<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
if(NOT APPLE)
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()
