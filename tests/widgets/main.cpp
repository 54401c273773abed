#include <gmock/gmock.h>

#include <QtWidgets/QApplication>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleMock(&argc, argv);
    const QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
