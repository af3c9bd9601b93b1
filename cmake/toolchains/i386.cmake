# 32-bit x86: the other 32-bit target, whose programs run natively on an x86-64 machine.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
# The versioned names: Debian's g++-multilib cannot stand beside a cross compiler, g++-12-multilib can.
set(CMAKE_C_COMPILER x86_64-linux-gnu-gcc-12)
set(CMAKE_CXX_COMPILER x86_64-linux-gnu-g++-12)
set(CMAKE_C_FLAGS_INIT -m32)
set(CMAKE_CXX_FLAGS_INIT -m32)

set(VENTARO_ARCHITECTURE i386)
set(VENTARO_TRIPLET i386-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/sysroot.cmake)

# This machine's own 32-bit C library goes with its program loader; the rest is the sysroot's.
set(CMAKE_CROSSCOMPILING_EMULATOR
  env LD_LIBRARY_PATH=/lib32:/usr/lib32:${CMAKE_SYSROOT}/usr/lib/${VENTARO_TRIPLET}:${CMAKE_SYSROOT}/lib/${VENTARO_TRIPLET})
