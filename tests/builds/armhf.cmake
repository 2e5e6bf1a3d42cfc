# A toolchain file for a set with a 32-bit ARM processor, with Debian's cross compiler. The sysroot is
# given by -DCMAKE_SYSROOT=DIR, an absolute path. With an emulator, CMake can run the programs of the
# build: javamw-sim and platformctl then get their manual pages, and ctest can run unit tests.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
# Notes about the calling convention of releases before GCC 7.1.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
# CMake's checks of the compiler use the sysroot, too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_SYSROOT)

# Headers, libraries and packages are the set's. Programs such as edje_cc are those of this machine.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${CMAKE_SYSROOT}")
set(ENV{PKG_CONFIG_LIBDIR}
    "${CMAKE_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig")

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L "${CMAKE_SYSROOT}")
