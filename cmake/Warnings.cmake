# SPDX-License-Identifier: MIT
# Warnings are errors in our own builds only: a host that builds us in its tree has its own ideas.
add_library(vexmora_warnings INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(vexmora_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()
