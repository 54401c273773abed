# SPDX-License-Identifier: MIT
# An overlay port: it builds the checkout that it lies in.
#   vcpkg install vexmora-sdk --overlay-ports=packaging/vcpkg
cmake_path(ABSOLUTE_PATH CMAKE_CURRENT_LIST_DIR NORMALIZE OUTPUT_VARIABLE SOURCE_PATH)
cmake_path(SET SOURCE_PATH NORMALIZE "${SOURCE_PATH}/../../..")

vcpkg_find_acquire_program(PKGCONFIG)
string(COMPARE EQUAL "${VCPKG_LIBRARY_LINKAGE}" dynamic SHARED)
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DBUILD_SHARED_LIBS=${SHARED}
        -DPKG_CONFIG_EXECUTABLE=${PKGCONFIG}
        -DVEXMORA_ARCHIVES=OFF
        -DVEXMORA_CAIRO=OFF
        -DVEXMORA_DEMO=OFF
        -DVEXMORA_EXAMPLES=OFF
        -DVEXMORA_TESTS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME VexmoraSDK CONFIG_PATH lib/cmake/VexmoraSDK)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE
    "${CURRENT_PACKAGES_DIR}/debug/include"
    "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
