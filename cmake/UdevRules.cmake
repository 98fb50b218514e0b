# SPDX-License-Identifier: MIT
# Makes the rules for udev from the table of products.
set(products ${CMAKE_SOURCE_DIR}/frame/products.def)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${products})
file(STRINGS ${products} rows REGEX "^(PRODUCT|LISTED)\\(")
set(rules "")
foreach(row IN LISTS rows)
    if(NOT row MATCHES "^[A-Z]+\\([A-Za-z0-9]+, ([0-9A-F]+), ([0-9A-F]+), .*\"(.*)\"\\)$")
        message(FATAL_ERROR "${products}: not a row: ${row}")
    endif()
    set(name ${CMAKE_MATCH_3})
    string(TOLOWER ${CMAKE_MATCH_1} vendor)
    string(TOLOWER ${CMAKE_MATCH_2} product)
    set(parents "ATTRS{idVendor}==\"${vendor}\", ATTRS{idProduct}==\"${product}\"")
    string(REPLACE ATTRS ATTR itself ${parents})
    string(APPEND rules "
# ${name}
SUBSYSTEM==\"hidraw\", ${parents}, TAG+=\"uaccess\"
SUBSYSTEM==\"usb\", ENV{DEVTYPE}==\"usb_device\", ${itself}, ENV{ID_MM_DEVICE_IGNORE}=\"1\"
SUBSYSTEM==\"tty\", ${parents}, ENV{ID_MM_PORT_IGNORE}=\"1\"
")
endforeach()
set(ZEL_UDEV_RULES ${CMAKE_BINARY_DIR}/packaging/70-zeltag.rules)
configure_file(packaging/udev/70-zeltag.rules.in ${ZEL_UDEV_RULES} @ONLY)
