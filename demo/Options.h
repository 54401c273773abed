// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

/// The options of the command line.
struct Options {
    bool help = false;
    /// The folder for the pictures of a run without a display; absent for a run in a window.
    std::optional<QString> out;

    /// Returns nothing when the command line is wrong; `error` then says why. It needs no
    /// application object, because the options decide how that is made.
    static std::optional<Options> parse(int argc, char** argv, QString& error);

    static QString usage();
};
