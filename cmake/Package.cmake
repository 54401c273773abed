# What others need to find the installed libraries, and Debian packages of them.
include(CMakePackageConfigHelpers)

set(resources ${CMAKE_INSTALL_DATADIR}/VexmoraSDK)
configure_package_config_file(cmake/VexmoraSDKConfig.cmake.in VexmoraSDKConfig.cmake
    INSTALL_DESTINATION ${VEXMORA_CMAKE_DIR} PATH_VARS resources NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(VexmoraSDKConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
    FILES
        ${PROJECT_BINARY_DIR}/VexmoraSDKConfig.cmake
        ${PROJECT_BINARY_DIR}/VexmoraSDKConfigVersion.cmake
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
add_pkg_config(vexmora-sdk VexmoraSDK
    PRIVATE_REQUIRES Qt6Gui libcurl libplist-2.0 zlib
    PRIVATE_LIBRARIES -lboost_json -lboost_url -pthread -ldl)
add_pkg_config(vexmora-sdk-quick VexmoraSDKQuick REQUIRES vexmora-sdk Qt6Quick Qt6Qml)
add_pkg_config(vexmora-sdk-widgets VexmoraSDKWidgets REQUIRES vexmora-sdk Qt6Widgets)
