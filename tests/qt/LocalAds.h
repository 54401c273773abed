#pragma once

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <filesystem>
#include <string>

#include "adserver/AdServer.h"
#include "tests/LibraryFolder.h"

namespace VexmoraSDK {

/// The ads of the tests, and the server that the library asks for them in this process.
class LocalAds {
 public:
    static AdServer& server() {
        static LocalAds ads;
        return ads.server_;
    }

 private:
    Catalog catalog() const {
        const Creative redAndBlue{77, "/landing/red?sig=%41%c3", picture("red-and-blue", 320, 60)};
        const Creative small{77, "/landing/small", picture("small", 300, 50)};
        const Creative medium{83, "/landing/medium", picture("medium", 320, 100)};
        const Creative native{1,       "/landing/native",   picture("native", 400, 300),
                              "Title", "What it is about.", "Advertiser"};
        const Creative interstitial{14, "/landing/interstitial", picture("interstitial", 300, 250)};
        return {{redAndBlue, medium, native, interstitial}, {{"small", {small}}, {"nothing", {}}}};
    }

    /// Red at the left, blue at the right.
    std::filesystem::path picture(const std::string& name, int width, int height) const {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        QPainter(&image).fillRect(width / 2, 0, width, height, Qt::blue);
        auto file = path(name + ".png");
        EXPECT_TRUE(image.save(QFile::decodeName(file.c_str())));
        return file;
    }

    std::filesystem::path path(const std::string& name) const {
        return QFile::encodeName(folder_.path()).toStdString() + "/" + name;
    }

    QTemporaryDir folder_;
    AdServer server_{catalog()};
    LibraryFolder library_{server_.requestUrlFormat()};
};

}  // namespace VexmoraSDK
