// SPDX-License-Identifier: MIT
#include "demo/Options.h"

#include <QFile>

std::optional<Options> Options::parse(int argc, char** argv, QString& error) {
    Options options;
    bool headless = false;
    for (int i = 1; i < argc; ++i) {
        const QString argument = QFile::decodeName(argv[i]);
        if (argument == QLatin1String("--help")) {
            options.help = true;
        } else if (argument == QLatin1String("--headless")) {
            headless = true;
        } else if (argument == QLatin1String("--out") && i + 1 < argc) {
            options.out = QFile::decodeName(argv[++i]);
        } else if (argument == QLatin1String("--out")) {
            error = QStringLiteral("--out needs a folder");
            return std::nullopt;
        } else {
            error = QStringLiteral("unknown option %1").arg(argument);
            return std::nullopt;
        }
    }
    if (headless != options.out.has_value()) {
        error = QStringLiteral("--headless and --out DIR go together");
        return std::nullopt;
    }
    return options;
}

QString Options::usage() {
    return QStringLiteral(
        "Usage: vexmora-demo [--headless --out DIR]\n"
        "\n"
        "Shows The Harbour Post, a small news app with ads, served by a mock ad server of its "
        "own.\n"
        "\n"
        "  --headless   play a fixed scenario without a display, tell each event on a line\n"
        "  --out DIR    where the scenario puts a picture of each step\n"
        "  --help       show this text\n");
}
