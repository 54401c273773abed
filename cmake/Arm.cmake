# SPDX-License-Identifier: MIT
# Toolchain of scripts/arm.sh: Debian's cross compiler and a root of Debian's packages, both below
# VEXMORA_ARM_FOLDER, neither installed on the machine. The tools of Qt that run while building are
# the machine's own.
set(CMAKE_SYSTEM_NAME Linux)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VEXMORA_ARM_FOLDER VEXMORA_ARM_TRIPLET)
string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR ${VEXMORA_ARM_TRIPLET})

set(tools ${VEXMORA_ARM_FOLDER}/tools/root)
set(CMAKE_CXX_COMPILER ${tools}/usr/bin/${VEXMORA_ARM_TRIPLET}-g++-12)
# Notes about an old change of calling conventions, which no released library of ours predates.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
set(CMAKE_SYSROOT ${VEXMORA_ARM_FOLDER}/packages/root)
set(CMAKE_LIBRARY_ARCHITECTURE ${VEXMORA_ARM_TRIPLET})
set(libraries ${CMAKE_SYSROOT}/usr/lib/${VEXMORA_ARM_TRIPLET})
# The linker looks for libraries of libraries there.
string(JOIN "," links
    -Wl -rpath-link=${libraries} -rpath-link=${CMAKE_SYSROOT}/lib/${VEXMORA_ARM_TRIPLET})
set(CMAKE_EXE_LINKER_FLAGS_INIT ${links})
set(CMAKE_SHARED_LINKER_FLAGS_INIT ${links})
set(CMAKE_MODULE_LINKER_FLAGS_INIT ${links})

list(APPEND CMAKE_PROGRAM_PATH /usr/lib/qt6/bin)
set(CMAKE_FIND_ROOT_PATH ${CMAKE_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})

set(QT_HOST_PATH /usr CACHE PATH "")
execute_process(COMMAND dpkg-architecture -qDEB_HOST_MULTIARCH
    OUTPUT_VARIABLE host OUTPUT_STRIP_TRAILING_WHITESPACE)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${host}/cmake CACHE PATH "")
