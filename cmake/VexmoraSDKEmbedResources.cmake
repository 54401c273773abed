# SPDX-License-Identifier: MIT
# vexmora_embed_resources(app [folder]): takes the library's resources along in an app that has no
# place to install them to. `folder` holds them; by default they are those that the library is shipped
# with. In a bundle of macOS or iOS the library finds them by itself; elsewhere the app calls
# VexmoraSDK::platform::useEmbeddedResources() before it makes its first ad view.
function(vexmora_embed_resources app)
    get_property(folder GLOBAL PROPERTY VEXMORA_RESOURCES)
    if(ARGC GREATER 1)
        cmake_path(ABSOLUTE_PATH ARGV1 OUTPUT_VARIABLE folder)
    endif()
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*)
    if(NOT APPLE)
        list(TRANSFORM files PREPEND ${folder}/)
        qt_add_resources(${app} vexmora_resources
            PREFIX /VexmoraSDK BASE ${folder} FILES ${files})
        return()
    endif()
    foreach(file IN LISTS files)
        cmake_path(GET file PARENT_PATH subfolder)
        target_sources(${app} PRIVATE ${folder}/${file})
        set_source_files_properties(${folder}/${file} PROPERTIES
            MACOSX_PACKAGE_LOCATION share/VexmoraSDK/${subfolder})
    endforeach()
endfunction()
