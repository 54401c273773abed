# SPDX-License-Identifier: MIT
# Makes a library of the package out of the target `name`, which has its sources:
#
#   vexmora_library(name [OBJECTS object libraries] [USES libraries of ours]
#                   [PUBLIC libraries] [PRIVATE libraries] [PACKAGE component] HEADERS files)
#
# The component of the shared library is "runtime" unless it is named.
# A shared library that is installed has an archive of the same objects beside it: the package
# offers both kinds of each library, under the same name, in one export set for each kind.
include(GNUInstallDirs)
set(VEXMORA_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VexmoraSDK)

function(vexmora_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg
        "" "PACKAGE" "OBJECTS;USES;PUBLIC;PRIVATE;HEADERS")
    if(NOT arg_PACKAGE)
        set(arg_PACKAGE runtime)
    endif()
    string(REGEX REPLACE "^VexmoraSDK(.+)" "\\1" publicName ${name})
    add_library(VexmoraSDK::${publicName} ALIAS ${name})

    get_target_property(type ${name} TYPE)
    set(libraries ${name})
    if(VEXMORA_INSTALL AND VEXMORA_ARCHIVES AND type STREQUAL SHARED_LIBRARY)
        add_library(${name}Static STATIC $<TARGET_OBJECTS:${name}>)
        set_target_properties(${name}Static PROPERTIES
            OUTPUT_NAME ${name} LINKER_LANGUAGE CXX AUTOMOC OFF)
        list(APPEND libraries ${name}Static)
    endif()

    foreach(library IN LISTS libraries)
        string(REPLACE ${name} "" suffix ${library})
        foreach(objects IN LISTS arg_OBJECTS)
            target_sources(${library} PRIVATE $<TARGET_OBJECTS:${objects}>)
        endforeach()
        list(TRANSFORM arg_USES APPEND "${suffix}" OUTPUT_VARIABLE uses)
        target_link_libraries(${library} PUBLIC ${uses} ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
        target_compile_features(${library} PUBLIC cxx_std_20)
        target_include_directories(${library} PUBLIC
            $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
            $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
        target_sources(${library} PUBLIC
            FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
        set_target_properties(${library} PROPERTIES
            EXPORT_NAME ${publicName}
            VERSION ${PROJECT_VERSION}
            SOVERSION ${PROJECT_VERSION_MAJOR}
            INSTALL_RPATH $ORIGIN)
        if(VEXMORA_INSTALL)
            vexmora_install_library(${library} ${name} ${arg_PACKAGE})
        endif()
    endforeach()
endfunction()

# What a library is linked for that has a backend in it: an app that links two is refused when CMake
# generates.
function(vexmora_backend name backend)
    foreach(library IN ITEMS ${name} ${name}Static)
        if(NOT TARGET ${library})
            continue()
        endif()
        set_target_properties(${library} PROPERTIES INTERFACE_VEXMORA_BACKEND ${backend})
        set_property(TARGET ${library} APPEND PROPERTY COMPATIBLE_INTERFACE_STRING VEXMORA_BACKEND)
    endforeach()
    # Its threads and exit handler run until the process ends, whoever closes the library before.
    if(NOT APPLE)
        target_link_options(${name} PRIVATE LINKER:-z,nodelete)
        vexmora_export_own_symbols(${name})
    endif()
endfunction()

# The shared library `name` exports what is marked so, and no instances of others' templates. It
# contains no functions that nothing calls.
function(vexmora_export_own_symbols name)
    set(symbols ${PROJECT_SOURCE_DIR}/cmake/exported-symbols.map)
    target_link_options(${name} PRIVATE LINKER:--version-script=${symbols} LINKER:--gc-sections)
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${symbols})
endfunction()

function(vexmora_install_library library name package)
    get_target_property(type ${library} TYPE)
    string(REPLACE _LIBRARY "" kind ${type})
    string(TOLOWER ${name}-${kind} exportSet)
    install(TARGETS ${library} EXPORT ${exportSet}
        LIBRARY COMPONENT ${package} NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development
        FILE_SET HEADERS COMPONENT development)
    install(EXPORT ${exportSet}
        NAMESPACE VexmoraSDK::
        DESTINATION ${VEXMORA_CMAKE_DIR}
        COMPONENT development)
endfunction()
