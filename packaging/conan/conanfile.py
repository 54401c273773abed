# SPDX-License-Identifier: MIT
"""Conan 2 recipe: builds the checkout that it lies in.

    conan create packaging/conan --build=missing
"""

import os
import re

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain
from conan.tools.files import copy, load
from conan.tools.gnu import PkgConfigDeps
from conan.tools.system.package_manager import Apt, Brew


class VexmoraSdk(ConanFile):
    name = "vexmora-sdk"
    description = "Shows advertisements inside C++ apps"
    author = "the VexmoraSDK authors (the repository's own issue and advisory pages)"
    license = "MIT"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False]}
    default_options = {
        "shared": True,
        "fPIC": True,
        "qt/*:qtdeclarative": True,
        "qt/*:with_libjpeg": "libjpeg-turbo",
        "qt/*:qtshadertools": True,
    }
    requires = (
        "boost/[>=1.81]",
        "giflib/[>=5.2]",
        "libcurl/[>=7.87]",
        "libjpeg-turbo/[>=2.1]",
        "libspng/[>=0.7]",
        "libwebp/[>=1.2]",
        "qt/[>=6.4]",
        "zlib/[>=1.2]",
    )

    def set_version(self):
        project = load(self, os.path.join(self.recipe_folder, "..", "..", "CMakeLists.txt"))
        self.version = re.search(r"VexmoraSDK VERSION ([\d.]+)", project).group(1)

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in "CMakeLists.txt", "LICENSE", "cmake/*", "VexmoraSDK/*":
            copy(self, pattern, root, self.export_sources_folder)

    def system_requirements(self):
        Apt(self).install(["libplist-dev", "pkg-config"])
        Brew(self).install(["libplist", "pkg-config"])

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in "ARCHIVES", "CAIRO", "DEMO", "EXAMPLES", "TESTS":
            toolchain.cache_variables[f"VEXMORA_{part}"] = False
        toolchain.generate()
        CMakeDeps(self).generate()
        PkgConfigDeps(self).generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # The package brings a configuration file of its own.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs.append(os.path.join("lib", "cmake", "VexmoraSDK"))
