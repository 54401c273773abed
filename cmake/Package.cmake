# SPDX-License-Identifier: MIT
# What others need to find the installed libraries, and Debian packages of them.
include(CMakePackageConfigHelpers)

get_property(pangoCairoModules GLOBAL PROPERTY VEXMORA_PANGOCAIRO_MODULES)
list(JOIN pangoCairoModules " " pangoCairoModules)
set(resources ${CMAKE_INSTALL_DATADIR}/VexmoraSDK)
configure_package_config_file(cmake/VexmoraSDKConfig.cmake.in VexmoraSDKConfig.cmake
    INSTALL_DESTINATION ${VEXMORA_CMAKE_DIR} PATH_VARS resources NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(VexmoraSDKConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
    FILES
        ${PROJECT_BINARY_DIR}/VexmoraSDKConfig.cmake
        ${PROJECT_BINARY_DIR}/VexmoraSDKConfigVersion.cmake
        cmake/VexmoraSDKEmbedResources.cmake
    DESTINATION ${VEXMORA_CMAKE_DIR} COMPONENT development)

set(pkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY
    ${CMAKE_CURRENT_SOURCE_DIR}/${pkgConfigDir} OUTPUT_VARIABLE prefix)
function(add_pkg_config name library)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "REQUIRES;PRIVATE_REQUIRES;PRIVATE_LIBRARIES")
    list(JOIN arg_REQUIRES " " requires)
    list(JOIN arg_PRIVATE_REQUIRES " " privateRequires)
    list(JOIN arg_PRIVATE_LIBRARIES " " privateLibraries)
    configure_file(cmake/vexmora-sdk.pc.in ${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc
        DESTINATION ${pkgConfigDir} COMPONENT development)
endfunction()
set(privateModules libcurl libjpeg libplist-2.0 libwebpdemux libwebp ${SPNG_MODULE_NAME} zlib)
set(privateLibraries -lboost_json -lboost_url -lgif -pthread -ldl)
if(VEXMORA_QT)
    add_pkg_config(vexmora-sdk VexmoraSDK
        PRIVATE_REQUIRES Qt6Gui ${privateModules} PRIVATE_LIBRARIES ${privateLibraries})
    add_pkg_config(vexmora-sdk-quick VexmoraSDKQuick REQUIRES vexmora-sdk Qt6Quick Qt6Qml)
    add_pkg_config(vexmora-sdk-widgets VexmoraSDKWidgets REQUIRES vexmora-sdk Qt6Widgets)
endif()
if(VEXMORA_CAIRO)
    add_pkg_config(vexmora-sdk-cairo VexmoraSDKCairo
        PRIVATE_REQUIRES pangocairo pangoft2 fontconfig fribidi harfbuzz ${privateModules}
        PRIVATE_LIBRARIES ${privateLibraries})
endif()
if(VEXMORA_SDL)
    add_pkg_config(vexmora-sdk-sdl VexmoraSDKSDL
        REQUIRES vexmora-sdk-cairo PRIVATE_REQUIRES sdl2)
endif()

# Debian packages; scripts/package.sh makes them. Each carries the licence where Debian has it. The
# contact has no address, which neither dpkg nor apt asks for: whoever publishes packages sets theirs.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT
    "the VexmoraSDK authors (the repository's own issue and advisory pages)"
    CACHE STRING "Maintainer of the packages")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

# Describes the package of a component with shared libraries.
#
#   add_library_package(component package NEEDS other packages of ours)
set(CPACK_COMPONENTS_ALL development)
set(libraryPackages "")
function(add_library_package component package description)
    cmake_parse_arguments(PARSE_ARGV 3 arg "" "" "NEEDS;RECOMMENDS")
    list(TRANSFORM arg_NEEDS APPEND " (= ${PROJECT_VERSION})")
    list(JOIN arg_NEEDS ", " needs)
    list(JOIN arg_RECOMMENDS ", " recommends)
    string(TOUPPER ${component} COMPONENT)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION libs PARENT_SCOPE)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_DEPENDS ${needs} PARENT_SCOPE)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_RECOMMENDS ${recommends} PARENT_SCOPE)
    set(CPACK_COMPONENT_${COMPONENT}_DESCRIPTION
        "${PROJECT_DESCRIPTION}: ${description}" PARENT_SCOPE)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
    set(libraryPackages ${libraryPackages} ${package} PARENT_SCOPE)
endfunction()

set(recommended ca-certificates fonts-liberation xdg-utils)
set(commonPackage libvexmorasdk-common)
set(cairoPackage libvexmorasdk-cairo${PROJECT_VERSION_MAJOR})
set(runtimePackage libvexmorasdk${PROJECT_VERSION_MAJOR})
add_library_package(common ${commonPackage} "the resources")
if(VEXMORA_QT)
    add_library_package(runtime ${runtimePackage} "the shared libraries for Qt"
        NEEDS ${commonPackage} RECOMMENDS ${recommended})
endif()
if(VEXMORA_CAIRO)
    add_library_package(cairo ${cairoPackage} "the shared library without Qt"
        NEEDS ${commonPackage} RECOMMENDS ${recommended})
endif()
if(VEXMORA_SDL)
    add_library_package(sdl libvexmorasdk-sdl${PROJECT_VERSION_MAJOR} "the shared library for SDL"
        NEEDS ${commonPackage} ${cairoPackage})
endif()

if(VEXMORA_QT)
    list(APPEND CPACK_COMPONENTS_ALL qml)
endif()
set(CPACK_DEBIAN_QML_PACKAGE_NAME qml6-module-vexmorasdk)
set(CPACK_DEBIAN_QML_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_QML_DESCRIPTION "${PROJECT_DESCRIPTION}: the QML module")
set(CPACK_DEBIAN_QML_PACKAGE_DEPENDS
    "${runtimePackage} (= ${PROJECT_VERSION}), qml6-module-qtquick")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvexmorasdk-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${PROJECT_DESCRIPTION}: headers, archives and a mock ad server")
# An app needs what its own toolkit is developed with, and not the others.
list(TRANSFORM libraryPackages APPEND " (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    ${libraryPackages}
    libboost-json1.81-dev libboost-url1.81-dev "libcurl4-openssl-dev | libcurl4-dev" libgif-dev
    libjpeg-dev libplist-dev libspng-dev libwebp-dev zlib1g-dev)
list(JOIN CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", " CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS
    "libpango1.0-dev, libsdl2-dev, qt6-base-dev, qt6-declarative-dev")
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} COMPONENT)
    install(FILES LICENSE RENAME copyright COMPONENT ${component}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME})
endforeach()
include(CPack)
