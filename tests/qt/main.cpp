// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryFile>

namespace {

// Three screens side by side, with one, two and three pixels per point.
constexpr auto kScreens = R"({"screens": [
    {"name": "1", "x": 0, "y": 0, "width": 800, "height": 600,
     "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
    {"name": "2", "x": 800, "y": 0, "width": 1600, "height": 1200,
     "logicalDpi": 192, "logicalBaseDpi": 96, "dpr": 1},
    {"name": "3", "x": 2400, "y": 0, "width": 2400, "height": 1800,
     "logicalDpi": 288, "logicalBaseDpi": 96, "dpr": 1}]})";

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    // Death tests start in a fresh process, in which nothing is initialised yet.
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    QTemporaryFile screens;
    if (!screens.open() || screens.write(kScreens) < 0 || !screens.flush()) return 1;
    if (qgetenv("QT_QPA_PLATFORM") != "xcb")
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screens.fileName()));
    qputenv("QT_QUICK_BACKEND", "software");
    return RUN_ALL_TESTS();
}
