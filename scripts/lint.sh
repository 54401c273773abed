#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks what compilers and tests do not see: form, spelling, shell scripts, workflows, the pages
# about the API, QML, and C++ with cppcheck and clang-tidy. With --quick only what takes seconds: all
# before QML.
# What a tool is not to tell, and why, is in its own file: .clang-tidy, .codespellrc, .cppcheck,
# .qmllint.ini.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh

export PATH=$PATH:/usr/lib/qt6/bin
failed=()
check() {
    echo "== $1"
    "${@:2}" || failed+=("$1")
}

cpp_files() { git ls-files -z -- '*.h' '*.cpp'; }
format() { cpp_files | xargs -0 clang-format --dry-run --Werror; }
spelling() { git ls-files -z | xargs -0 codespell; }
workflows() { git ls-files -z -- '*.yml' '*.yaml' | xargs -0 yamllint --no-warnings -d relaxed; }
shell_scripts() { git ls-files -z -- '*.sh' .ci/run | xargs -0 shellcheck; }

# The modules know their own files; the other pages are apps of theirs.
qml() {
    cmake --preset dev >/dev/null &&
        cmake --build --preset dev --target all_qmllint &&
        git ls-files -z -- 'benchmarks/*.qml' 'examples/*.qml' 'tests/*.qml' |
        xargs -0 qmllint -I build/dev/qml
}

cppcheck_all() {
    git ls-files -z -- '*.cpp' | xargs -0 cppcheck --std=c++20 --language=c++ \
        --library=googletest,gnu,posix,qt --enable=warning,performance,portability \
        --suppressions-list=.cppcheck -I. -j "$(nproc)" --quiet --error-exitcode=1
}

# Our own files, not what the build generates.
clang_tidy() {
    cmake --preset tidy >/dev/null &&
        run-clang-tidy -quiet -p build/tidy \
            "^$PWD/(VexmoraSDK|adserver|benchmarks|demo|examples|tests)/"
}

check clang-format format
check codespell spelling
check shellcheck shell_scripts
check yamllint workflows
check doxygen scripts/docs.sh
if [ "${1:-}" != --quick ]; then
    check qmllint qml
    check cppcheck cppcheck_all
    check clang-tidy clang_tidy
fi

[ ${#failed[@]} -eq 0 ] || {
    echo "failed: ${failed[*]}" >&2
    exit 1
}
