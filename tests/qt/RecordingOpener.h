#pragma once

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <string>
#include <vector>

namespace VexmoraSDK {

/// Stands in for the device's opener of addresses as long as it lives, and opens nothing.
class RecordingOpener {
 public:
    RecordingOpener() {
        // What the library starts and leaves alone becomes a child of the test's.
        EXPECT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
        QFile script(folder_.filePath(QStringLiteral("xdg-open")));
        EXPECT_TRUE(script.open(QFile::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s\\n' \"$@\" >> '" +
                     QFile::encodeName(record_.fileName()) + "'\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(folder_.path()) + ':' + path_);
    }

    ~RecordingOpener() { qputenv("PATH", path_); }

    RecordingOpener(const RecordingOpener&) = delete;
    RecordingOpener& operator=(const RecordingOpener&) = delete;

    /// The addresses that were opened since the last call, once all openers are through.
    std::vector<std::string> opened() {
        while (wait(nullptr) > 0) {
        }
        std::vector<std::string> addresses;
        if (record_.open(QFile::ReadOnly)) {
            while (!record_.atEnd())
                addresses.push_back(record_.readLine().chopped(1).toStdString());
            record_.close();
            record_.remove();
        }
        return addresses;
    }

 private:
    QTemporaryDir folder_;
    QFile record_{folder_.filePath(QStringLiteral("opened"))};
    const QByteArray path_ = qgetenv("PATH");
};

}  // namespace VexmoraSDK
