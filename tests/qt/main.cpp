// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryFile>

namespace {

// Beside each other, the first with one pixel to the point, the second with two, the third with
// three.
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
    // Death tests start in a process of their own, in which nothing has been used yet.
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    QTemporaryFile screens;
    if (!screens.open() || screens.write(kScreens) < 0 || !screens.flush()) return 1;
    if (qgetenv("QT_QPA_PLATFORM") != "xcb")
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screens.fileName()));
    qputenv("QT_QUICK_BACKEND", "software");
    return RUN_ALL_TESTS();
}
