#pragma once

#include <QString>
#include <optional>

/// What the command line asks for.
struct Options {
    bool help = false;
    /// Where the pictures of a run without a display go; absent for a run in a window.
    std::optional<QString> out;

    /// Absent when the command line cannot be understood; `error` then says why. Needs no
    /// application object, since the answer decides how that is made.
    static std::optional<Options> parse(int argc, char** argv, QString& error);

    static QString usage();
};
