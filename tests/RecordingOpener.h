// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace VexmoraSDK {

/// Replaces the device's opener of URLs while it lives, and opens nothing.
class RecordingOpener {
 public:
    RecordingOpener() {
        EXPECT_EQ(pipe(pipe_), 0);
        std::ofstream(script_) << "#!/bin/sh\nwhile [ -e '" << sleeps_.native()
                               << "' ]; do sleep 0.01; done\nprintf '%s\\n' \"$@\" >> '"
                               << record_.native() << "'\n";
        std::filesystem::permissions(script_, std::filesystem::perms::owner_all);
        setenv("PATH", (script_.parent_path().string() + ':' + path_).c_str(), 1);
    }

    ~RecordingOpener() {
        setenv("PATH", path_.c_str(), 1);
        goOn();
        opened();  // The last opener may still write into the folder.
        close(pipe_[0]);
        close(pipe_[1]);
        std::filesystem::remove_all(folder_);
    }

    RecordingOpener(const RecordingOpener&) = delete;
    RecordingOpener& operator=(const RecordingOpener&) = delete;

    void sleepUntilToldToGoOn() { std::ofstream(sleeps_) << "zzz"; }
    void goOn() { std::filesystem::remove(sleeps_); }

    /// The URLs opened since the last call. Waits until all openers have ended.
    std::vector<std::string> opened() {
        // Each opener inherits the writing end, so the pipe ends when the last opener does.
        close(pipe_[1]);
        char unused = 0;
        EXPECT_EQ(read(pipe_[0], &unused, 1), 0);
        close(pipe_[0]);
        EXPECT_EQ(pipe(pipe_), 0);
        std::vector<std::string> addresses;
        std::ifstream record(record_);
        for (std::string address; std::getline(record, address);)
            addresses.push_back(address);
        std::filesystem::remove(record_);
        return addresses;
    }

 private:
    static std::filesystem::path newFolder() {
        std::string path = std::filesystem::temp_directory_path() / "vexmora-opener-XXXXXX";
        EXPECT_TRUE(mkdtemp(path.data()));
        return path;
    }

    const std::filesystem::path folder_ = newFolder();
    const std::filesystem::path script_ = folder_ / "xdg-open";
    const std::filesystem::path record_ = folder_ / "opened";
    const std::filesystem::path sleeps_ = folder_ / "sleeps";
    int pipe_[2] = {};
    const std::string path_ = getenv("PATH");
};

}  // namespace VexmoraSDK
