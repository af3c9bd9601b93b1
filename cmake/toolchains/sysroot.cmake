# What the 32-bit targets share: libraries and headers come from the target's sysroot, and programs
# that the build runs from this machine. Needs VENTARO_ARCHITECTURE (Debian's name of the
# architecture) and VENTARO_TRIPLET (of its library folders). VENTARO_SYSROOT may name a sysroot that
# is elsewhere than scripts/sysroot makes it.

if(NOT DEFINED VENTARO_SYSROOT)
  execute_process(
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/../../scripts/sysroot --path ${VENTARO_ARCHITECTURE}
    OUTPUT_VARIABLE VENTARO_SYSROOT OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()
if(NOT IS_DIRECTORY "${VENTARO_SYSROOT}/usr/include")
  message(FATAL_ERROR
    "There is no ${VENTARO_ARCHITECTURE} sysroot in ${VENTARO_SYSROOT}; "
    "make it with: scripts/sysroot ${VENTARO_ARCHITECTURE}")
endif()
# The checks that CMake compiles take the same sysroot.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VENTARO_SYSROOT)

set(CMAKE_SYSROOT ${VENTARO_SYSROOT})
set(CMAKE_LIBRARY_ARCHITECTURE ${VENTARO_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(ENV{PKG_CONFIG_SYSROOT_DIR} ${VENTARO_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR}
  ${VENTARO_SYSROOT}/usr/lib/${VENTARO_TRIPLET}/pkgconfig:${VENTARO_SYSROOT}/usr/share/pkgconfig)
